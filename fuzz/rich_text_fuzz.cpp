#include <cstdint>
#include <optional>
#include <string_view>

#include "fuzz/fuzzed_bytes.h"
#include "windows/rich_text_layout.h"
#include "windows/rich_text_parser.h"

// Any bytes as the mark-up of a label, laid out and scrolled through. Two bytes for the area, then
// the text.

namespace orvane::fuzz {

namespace {

class SquareLetters : public LabelMeasure {
public:
    LabelSize TextSize(const LabelFont& font, std::string_view text) override {
        Require(font.size >= 1 && font.size <= 1999, "the size of a font");
        Require(font.face.size() <= 259, "the name of a font");
        Require(!text.empty() && text.find('\n') == std::string_view::npos, "the text of a run");
        return {static_cast<std::int32_t>(text.size()) * font.size / 2, font.size};
    }
    std::optional<LabelSize> BitmapSize(std::int32_t number) override {
        if (number % 2 == 0) return std::nullopt;
        return LabelSize{number % 500, 20};
    }
};

bool IsNumberIn(std::size_t index, std::size_t count) { return index < count; }

void CheckDocument(const LabelDocument& document) {
    Require(!document.fonts.empty(), "there is a start font");
    for (const LabelItem& item : document.items) {
        Require(IsNumberIn(item.font, document.fonts.size()), "an item's font");
        Require(IsNumberIn(item.hotFont, document.fonts.size()), "an item's hot font");
        Require(item.link == noLink || IsNumberIn(item.link, document.targets.size()), "its link");
        Require((item.kind == LabelItemKind::run) == !item.text.empty(), "only runs have a text");
    }
    for (const std::string& target : document.targets) IsOpenableTarget(target);
}

void CheckLayout(const LabelDocument& document, const LabelLayout& layout) {
    for (const LabelPiece& piece : layout.pieces) {
        Require(IsNumberIn(piece.item, document.items.size()), "a piece's item");
    }
    for (const LabelLink& link : layout.links) {
        Require(IsNumberIn(link.target, document.targets.size()), "a link's target");
    }
}

void Scroll(const LabelLayout& layout, std::int32_t height, FuzzedBytes& bytes) {
    LabelScroller scroller;
    scroller.dragEnabled = bytes.Below(2) != 0;
    scroller.scrollOffset = -height;
    for (int count = 0; count < 20; ++count) {
        if (LabelScroller::Scrolls(layout, height)) scroller.Step(layout);
        std::int32_t rows = 0;
        for (const LabelStrip& strip : scroller.Strips(layout, height)) {
            Require(strip.height > 0 && strip.controlTop >= 0, "a strip is on the control");
            rows += strip.height;
        }
        Require(rows <= height, "the strips fit on the control");
        const auto x = static_cast<std::int32_t>(bytes.Byte()) - 8;
        const auto y = static_cast<std::int32_t>(bytes.Byte()) - 8;
        scroller.PointAt(layout, height, x, y);
        const LabelPress press = scroller.Press(layout, height, x, y);
        if (press.kind == LabelPressKind::startDrag) {
            scroller.DragTo(layout, y * static_cast<std::int32_t>(bytes.Byte()));
        }
        scroller.Release();
    }
}

}  // namespace

}  // namespace orvane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    using namespace orvane::fuzz;
    FuzzedBytes bytes(data, size);
    const auto width = static_cast<std::int32_t>(bytes.Byte());
    const auto height = static_cast<std::int32_t>(bytes.Byte()) + 1;
    const LabelDocument document = ParseRichText(bytes.Rest());
    CheckDocument(document);
    SquareLetters measure;
    const LabelLayout layout = LayOutRichText(document, width, measure);
    CheckLayout(document, layout);
    FuzzedBytes moves(data, size);
    Scroll(layout, height, moves);
    return 0;
}
