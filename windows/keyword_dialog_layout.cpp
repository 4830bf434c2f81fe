#include "windows/keyword_dialog_layout.h"

namespace orvane {

namespace {

constexpr int margin = 12;
constexpr int gap = 10;  // above the buttons, and from each of them to the middle
// The four narrow columns, and 30 pixels for the scroll bar.
constexpr int widthOfTheRest = 330;

}  // namespace

KeywordDialogLayout LayOutKeywordDialog(int clientWidth, int clientHeight, int buttonWidth,
                                        int buttonHeight) {
    const int left = margin;
    const int top = margin;
    const int right = clientWidth - margin;
    const int bottom = clientHeight - margin;
    const int middle = (left + right) / 2;
    const int buttonTop = bottom - buttonHeight;

    KeywordDialogLayout layout;
    layout.helpButton = {middle - gap - buttonWidth, buttonTop, buttonWidth, buttonHeight};
    layout.closeButton = {middle + gap, buttonTop, buttonWidth, buttonHeight};
    layout.list = {left, top, right - left, buttonTop - gap - top};

    const int forParameters = right - left - widthOfTheRest;
    const int mainWidth = static_cast<int>(forParameters * 0.8);
    const int optionalWidth = static_cast<int>(forParameters * 0.2);
    layout.columnWidths = {90, 170, 20, mainWidth, optionalWidth, 20};
    return layout;
}

}  // namespace orvane
