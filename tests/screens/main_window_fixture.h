#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <memory>
#include <string>

#include "app/main_window.h"

// A main window in a program folder of its own. Each window shares the process-wide options, so
// one lives at a time.

namespace orvane {

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() {
        QDir(folder.path()).mkdir(QStringLiteral("Setting"));
        Write("Setting/Orvane.set", "");
    }

    // Starts the program as a user does, and waits until it can be seen.
    MainWindow& Start();
    // Ends it, which writes the settings.
    void End() { window.reset(); }

    std::string Path(const std::string& name) const;
    void Write(const std::string& name, const std::string& bytes);
    std::string Read(const std::string& name) const;

    QTemporaryDir folder;
    std::unique_ptr<MainWindow> window;
};

}  // namespace orvane
