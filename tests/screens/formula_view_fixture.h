#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QPoint>
#include <QString>
#include <QWidget>
#include <string_view>

#include "editor/formula_editor.h"

// A window with a formula editor that has the focus.

namespace orvane {

class FormulaViewTest : public testing::Test {
protected:
    void SetUp() override;

    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Type(const QString& text);
    // Puts the caret, with a selection from somewhere else where that is asked for.
    void PutCaret(TextPosition caret);
    void Select(TextPosition from, TextPosition caret);
    // The middle of the left half of a cell of the view, so that a press there hits its start.
    QPoint CellPoint(int line, int cell) const;
    QPoint OnScreen(QPoint inView) const { return viewport.mapTo(&window, inView); }
    void Click(QPoint inView);
    // Empties the event queue: all that is to be painted is on the screen then.
    static void Settle();
    // What the screen shows of the view, and what a whole painting of it would show.
    QImage Shown() const;
    QImage Whole() const;

    const EditorModel& Model() const { return view.Model(); }
    std::string Text() const { return editor.GetText(); }

    QWidget window;
    FormulaEditor editor{&window};
    FormulaView& view = editor.View();
    QWidget& viewport = *view.viewport();
};

}  // namespace orvane
