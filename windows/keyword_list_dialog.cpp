#include "windows/keyword_list_dialog.h"

#include <QAbstractTableModel>
#include <QDialog>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionHeader>
#include <QStyledItemDelegate>
#include <QTableView>
#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include "storage/qt_bytes.h"
#include "windows/control_ids.h"
#include "windows/help_topics.h"
#include "windows/keyword_dialog_layout.h"
#include "windows/keyword_list_rows.h"
#include "windows/look.h"

namespace orvane {

namespace {

constexpr int rowMargins = 4;  // above a row's text and below it, the grid's line included

class KeywordModel : public QAbstractTableModel {
public:
    const KeywordListRows& Rows() const { return rows; }

    // A selected row stays selected wherever it goes.
    void SortBy(int column) {
        emit layoutAboutToBeChanged({}, VerticalSortHint);
        const std::vector<std::size_t> oldRows = rows.SortBy(static_cast<std::size_t>(column));
        std::vector<int> newRows(oldRows.size());
        for (std::size_t row = 0; row < oldRows.size(); ++row) {
            newRows[oldRows[row]] = static_cast<int>(row);
        }
        const QModelIndexList before = persistentIndexList();
        QModelIndexList after;
        for (const QModelIndex& old : before) {
            after += index(newRows[static_cast<std::size_t>(old.row())], old.column());
        }
        changePersistentIndexList(before, after);
        emit layoutChanged({}, VerticalSortHint);
    }

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows.Size());
    }
    int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(keywordColumnCount);
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) return {};
        return QStringFrom(rows.Text(static_cast<std::size_t>(index.row()),
                                     static_cast<std::size_t>(index.column())));
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal) return {};
        if (role == Qt::TextAlignmentRole) return int{Qt::AlignLeft | Qt::AlignVCenter};
        if (role != Qt::DisplayRole) return {};
        return QStringFrom(keywordColumnHeaders[static_cast<std::size_t>(section)]);
    }

private:
    KeywordListRows rows;
};

// A row is chosen as a whole, so no cell is marked as the one with the focus.
class CellPainter : public QStyledItemDelegate {
protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;
    }
};

// Column headers that end in dots where the column is too narrow for them.
class ColumnHeader : public QHeaderView {
public:
    explicit ColumnHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {}

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) QHeaderView::mouseDoubleClickEvent(event);
    }
    void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override {
        QHeaderView::initStyleOptionForIndex(option, section);
        const int margin = style()->pixelMetric(QStyle::PM_HeaderMargin, option, this);
        option->text = fontMetrics().elidedText(option->text, Qt::ElideRight,
                                                sectionSize(section) - 2 * margin);
    }
};

class KeywordTableView : public QTableView {
public:
    explicit KeywordTableView(QWidget* parent);

    std::function<void(const std::string& topic)> onTopicWanted;

    void SetColumnWidths(const std::array<int, keywordColumnCount>& widths) {
        // Nothing is left for the columns of parameters in a list that is too narrow.
        for (int column = 0; const int width : widths) setColumnWidth(column++, std::max(width, 0));
    }

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    // Neither a click beside the rows nor a second one with a key held takes the selection away.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent*) const override {
        if (!index.isValid()) return QItemSelectionModel::NoUpdate;
        return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
    }

private:
    KeywordModel keywords;
    CellPainter cellPainter;
};

KeywordTableView::KeywordTableView(QWidget* parent) : QTableView(parent) {
    setModel(&keywords);
    setItemDelegate(&cellPainter);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setWordWrap(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);

    QHeaderView& lines = *verticalHeader();
    lines.hide();
    lines.setSectionResizeMode(QHeaderView::Fixed);
    lines.setMinimumSectionSize(1);
    lines.setDefaultSectionSize(QFontMetrics(InterfaceFont()).height() + rowMargins);

    setHorizontalHeader(new ColumnHeader(this));
    QHeaderView& header = *horizontalHeader();
    header.setMinimumSectionSize(0);
    header.setHighlightSections(false);
    header.setSectionsClickable(true);
    connect(&header, &QHeaderView::sectionClicked, this,
            [this](int column) { keywords.SortBy(column); });
    // A quick second click is a click like any other. One behind the last column comes as well.
    connect(&header, &QHeaderView::sectionDoubleClicked, this, [this](int column) {
        if (column >= 0) keywords.SortBy(column);
    });
}

void KeywordTableView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    // At the end of the list the uppermost row in view may be cut off: its top counts.
    const int headerHeight = horizontalHeader()->height();
    const int topRow = rowAt(0);
    const int pointerY = event->position().toPoint().y() - rowViewportPosition(topRow);
    const auto row =
        keywords.Rows().RowAt(pointerY + headerHeight, headerHeight, rowHeight(0), topRow);
    if (!row) return;
    selectRow(static_cast<int>(*row));
    const std::optional<std::string> topic = keywords.Rows().TopicOfRow(*row);
    if (topic && onTopicWanted) onTopicWanted(*topic);
}

class KeywordListDialog : public QDialog {
public:
    KeywordListDialog(QWidget* owner, const ShowTopic& topicShower);

protected:
    void resizeEvent(QResizeEvent* event) override {
        QDialog::resizeEvent(event);
        LayOut();
    }

private:
    void PutButton(QPushButton& button, int id);
    void LayOut();

    ShowTopic showTopic;
    // In the order in which the tab key goes round.
    KeywordTableView list{this};
    QPushButton helpButton{"Help", this};
    QPushButton closeButton{"Close", this};
};

KeywordListDialog::KeywordListDialog(QWidget* owner, const ShowTopic& topicShower)
    : QDialog(owner), showTopic(topicShower) {
    namespace id = ids::keywordDialog;
    setFont(InterfaceFont());
    setWindowTitle("All keywords");
    NameControl(list, id::keywordList);
    PutButton(helpButton, id::helpButton);
    PutButton(closeButton, id::closeButton);
    connect(&helpButton, &QPushButton::clicked, this,
            [this] { showTopic(this, QStringFrom(topics::allKeywords)); });
    connect(&closeButton, &QPushButton::clicked, this, &QDialog::reject);
    list.onTopicWanted = [this](const std::string& topic) { showTopic(this, QStringFrom(topic)); };
    resize(DialogRect(QFontMetrics(InterfaceFont()), 0, 0, 504, 308).size());
    LayOut();
}

// Enter presses neither of them.
void KeywordListDialog::PutButton(QPushButton& button, int id) {
    NameControl(button, id);
    button.setAutoDefault(false);
    button.resize(DialogRect(QFontMetrics(InterfaceFont()), 0, 0, 50, 14).size());
}

void KeywordListDialog::LayOut() {
    const KeywordDialogLayout layout =
        LayOutKeywordDialog(width(), height(), closeButton.width(), closeButton.height());
    const auto put = [](QWidget& control, const KeywordDialogLayout::Box& box) {
        control.setGeometry(box.left, box.top, std::max(box.width, 0), std::max(box.height, 0));
    };
    put(list, layout.list);
    put(helpButton, layout.helpButton);
    put(closeButton, layout.closeButton);
    list.SetColumnWidths(layout.columnWidths);
}

}  // namespace

void ShowKeywordList(QWidget* owner, const ShowTopic& showTopic) {
    KeywordListDialog(owner, showTopic).exec();
}

}  // namespace orvane
