#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QRect>
#include <QString>
#include <optional>
#include <string>
#include <string_view>

#include "editor/call_hints.h"
#include "editor/caret_blink.h"
#include "editor/caret_moves.h"
#include "editor/edit_commands.h"
#include "editor/editor_model.h"
#include "editor/formula_painter.h"
#include "editor/keyword_popup.h"
#include "editor/parameter_hint.h"
#include "editor/scroll_state.h"
#include "storage/text_colours.h"

// The text view of the formula editor: hands keys, mouse, clipboard and scroll bars to the model
// and paints what it answers, and no more of it than it names. Positions in pixels are those of the
// viewport.

namespace orvane {

struct ViewKey;

class FormulaView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit FormulaView(QWidget* parent = nullptr);

    void SetText(std::string_view text);
    std::string GetText() const { return model.GetText(); }
    void SetColours(const TextColours& newColours);
    const TextColours& Colours() const { return colours; }

    void EditChar(char code);
    void Copy();
    void Cut();
    void DeleteSelection();
    void Paste();
    void Undo();
    void Redo();
    void SelectAll();

    const EditorModel& Model() const { return model; }
    const ViewScroll& Scroll() const { return scroll; }
    const CaretBlink& Blink() const { return blink; }
    KeywordPopup& Popup() { return keywordPopup; }
    ParameterHint& Hint() { return parameterHint; }
    int CellWidth() const { return textPainter.CellWidth(); }
    int LineHeight() const { return textPainter.LineHeight(); }
    // The cell that the caret stands in, which may be scrolled out of the view.
    QRect CaretCell() const;

signals:
    // The help key: a topic to be shown.
    void HelpWanted(const QString& topic);

protected:
    bool focusNextPrevChild(bool) override { return false; }  // the Tab key types a tab
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void timerEvent(QTimerEvent* event) override;

private:
    // Keys.
    bool PressKey(const ViewKey& row, bool shift);
    bool TypeText(const QString& text);
    void Run(EditCommand command);
    void AskForHelp();

    // Paints what an operation of the model answered and lets the view and the list follow the
    // caret; false where the operation changed nothing.
    bool Apply(const EditOutcome& outcome);
    // The same, and the open calls with it.
    void ApplyAndUpdateCalls(const EditOutcome& outcome);
    void PaintOutcome(const EditOutcome& outcome);
    void DragTo(QPoint point);

    // Pop-ups.
    void OpenList();
    bool Accept(std::optional<char> trigger);
    void ShowHint();
    void UpdateCalls();
    void CloseHint();
    std::string_view WordAtCaret() const;

    // Caret, scrolling and painting.
    CellGrid Grid() const;
    QRect CellAt(std::int32_t line, std::int32_t cell) const;
    void ShowCaret();
    void HideCaret();
    void UpdateRows(RowSpan rows);
    void KeepCaretInView();
    void RefreshRanges();
    void PushScroll();

    EditorModel model;
    FormulaPainter textPainter;
    TextColours colours = defaultTextColours;
    ViewScroll scroll;
    CaretBlink blink;
    QBasicTimer blinkTimer;
    QRect caretArea;                      // what is to be painted anew when the caret goes
    std::optional<TextPosition> dragged;  // where the pressed mouse is
    KeywordPopup keywordPopup;
    ParameterHint parameterHint;
    CallStack calls;
};

}  // namespace orvane
