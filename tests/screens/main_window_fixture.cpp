#include "tests/screens/main_window_fixture.h"

#include <QTest>

#include "core/calc_parameters.h"
#include "storage/file_bytes.h"
#include "tests/support/active_window.h"

namespace orvane {

MainWindow& MainWindowTest::Start() {
    window = std::make_unique<MainWindow>(folder.path().toStdString());
    window->Open();
    EXPECT_TRUE(test::MakeActive(*window));
    return *window;
}

void MainWindowTest::Resize(QSize size) {
    window->showNormal();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !window->isMaximized(); }));
    window->resize(size);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->size() == size; }));
}

MainLayout MainWindowTest::Layout() const {
    return LayOutMainWindow(window->width(), window->height(), calcParameters.calcHeightCommand);
}

void MainWindowTest::PressButton(MainButton button) {
    QTest::mouseClick(window.get(), Qt::LeftButton, {},
                      MiddleOf(Layout().buttons[static_cast<int>(button)]));
}

std::string MainWindowTest::Path(const std::string& name) const {
    return folder.path().toStdString() + "/" + name;
}

void MainWindowTest::Write(const std::string& name, const std::string& bytes) {
    std::string rest = bytes;
    std::string reason;
    const auto nextPiece = [&rest] { return std::exchange(rest, std::string()); };
    ASSERT_TRUE(WriteFile(Path(name), nextPiece, reason)) << reason;
}

std::string MainWindowTest::Read(const std::string& name) const {
    std::string reason;
    return ReadFile(Path(name), reason).value_or("unreadable: " + reason);
}

}  // namespace orvane
