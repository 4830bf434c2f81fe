#include "app/result_pane.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>

#include "storage/qt_bytes.h"
#include "windows/control_ids.h"
#include "windows/look.h"

namespace orvane {

namespace {

QColor ColourOfText(const ColouredText& text) { return QColor::fromRgb(text.colour); }

bool IsPassedOn(int key) {
    switch (key) {
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_End:
        case Qt::Key_Home:
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_C:
            return true;
        default:
            return false;
    }
}

}  // namespace

ResultPane::ResultPane(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setLineWidth(2);
    setFont(FixedFont());
    setTabStopDistance(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 8);
    SetBlack(false);
}

void ResultPane::SetBlack(bool isBlack) {
    QPalette colours = palette();
    colours.setColor(QPalette::Base, isBlack ? Qt::black : Qt::white);
    colours.setColor(QPalette::Text, isBlack ? Qt::white : Qt::black);
    setPalette(colours);
}

void ResultPane::ShowTexts(const ColouredText& position, const ColouredText& result) {
    clear();
    AppendText(position);
    AppendText(result);
    moveCursor(QTextCursor::Start);
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    // A run holds the interface thread right behind this.
    viewport()->repaint();
}

void ResultPane::AppendText(const ColouredText& text) {
    if (text.text.empty()) return;
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    QTextCharFormat format;
    format.setForeground(ColourOfText(text));
    cursor.insertText(QStringFrom(text.text), format);
}

void ResultPane::keyPressEvent(QKeyEvent* event) {
    if (IsPassedOn(event->key())) {
        QPlainTextEdit::keyPressEvent(event);
    } else {
        event->ignore();
    }
}

void ResultPane::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu;
    QAction* copyAction = menu.addAction(QStringLiteral("Copy"), this, &ResultPane::copy);
    NameControl(*copyAction, ids::command::copyResult);
    copyAction->setEnabled(textCursor().hasSelection());
    QAction* selectAction =
        menu.addAction(QStringLiteral("Select all"), this, &ResultPane::selectAll);
    NameControl(*selectAction, ids::command::selectAllResult);
    menu.exec(event->globalPos());
}

QMimeData* ResultPane::createMimeDataFromSelection() const {
    // The document's own text turns fixed blanks into plain ones.
    QString text = textCursor().selectedText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    auto* data = new QMimeData;  // the caller owns it
    data->setText(text);
    return data;
}

}  // namespace orvane
