#include "tests/screens/formula_view_fixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include "tests/support/active_window.h"

namespace orvane {

void FormulaViewTest::SetUp() {
    QGuiApplication::clipboard()->clear();
    window.move(150, 100);
    window.resize(640, 420);
    editor.setGeometry(20, 30, 480, 330);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(test::MakeActive(window));
    editor.SetFocus();
    ASSERT_TRUE(QTest::qWaitFor([this] { return view.hasFocus(); }));
    Settle();
}

void FormulaViewTest::Press(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window.windowHandle(), static_cast<Qt::Key>(key), modifiers);
}

void FormulaViewTest::Type(const QString& text) {
    for (const QChar character : text) {
        QTest::keyClick(window.windowHandle(), character.toLatin1());
    }
}

QPoint FormulaViewTest::CellPoint(int line, int cell) const {
    return {(cell - view.Scroll().horizontal.position) * view.CellWidth() + view.CellWidth() / 4,
            (line - view.Scroll().vertical.position) * view.LineHeight() + view.LineHeight() / 2};
}

void FormulaViewTest::Click(QPoint inView) {
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, OnScreen(inView));
}

void FormulaViewTest::PutCaret(TextPosition caret) { Select(caret, caret); }

void FormulaViewTest::Select(TextPosition from, TextPosition caret) {
    const auto cell = [this](TextPosition position) {
        EditorModel measure;
        measure.SetText(Model().text.GetLine(position.line));
        measure.PlaceCaret({0, position.col}, false);
        return CellPoint(position.line, measure.PaintedCell());
    };
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, OnScreen(cell(from)));
    if (from != caret) QTest::mouseMove(window.windowHandle(), OnScreen(cell(caret)));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, OnScreen(cell(caret)));
    Settle();
    ASSERT_EQ(Model().Caret(), caret);
}

void FormulaViewTest::Settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

QImage FormulaViewTest::Shown() const {
    const QPoint corner = viewport.mapToGlobal(QPoint());
    return window.screen()
        ->grabWindow(0, corner.x(), corner.y(), viewport.width(), viewport.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

QImage FormulaViewTest::Whole() const {
    return viewport.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

}  // namespace orvane
