#pragma once

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <utility>

#include "windows/rich_text_layout.h"

// What a screen tells about a rich text label, and its picture.

namespace orvane {

// The bitmap of this number; a null one when there is none.
using BitmapSource = std::function<QPixmap(std::int32_t number)>;

// The font with the faces that take its place where it is not installed.
QFont ScreenFont(const LabelFont& font);

class ScreenMeasure : public LabelMeasure {
public:
    explicit ScreenMeasure(BitmapSource source) : bitmaps(std::move(source)) {}

    LabelSize TextSize(const LabelFont& font, std::string_view text) override;
    std::optional<LabelSize> BitmapSize(std::int32_t number) override;

private:
    BitmapSource bitmaps;
};

enum class LabelLook : std::int32_t { normal, underPointer };

struct LabelCanvas {
    std::int32_t width = 0;  // of the area; pieces that reach out of it are cut
    double scale = 1;        // pixels of the screen to one of the layout
    QColor background, buttonShadow;
    LabelLook look = LabelLook::normal;
};

// The picture in pixels of the screen. It has the rows of the text and no others, and at most
// labelCanvasRows of them; a null one when there is nothing to show.
QPixmap DrawRichText(const LabelDocument& document, const LabelLayout& layout,
                     const LabelCanvas& canvas, const BitmapSource& bitmaps);

}  // namespace orvane
