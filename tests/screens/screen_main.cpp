#include <gtest/gtest.h>

#include <QApplication>

#include "windows/look.h"

// One application object for all tests, with the look that the program has.
int main(int count, char** words) {
    testing::InitGoogleTest(&count, words);
    orvane::PrepareLook();
    QApplication application(count, words);
    orvane::ApplyLook(application);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
