#include "windows/option_dialogs.h"

#include <QAbstractButton>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QStyleOptionFocusRect>
#include <QWhatsThis>
#include <array>

#include "storage/qt_bytes.h"
#include "windows/control_ids.h"
#include "windows/help_topics.h"
#include "windows/look.h"
#include "windows/message_box.h"
#include "windows/option_rows.h"

namespace orvane {

namespace {

using Area = ColourRowLayout::Area;

QRect PixelsOf(int left, int top, int width, int height) {
    return DialogRect(QFontMetrics(InterfaceFont()), left, top, width, height);
}

Area AreaOf(const QRect& rect) {
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

QRect RectOf(const Area& area) {
    return {area.left, area.top, area.right - area.left, area.bottom - area.top};
}

// A dialog with a help button in its title bar.
class HelpedDialog : public QDialog {
protected:
    HelpedDialog(QWidget* owner, const char* title, QSize size, std::string_view helpTopic,
                 const ShowTopic& topicShower)
        : QDialog(owner), topic(QStringFrom(helpTopic)), showTopic(topicShower) {
        setFont(InterfaceFont());
        setWindowTitle(QString(title));
        setWindowFlag(Qt::WindowContextHelpButtonHint);
        setFixedSize(size);
    }

    // The help button would let the user point at a control first: its page is shown instead.
    bool event(QEvent* event) override {
        if (event->type() != QEvent::EnterWhatsThisMode) return QDialog::event(event);
        QWhatsThis::leaveWhatsThisMode();
        showTopic(this, topic);
        return true;
    }
    // Window managers under X11 draw no help button, so there is a key for it as well.
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_F1 && event->modifiers() == Qt::NoModifier) {
            showTopic(this, topic);
        } else {
            QDialog::keyPressEvent(event);
        }
    }

private:
    QString topic;
    ShowTopic showTopic;
};

// A button that is nothing but a picture, and as large as that.
class PictureButton : public QAbstractButton {
public:
    explicit PictureButton(QWidget* parent) : QAbstractButton(parent) {
        resize(up.deviceIndependentSize().toSize());
        setFocusPolicy(Qt::StrongFocus);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(rect(), isDown() ? down : up);
        if (!hasFocus()) return;
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect().adjusted(2, 2, -2, -2);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
    }

private:
    QPixmap up{":/buttons/colour_up.png"};
    QPixmap down{":/buttons/colour_down.png"};
};

class TextColourDialog : public HelpedDialog {
public:
    TextColourDialog(QWidget* owner, const TextColours& colours, const ShowTopic& showTopic);

    const TextColourChoice& Choice() const { return choice; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    template <typename Action>
    void PutButton(QPushButton& button, int id, int top, Action action);
    ColourRowLayout RowLayout(std::size_t row) const;
    void PaintRow(QPainter& painter, std::size_t row) const;
    void ChooseColour(std::size_t row);
    void Restore();

    TextColourChoice choice;
    MessageBox messageBox{this};
    // In the order in which the tab key goes round.
    std::array<PictureButton, textClassCount> colourButtons = {
        PictureButton(this), PictureButton(this), PictureButton(this), PictureButton(this),
        PictureButton(this), PictureButton(this), PictureButton(this)};
    QPushButton okButton{"OK", this};
    QPushButton cancelButton{"Cancel", this};
    QPushButton restoreButton{"Restore", this};
};

TextColourDialog::TextColourDialog(QWidget* owner, const TextColours& colours,
                                   const ShowTopic& showTopic)
    : HelpedDialog(owner, "Text color options", PixelsOf(0, 0, 228, 130).size(),
                   topics::textColours, showTopic),
      choice(colours) {
    namespace id = ids::textColourDialog;
    for (std::size_t row = 0; row < textClassCount; ++row) {
        PictureButton& button = colourButtons[row];
        NameControl(button, ColourButtonId(row));
        button.move(PixelsOf(colourButtonLeft, colourButtonTops[row], 0, 0).topLeft());
        button.setAccessibleName(QString(textClassNames[row]));
        connect(&button, &QAbstractButton::clicked, this, [this, row] { ChooseColour(row); });
    }
    PutButton(okButton, id::okButton, 7,
              [this] { done(choice.Confirmed() ? Accepted : Rejected); });
    PutButton(cancelButton, id::cancelButton, 24, [this] { reject(); });
    PutButton(restoreButton, id::restoreButton, 109, [this] { Restore(); });
    okButton.setDefault(true);
    okButton.setFocus();
}

// Enter presses OK, and where one of the other two has the focus, that one.
template <typename Action>
void TextColourDialog::PutButton(QPushButton& button, int id, int top, Action action) {
    NameControl(button, id);
    button.setGeometry(PixelsOf(174, top, 47, 14));
    connect(&button, &QPushButton::clicked, this, action);
}

ColourRowLayout TextColourDialog::RowLayout(std::size_t row) const {
    return LayOutColourRow(rect().left(), AreaOf(colourButtons[row].geometry()));
}

void TextColourDialog::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setFont(InterfaceFont());
    for (std::size_t row = 0; row < textClassCount; ++row) {
        if (event->rect().intersects(RectOf(RowLayout(row).repainted))) PaintRow(painter, row);
    }
}

void TextColourDialog::PaintRow(QPainter& painter, std::size_t row) const {
    const ColourRowLayout layout = RowLayout(row);
    const Colour colour = choice.Colours()[row];
    const QColor textColour = palette().color(QPalette::WindowText);
    constexpr int oneLine = Qt::AlignVCenter | Qt::TextSingleLine;

    painter.setPen(textColour);
    painter.drawText(RectOf(layout.label), Qt::AlignLeft | oneLine, QString(textClassNames[row]));
    const QRect swatch = RectOf(layout.swatch);
    painter.fillRect(swatch, ColourOf(colour));
    PaintFrame(painter, swatch, Qt::white, Qt::black);
    PaintFrame(painter, swatch.adjusted(1, 1, -1, -1), Qt::black, Qt::white);
    painter.setPen(textColour);
    painter.drawText(RectOf(layout.code), Qt::AlignHCenter | oneLine,
                     QStringFrom(ColourCode(colour)));
}

// The toolkit's own chooser, which is the same on every desktop and shows all that it has at once.
void TextColourDialog::ChooseColour(std::size_t row) {
    QColorDialog chooser(ColourOf(choice.Colours()[row]), this);
    chooser.setOption(QColorDialog::DontUseNativeDialog);
    chooser.setWindowTitle("Color");
    if (chooser.exec() != Accepted) return;
    const QRgb chosen = chooser.selectedColor().rgb();
    const auto part = [](int value) { return static_cast<std::uint32_t>(value); };
    const Colour colour = ColourFrom(part(qRed(chosen)), part(qGreen(chosen)), part(qBlue(chosen)));
    if (choice.Choose(row, colour)) update(RectOf(RowLayout(row).repainted));
}

void TextColourDialog::Restore() {
    if (choice.Restore(messageBox)) update();
}

class OptionsDialog : public HelpedDialog {
public:
    OptionsDialog(QWidget* owner, std::int32_t locusFine, const ShowTopic& showTopic);

    int Row() const { return list.currentIndex(); }

private:
    QGroupBox group{"Draw locus function", this};
    QLabel label{"Fine", this};
    QComboBox list{this};
    QPushButton applyButton{"Apply", this};
};

OptionsDialog::OptionsDialog(QWidget* owner, std::int32_t locusFine, const ShowTopic& showTopic)
    : HelpedDialog(owner, "Options", PixelsOf(0, 0, 137, 93).size(), topics::generalOptions,
                   showTopic) {
    namespace id = ids::optionsDialog;
    group.setGeometry(PixelsOf(7, 7, 123, 55));
    label.setGeometry(PixelsOf(18, 29, 20, 12));
    list.setGeometry(PixelsOf(41, 28, 77, 14));
    applyButton.setGeometry(PixelsOf(44, 71, 50, 15));
    NameControl(list, id::fineList);
    NameControl(applyButton, id::applyButton);
    for (int row = 0; row < fineRowCount; ++row) list.addItem(QStringFrom(FineRowText(row)));
    list.setMaxVisibleItems(fineRowCount);
    list.setCurrentIndex(FineRowOf(locusFine));
    list.setFocus();
    applyButton.setAutoDefault(false);  // Enter presses nothing
    connect(&applyButton, &QPushButton::clicked, this, &QDialog::accept);
}

}  // namespace

std::optional<TextColours> ChooseTextColours(QWidget* owner, const TextColours& colours,
                                             const ShowTopic& showTopic) {
    TextColourDialog dialog(owner, colours, showTopic);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.Choice().Confirmed();
}

// A stored number that no row stands for selects none, and stays where none is chosen.
std::optional<std::int32_t> ChooseLocusFine(QWidget* owner, std::int32_t locusFine,
                                            const ShowTopic& showTopic) {
    OptionsDialog dialog(owner, locusFine, showTopic);
    if (dialog.exec() != QDialog::Accepted || dialog.Row() == noFineRow) return std::nullopt;
    return dialog.Row();
}

}  // namespace orvane
