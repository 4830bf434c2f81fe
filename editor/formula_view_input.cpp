// What the user does in the view: keys, mouse, clipboard and menu.

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <algorithm>
#include <iterator>

#include "editor/edit_menu.h"
#include "editor/formula_view.h"
#include "storage/qt_bytes.h"

namespace orvane {

// A key that moves the caret or edits, and what becomes of it while the keyword list shows. A key
// with neither a move nor a code is only for the list to eat.
struct ViewKey {
    int key;
    std::optional<CaretKey> move;
    std::optional<char> code;
    enum class WithList { works, goesToList, accepts, isEaten } withList;
    ListKey listKey = ListKey::up;
};

namespace {

constexpr char firstTyped = 3;
constexpr char lastTyped = 126;

// These come as keys of their own.
constexpr bool ComesAsKey(char ch) { return ch == '\b' || ch == '\t' || ch == '\n' || ch == '\r'; }

struct CommandKey {
    int key;
    EditCommand command;
};
constexpr CommandKey commandKeys[] = {{Qt::Key_C, EditCommand::copy},
                                      {Qt::Key_V, EditCommand::paste},
                                      {Qt::Key_X, EditCommand::cut},
                                      {Qt::Key_Y, EditCommand::redo},
                                      {Qt::Key_Z, EditCommand::undo}};

using enum ViewKey::WithList;
constexpr ViewKey viewKeys[] = {
    // key, move, code, with the list
    {Qt::Key_Backspace, {}, backspaceCode, works},
    {Qt::Key_Tab, {}, '\t', isEaten},
    {Qt::Key_Backtab, {}, '\t', isEaten},
    {Qt::Key_Return, {}, enterCode, accepts},
    {Qt::Key_Enter, {}, enterCode, accepts},
    {Qt::Key_Delete, {}, deleteCode, works},
    {Qt::Key_PageUp, CaretKey::pageUp, {}, goesToList, ListKey::pageUp},
    {Qt::Key_PageDown, CaretKey::pageDown, {}, goesToList, ListKey::pageDown},
    {Qt::Key_End, CaretKey::end, {}, goesToList, ListKey::end},
    {Qt::Key_Home, CaretKey::home, {}, goesToList, ListKey::home},
    {Qt::Key_Left, CaretKey::left, {}, works},
    {Qt::Key_Right, CaretKey::right, {}, works},
    {Qt::Key_Up, CaretKey::up, {}, goesToList, ListKey::up},
    {Qt::Key_Down, CaretKey::down, {}, goesToList, ListKey::down},
    {Qt::Key_Escape, {}, {}, isEaten},
    {Qt::Key_Insert, {}, {}, isEaten},
};

template <typename Row, std::size_t count>
const Row* FindKey(const Row (&rows)[count], int key) {
    const auto row = std::find_if(std::begin(rows), std::end(rows),
                                  [key](const Row& entry) { return entry.key == key; });
    return row == std::end(rows) ? nullptr : row;
}

// Plain text ends at its first NUL, as every text does that is stored with a NUL behind it.
std::string ClipboardText() {
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr || !data->hasText()) return {};
    std::string text = BytesFrom(data->text());
    text.resize(std::min(text.find('\0'), text.size()));
    std::erase(text, '\r');
    return text;
}

}  // namespace

void FormulaView::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    // Alt calls menus, and other programs have the system key.
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (modifiers & (Qt::AltModifier | Qt::MetaModifier)) return;

    const int key = event->key();
    if (key == Qt::Key_F1 || key == Qt::Key_F2) {
        event->accept();
        return key == Qt::Key_F1 ? OpenList() : AskForHelp();
    }
    if (const ViewKey* const row = FindKey(viewKeys, key)) {
        event->setAccepted(PressKey(*row, modifiers & Qt::ShiftModifier));
    } else if (!(modifiers & Qt::ControlModifier)) {
        event->setAccepted(TypeText(event->text()));
    } else if (const CommandKey* const command = FindKey(commandKeys, key)) {
        event->accept();
        Run(command->command);
    }
}

// False for a key that is left to the window.
bool FormulaView::PressKey(const ViewKey& row, bool shift) {
    if (keywordPopup.IsShowing()) {
        if (row.withList == goesToList) keywordPopup.PressKey(row.listKey);
        if (row.withList == accepts) Accept(std::nullopt);
        if (row.withList != works) return true;
        shift = false;
    }
    const VisibleRows rows = {.top = scroll.vertical.position, .page = scroll.vertical.page};
    if (row.move) ApplyAndUpdateCalls(MoveCaret(model, *row.move, shift, rows));
    if (row.code) EditChar(*row.code);
    return row.move || row.code;
}

// Whatever the keyboard or an input method brings, only plain characters get in.
bool FormulaView::TypeText(const QString& text) {
    bool typed = false;
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        if (code < firstTyped || code > lastTyped || ComesAsKey(static_cast<char>(code))) continue;
        EditChar(static_cast<char>(code));
        typed = true;
    }
    return typed;
}

void FormulaView::inputMethodEvent(QInputMethodEvent* event) {
    TypeText(event->commitString());
    event->accept();
}

QVariant FormulaView::inputMethodQuery(Qt::InputMethodQuery query) const {
    if (query == Qt::ImCursorRectangle) return CaretCell();
    return QAbstractScrollArea::inputMethodQuery(query);
}

void FormulaView::EditChar(char code) {
    const bool isTrigger = acceptTriggers.find(code) != std::string_view::npos;
    if (isTrigger && keywordPopup.IsShowing() && Accept(code)) return;
    if (!Apply(model.EditChar(code))) return;
    if (code == '(') ShowHint();
    UpdateCalls();
}

// Commands.

void FormulaView::Run(EditCommand command) {
    switch (command) {
        case EditCommand::cut:
            return Cut();
        case EditCommand::copy:
            return Copy();
        case EditCommand::paste:
            return Paste();
        case EditCommand::deleteSelection:
            return DeleteSelection();
        case EditCommand::undo:
            return Undo();
        case EditCommand::redo:
            return Redo();
        case EditCommand::selectAll:
            return SelectAll();
    }
}

void FormulaView::Copy() {
    if (!model.HasSelection()) return;
    QGuiApplication::clipboard()->setText(QStringFrom(model.SelectedText()));
}

// Deletes first: where the clipboard can't be had the text goes all the same.
void FormulaView::Cut() {
    if (!model.HasSelection()) return;
    const QString taken = QStringFrom(model.SelectedText());
    DeleteSelection();
    QGuiApplication::clipboard()->setText(taken);
}

void FormulaView::DeleteSelection() { ApplyAndUpdateCalls(model.DeleteSelection()); }

void FormulaView::Paste() { ApplyAndUpdateCalls(model.Paste(ClipboardText())); }

void FormulaView::Undo() { ApplyAndUpdateCalls(model.Undo()); }

void FormulaView::Redo() { ApplyAndUpdateCalls(model.Redo()); }

// The view stays where it is, though the caret goes to the end.
void FormulaView::SelectAll() {
    const EditOutcome outcome = model.SelectAll();
    HideCaret();
    PaintOutcome(outcome);
    ShowCaret();
    UpdateCalls();
}

void FormulaView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    FillEditMenu(menu, model, !ClipboardText().empty());
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    const QPoint place =
        isByMouse ? event->globalPos() : viewport()->mapToGlobal(CaretCell().bottomLeft());
    const std::optional<EditCommand> command = CommandOf(menu.exec(place));
    if (command) Run(*command);
}

// Mouse.

void FormulaView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    CloseHint();
    HideCaret();
    const QPoint point = event->position().toPoint();
    dragged = HitTest(model.text, Grid(), point.x(), point.y());
    PaintOutcome(model.PlaceCaret(*dragged, false));
    setFocus(Qt::MouseFocusReason);
    ShowCaret();
}

void FormulaView::mouseMoveEvent(QMouseEvent* event) {
    if (dragged && (event->buttons() & Qt::LeftButton)) DragTo(event->position().toPoint());
}

// A move within half a cell leaves the caret alone, so that a hand that shakes does not undo what a
// double click has selected.
void FormulaView::DragTo(QPoint point) {
    const TextPosition position = HitTest(model.text, Grid(), point.x(), point.y());
    if (position != *dragged) {
        dragged = position;
        HideCaret();
        PaintOutcome(model.PlaceCaret(position, true));
        ShowCaret();
        UpdateCalls();
    }
    scroll.FollowDrag({.x = point.x(),
                       .y = point.y(),
                       .width = viewport()->width(),
                       .height = viewport()->height(),
                       .cellWidth = CellWidth(),
                       .lineHeight = LineHeight()});
    PushScroll();
}

void FormulaView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) dragged.reset();
}

// The press of the first click has put the caret.
void FormulaView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    HideCaret();
    PaintOutcome(SelectAtCaret(model));
    ShowCaret();
    UpdateCalls();
    const QPoint point = event->position().toPoint();
    dragged = HitTest(model.text, Grid(), point.x(), point.y());
}

}  // namespace orvane
