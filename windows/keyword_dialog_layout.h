#pragma once

#include <array>

#include "windows/keyword_list_rows.h"

// Where everything stands in the All keywords dialog. Pixels of the client area, x to the right and
// y down.

namespace orvane {

struct KeywordDialogLayout {
    struct Box {
        int left = 0;
        int top = 0;
        int width = 0;
        int height = 0;

        bool operator==(const Box&) const = default;
    };

    Box list;
    Box helpButton;
    Box closeButton;
    // The two columns of parameters share what the others leave; in a list narrower than 330
    // pixels nothing is left, and their widths are negative.
    std::array<int, keywordColumnCount> columnWidths{};
};

// For a client area of any size. Both buttons are as large as told.
KeywordDialogLayout LayOutKeywordDialog(int clientWidth, int clientHeight, int buttonWidth,
                                        int buttonHeight);

}  // namespace orvane
