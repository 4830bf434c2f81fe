#include "editor/formula_view.h"

#include <QFocusEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimerEvent>
#include <algorithm>

#include "editor/view_geometry.h"
#include "storage/qt_bytes.h"
#include "windows/help_topics.h"

namespace orvane {

namespace {

constexpr int caretWidth = 1;
constexpr int caretAreaWidth = 2;

void PushAxis(QScrollBar& bar, ScrollAxis& axis) {
    const std::int32_t wanted = axis.position;
    bar.setPageStep(axis.page);
    bar.setRange(0, axis.Limit());
    bar.setValue(wanted);
    axis.MoveTo(bar.value());
}

}  // namespace

FormulaView::FormulaView(QWidget* parent)
    : QAbstractScrollArea(parent), keywordPopup(*viewport()), parameterHint(*viewport()) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::TabFocus);
    // So that a character behind a dead key can be typed; what comes is filtered like keys.
    setAttribute(Qt::WA_InputMethodEnabled);
    setInputMethodHints(Qt::ImhLatinOnly | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalScrollBar()->setSingleStep(1);
    verticalScrollBar()->setSingleStep(1);
    RefreshRanges();
    connect(&keywordPopup, &KeywordPopup::Accepted, this, [this] { Accept(std::nullopt); });
    connect(&keywordPopup, &KeywordPopup::Dismissed, this, &FormulaView::CloseHint);
    connect(&parameterHint, &ParameterHint::Dismissed, this, &FormulaView::CloseHint);
}

void FormulaView::SetText(std::string_view text) { ApplyAndUpdateCalls(model.SetText(text)); }

void FormulaView::SetColours(const TextColours& newColours) {
    colours = newColours;
    viewport()->update();
}

QRect FormulaView::CaretCell() const { return CellAt(model.caretLine, model.PaintedCell()); }

// Focus and caret.

// A menu that opens takes the focus only for its own keys: nothing changes for it.
void FormulaView::focusInEvent(QFocusEvent* event) {
    if (event->reason() == Qt::PopupFocusReason && blink.hasFocus) return;
    blink.hasFocus = true;
    blinkTimer.start(CaretBlink::tickMilliseconds, this);
    ShowCaret();
}

void FormulaView::focusOutEvent(QFocusEvent* event) {
    if (event->reason() == Qt::PopupFocusReason) return;
    HideCaret();
    blink.hasFocus = false;
    blinkTimer.stop();
    PaintOutcome(model.CollapseSelection());
}

void FormulaView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != blinkTimer.timerId()) return QAbstractScrollArea::timerEvent(event);
    if (blink.Tick()) viewport()->update(caretArea);
}

void FormulaView::ShowCaret() {
    blink.Show();
    const QRect cell = CaretCell();
    caretArea = {cell.left(), cell.top(), caretAreaWidth, cell.height()};
    viewport()->update(caretArea);
}

void FormulaView::HideCaret() {
    blink.Hide();
    viewport()->update(caretArea);
}

// What the model answers.

bool FormulaView::Apply(const EditOutcome& outcome) {
    if (outcome == EditOutcome{}) return false;
    HideCaret();
    PaintOutcome(outcome);
    if (outcome.textChanged) RefreshRanges();
    KeepCaretInView();
    ShowCaret();
    keywordPopup.Follow(CaretCell(), viewport()->rect(), WordAtCaret());
    return true;
}

void FormulaView::ApplyAndUpdateCalls(const EditOutcome& outcome) {
    if (Apply(outcome)) UpdateCalls();
}

void FormulaView::PaintOutcome(const EditOutcome& outcome) {
    const RepaintArea area =
        ClipToView(outcome.area, scroll.vertical.position, scroll.horizontal.position);
    switch (area.kind) {
        case RepaintKind::none:
            break;
        case RepaintKind::restOfRow: {
            const QRect cell = CellAt(area.line, area.cell);
            const int width = viewport()->width() - cell.left();
            viewport()->update(QRect(cell.topLeft(), QSize(width, cell.height())));
            break;
        }
        case RepaintKind::wholeRow:
            UpdateRows({area.line, area.line});
            break;
        case RepaintKind::wholeWindow:
            viewport()->update();
            break;
    }
    UpdateRows(outcome.rows);
}

void FormulaView::UpdateRows(RowSpan rows) {
    const std::int32_t top = scroll.vertical.position;
    const std::int32_t first = std::max(rows.first, top);
    const std::int32_t last = std::min(rows.last, top + scroll.vertical.page);
    if (last < first) return;
    viewport()->update(0, (first - top) * LineHeight(), viewport()->width(),
                       (last - first + 1) * LineHeight());
}

// Scrolling.

void FormulaView::KeepCaretInView() {
    scroll.KeepInView(model.Caret());
    PushScroll();
}

void FormulaView::RefreshRanges() {
    scroll.SetTextSize(model.text.lineCountSeen, model.text.longestLine);
    scroll.SetPages(viewport()->height() / LineHeight(), viewport()->width() / CellWidth());
    PushScroll();
}

// The bars call back into scrollContentsBy, which moves what is painted.
void FormulaView::PushScroll() {
    PushAxis(*verticalScrollBar(), scroll.vertical);
    PushAxis(*horizontalScrollBar(), scroll.horizontal);
}

// One bar moves at a time, and the other one may still be behind the position that it is to have.
void FormulaView::scrollContentsBy(int dx, int dy) {
    if (dy != 0) scroll.vertical.MoveTo(verticalScrollBar()->value());
    if (dx != 0) scroll.horizontal.MoveTo(horizontalScrollBar()->value());
    const QPoint by(dx * CellWidth(), dy * LineHeight());
    caretArea.translate(by);
    viewport()->scroll(by.x(), by.y());
}

void FormulaView::resizeEvent(QResizeEvent*) { RefreshRanges(); }

// Painting.

CellGrid FormulaView::Grid() const {
    return {.cellWidth = CellWidth(),
            .lineHeight = LineHeight(),
            .topLine = scroll.vertical.position,
            .leftCell = scroll.horizontal.position};
}

QRect FormulaView::CellAt(std::int32_t line, std::int32_t cell) const {
    const CellGrid grid = Grid();
    return {grid.LeftOf(cell), grid.TopOf(line), grid.cellWidth, grid.lineHeight};
}

void FormulaView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    for (const QRect& area : event->region()) {
        textPainter.Paint(painter, model, colours, Grid(), area, viewport()->height());
    }
    if (!blink.IsShown()) return;
    painter.setClipping(false);
    const QRect cell = CaretCell();
    painter.fillRect(cell.left(), cell.top(), caretWidth, cell.height(), Qt::black);
}

// Pop-ups.

std::string_view FormulaView::WordAtCaret() const {
    const auto word = WordAt(model.text, model.Caret());
    if (!word) return {};
    return model.text.GetLine(word->line)
        .substr(static_cast<std::size_t>(word->start),
                static_cast<std::size_t>(word->end - word->start));
}

void FormulaView::OpenList() {
    if (keywordPopup.IsShowing() || model.HasSelection()) return;
    keywordPopup.Open(CaretCell(), viewport()->rect(), WordAtCaret());
    setFocus();
}

// Puts the list's keyword in place of the word at the caret, as one step of the history.
bool FormulaView::Accept(std::optional<char> trigger) {
    const KeywordEntry* const entry = keywordPopup.EntryToAccept(trigger);
    if (entry == nullptr) return false;
    keywordPopup.Hide();
    const auto word = WordAt(model.text, model.Caret());
    if (word) model.Select({word->line, word->start}, {word->line, word->end});
    std::string inserted = entry->name;
    if (trigger) inserted += *trigger;
    Apply(model.Paste(inserted));
    if (trigger == '(') ShowHint();
    UpdateCalls();
    return true;
}

void FormulaView::ShowHint() {
    const auto call = CallOpenedAt(model.text.GetLine(model.caretLine), model.caretCol);
    if (!call) return;
    parameterHint.ShowFor(*call->entry, CaretCell());
    calls.Push(*call, model.caretLine);
}

void FormulaView::UpdateCalls() {
    if (!parameterHint.IsShowing()) return;
    const std::string_view line = model.text.GetLine(model.caretLine);
    switch (calls.Update(line, model.caretLine, model.caretCol)) {
        case HintChange::stays:
            break;
        case HintChange::hides:
            CloseHint();
            break;
        case HintChange::showsNewest: {
            const OpenCall& newest = calls.calls.back();
            const std::int32_t cell = VisualCol(line, newest.column);
            parameterHint.ShowFor(*newest.entry, CellAt(model.caretLine, cell));
            break;
        }
    }
}

void FormulaView::CloseHint() {
    parameterHint.Hide();
    calls.Clear();
}

void FormulaView::AskForHelp() {
    const auto word = HelpWord(model);
    if (word) emit HelpWanted(QStringFrom(TopicForFastHelp(*word)));
}

}  // namespace orvane
