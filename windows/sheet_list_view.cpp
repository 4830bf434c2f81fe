#include "windows/sheet_list_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <string_view>

#include "storage/qt_bytes.h"
#include "windows/look.h"

namespace orvane {

namespace {

// More of a name is never in view.
constexpr std::size_t longestShown = 500;

// A name on one line: a line break or another control character in it is shown as a small box.
QString RowText(std::string_view name) {
    QString text = QStringFrom(name.substr(0, longestShown));
    for (QChar& letter : text) {
        if (letter.category() == QChar::Other_Control) letter = QChar(0x25A1);
    }
    return text;
}

}  // namespace

int SheetRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(model.Rows().size());
}

QVariant SheetRows::data(const QModelIndex& index, int role) const {
    switch (role) {
        case Qt::DisplayRole:
            return RowText(model.Rows()[static_cast<std::size_t>(index.row())]);
        case Qt::SizeHintRole:
            // As high as a line; the view makes every row as wide as itself.
            return QSize(1, QFontMetrics(InterfaceFont()).height() + 2);
        default:
            return {};
    }
}

SheetListView::SheetListView(const SheetListModel& sheetList, QWidget* parent)
    : QListView(parent), model(sheetList), rows(sheetList) {
    setModel(&rows);
    setUniformItemSizes(true);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // A row that is chosen already can be chosen again, which the selection does not tell.
    connect(this, &QListView::pressed, this, [this](const QModelIndex& index) { Choose(index); });
}

void SheetListView::Refresh() {
    isRefreshing = true;
    const int scrolled = verticalScrollBar()->value();
    rows.Reset();
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(scrolled);
    const std::optional<std::size_t> selected = model.SelectedRow();
    if (selected) setCurrentIndex(rows.index(static_cast<int>(*selected)));
    isRefreshing = false;
}

void SheetListView::Choose(const QModelIndex& index) {
    if (index.isValid() && onRowChosen) onRowChosen(static_cast<std::size_t>(index.row()));
}

// The focus alone makes the first row the current one without selecting it: the first arrow key
// must not step over it.
void SheetListView::keyPressEvent(QKeyEvent* event) {
    const bool isArrow = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (isArrow && !model.SelectedRow() && currentIndex().isValid()) {
        selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
        return;
    }
    QListView::keyPressEvent(event);
}

void SheetListView::mouseDoubleClickEvent(QMouseEvent* event) {
    QListView::mouseDoubleClickEvent(event);
    if (event->button() != Qt::LeftButton || !onDoubleClick) return;
    onDoubleClick(indexAt(event->position().toPoint()).isValid());
}

// One row is selected from the first choice on: no key and no click beside the rows takes it away.
QItemSelectionModel::SelectionFlags SheetListView::selectionCommand(const QModelIndex& index,
                                                                    const QEvent*) const {
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

void SheetListView::selectionChanged(const QItemSelection& selected,
                                     const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (isRefreshing || selected.isEmpty()) return;
    Choose(selected.indexes().first());
}

}  // namespace orvane
