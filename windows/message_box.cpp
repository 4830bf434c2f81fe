#include "windows/message_box.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

#include "storage/qt_bytes.h"
#include "windows/look.h"

namespace orvane {

namespace {

constexpr int longestWord = 60;
constexpr int longestText = 1200;
constexpr int mostLines = 10;
constexpr int leastWidth = 200;  // window managers cut the caption of a narrower box

// The names of sheets stand in the texts and may be anything: the box must still fit the screen. A
// long text loses its middle, a long word may be broken, and lines beyond the tenth run on.
QString FittingText(std::string_view bytes) {
    QString text = QStringFrom(bytes);
    if (text.size() > longestText) {
        text.replace(longestText / 2, text.size() - longestText, QString("..."));
    }
    int letters = 0;
    int lines = 1;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == '\n' && ++lines > mostLines) text[at] = ' ';
        letters = text[at].isSpace() ? 0 : letters + 1;
        if (letters <= longestWord) continue;
        text.insert(at, QChar(0x200B));  // a place to break that is not seen
        letters = 0;
    }
    return text;
}

// A box with these buttons. It stays open without an answer unless `escape` names the button that
// Escape and the close box press.
class Box : public QMessageBox {
public:
    Box(QWidget* owner, std::string_view message, StandardButtons buttons, StandardButton enter,
        StandardButton escape)
        : QMessageBox(NoIcon, QStringFrom(questionCaption), FittingText(message), buttons, owner),
          closes(escape != NoButton) {
        setFont(InterfaceFont());
        setTextFormat(Qt::PlainText);
        setDefaultButton(enter);
        if (closes) setEscapeButton(escape);
        // The desktop's translations would mix two languages.
        SetText(Ok, "OK");
        SetText(Yes, "&Yes");
        SetText(No, "&No");
        SetText(Cancel, "Cancel");
        KeepCaptionInView();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (closes || !event->matches(QKeySequence::Cancel)) QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (closes) {
            QMessageBox::closeEvent(event);
        } else {
            event->ignore();
        }
    }

private:
    void SetText(StandardButton which, const char* text) {
        QAbstractButton* const found = button(which);
        if (found != nullptr) found->setText(QString(text));
    }

    // The box is as wide as its layout needs, whatever width is set from outside: a blank across
    // all columns keeps it from getting too narrow.
    void KeepCaptionInView() {
        auto* const grid = qobject_cast<QGridLayout*>(layout());
        if (grid == nullptr) return;
        const QMargins edges = grid->contentsMargins();
        grid->addItem(new QSpacerItem(leastWidth - edges.left() - edges.right(), 0), 0, 0, 1,
                      grid->columnCount());
    }

    bool closes;
};

}  // namespace

void MessageBox::ShowMessage(std::string_view message) {
    Box(owner, message, QMessageBox::Ok, QMessageBox::Ok, QMessageBox::Ok).exec();
}

bool MessageBox::Confirm(std::string_view question) {
    Box box(owner, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No, QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

bool MessageBox::AskYesNo(std::string_view question) {
    Box box(owner, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes,
            QMessageBox::NoButton);
    return box.exec() == QMessageBox::Yes;
}

Answer MessageBox::AskYesNoCancel(std::string_view question) {
    Box box(owner, question, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
            QMessageBox::Yes, QMessageBox::Cancel);
    switch (box.exec()) {
        case QMessageBox::Yes:
            return Answer::yes;
        case QMessageBox::No:
            return Answer::no;
        default:
            return Answer::cancel;
    }
}

}  // namespace orvane
