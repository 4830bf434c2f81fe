#include "windows/rich_text_layout.h"

#include <algorithm>

namespace orvane {

namespace {

// No place lies further out, so that sums of two places stay in range whatever a text asks for.
constexpr std::int64_t farthest = 1'000'000'000;

std::int32_t Limited(std::int64_t place) {
    return static_cast<std::int32_t>(std::clamp(place, -farthest, farthest));
}

class LinePlacer {
public:
    LinePlacer(const LabelDocument& wholeDocument, std::int32_t width, LabelMeasure& measurer)
        : document(wholeDocument), areaWidth(width), measure(measurer) {}

    LabelLayout PlaceAll();

private:
    void PlaceItem(std::size_t index);
    void AddRun(std::size_t index);
    void AddPicture(std::size_t index);
    void AddPiece(std::size_t index, LabelSize size);
    void PlaceRule(std::size_t index);
    void EndLine(const LabelItem& item);
    std::int32_t BlankHeight(std::size_t font);
    std::int32_t AlignedLeft(HorizontalAlign align, std::int32_t width) const;

    const LabelDocument& document;
    const std::int32_t areaWidth;
    LabelMeasure& measure;
    LabelLayout layout;
    std::vector<LabelPiece> line;  // `left` counts from the start of the line
    std::int32_t lineWidth = 0, lineHeight = 0;
    bool hasRun = false;  // on the line, besides pictures
    std::int32_t top = 0;
    // Long rows of empty lines ask for one and the same height.
    std::size_t blankFont = noLink;
    std::int32_t blankHeight = 0;
};

LabelLayout LinePlacer::PlaceAll() {
    for (std::size_t index = 0; index < document.items.size(); ++index) PlaceItem(index);
    layout.totalHeight = top;
    return std::move(layout);
}

void LinePlacer::PlaceItem(std::size_t index) {
    const LabelItem& item = document.items[index];
    switch (item.kind) {
        case LabelItemKind::run:
            return AddRun(index);
        case LabelItemKind::picture:
            return AddPicture(index);
        case LabelItemKind::rule:
            return PlaceRule(index);
        case LabelItemKind::lineEnd:
            // Kept: a line of pictures alone is as high as a blank too; they reach out of it.
            if (!hasRun) lineHeight = BlankHeight(item.font);
            return EndLine(item);
        case LabelItemKind::verticalSpace:
            if (!line.empty()) EndLine(item);
            top = Limited(std::int64_t{top} + item.amount);
            return;
        case LabelItemKind::horizontalSpace:
            lineWidth = Limited(std::int64_t{lineWidth} + item.amount);
            return;
    }
}

// A link takes the room of its larger look, so that nothing moves under the pointer.
void LinePlacer::AddRun(std::size_t index) {
    const LabelItem& item = document.items[index];
    LabelSize size = measure.TextSize(document.fonts[item.font], item.text);
    if (item.link != noLink && item.hotFont != item.font) {
        const LabelSize hot = measure.TextSize(document.fonts[item.hotFont], item.text);
        size = {std::max(size.width, hot.width), std::max(size.height, hot.height)};
    }
    AddPiece(index, size);
    hasRun = true;
}

void LinePlacer::AddPicture(std::size_t index) {
    const LabelItem& item = document.items[index];
    const std::optional<LabelSize> size = measure.BitmapSize(item.amount);
    if (!size) return;
    const std::int64_t frame = 2 * std::int64_t{item.border};
    AddPiece(index, {Limited(size->width + frame), Limited(size->height + frame)});
}

void LinePlacer::AddPiece(std::size_t index, LabelSize size) {
    line.push_back({index, {lineWidth, 0, size.width, size.height}});
    lineWidth = Limited(std::int64_t{lineWidth} + size.width);
    lineHeight = std::max(lineHeight, size.height);
}

void LinePlacer::PlaceRule(std::size_t index) {
    const LabelItem& item = document.items[index];
    if (!line.empty()) EndLine(item);
    const std::int32_t width =
        Limited(item.fromArea ? std::int64_t{areaWidth} - item.width : std::int64_t{item.width});
    const std::int32_t height = Limited(item.height);
    const LabelRect bar = {AlignedLeft(item.ruleAlign, width), Limited(std::int64_t{top} + 2),
                           width, height};
    layout.pieces.push_back({index, bar});
    top = Limited(std::int64_t{top} + height + 4);
}

void LinePlacer::EndLine(const LabelItem& item) {
    const std::int32_t left = AlignedLeft(item.align.horizontal, lineWidth);
    for (LabelPiece& piece : line) {
        const LabelItem& placed = document.items[piece.item];
        const std::int32_t height = piece.rect.height;
        std::int32_t down = 0;
        if (placed.align.vertical == VerticalAlign::middle) down = lineHeight / 2 - height / 2;
        if (placed.align.vertical == VerticalAlign::bottom) down = lineHeight - height;
        piece.rect.left = Limited(std::int64_t{left} + piece.rect.left);
        piece.rect.top = Limited(std::int64_t{top} + down);
        layout.pieces.push_back(piece);
        if (placed.link != noLink) layout.links.push_back({piece.rect, placed.link});
    }
    top = Limited(std::int64_t{top} + lineHeight);
    line.clear();
    lineWidth = lineHeight = 0;
    hasRun = false;
}

std::int32_t LinePlacer::BlankHeight(std::size_t font) {
    if (blankFont != font) {
        blankFont = font;
        blankHeight = measure.TextSize(document.fonts[font], " ").height;
    }
    return blankHeight;
}

std::int32_t LinePlacer::AlignedLeft(HorizontalAlign align, std::int32_t width) const {
    switch (align) {
        case HorizontalAlign::left:
            return 0;
        case HorizontalAlign::centre:
            return areaWidth / 2 - width / 2;
        case HorizontalAlign::right:
            return areaWidth - width;
    }
    return 0;
}

}  // namespace

bool LabelRect::Holds(std::int32_t x, std::int32_t y) const {
    return x >= left && std::int64_t{x} < std::int64_t{left} + width && y >= top &&
           std::int64_t{y} < std::int64_t{top} + height;
}

LabelLayout LayOutRichText(const LabelDocument& document, std::int32_t areaWidth,
                           LabelMeasure& measure) {
    return LinePlacer(document, areaWidth, measure).PlaceAll();
}

bool IsOpenableTarget(std::string_view target) { return !target.empty() && target.front() != '#'; }

std::int32_t LabelScroller::FirstDelay() const { return Limited(10 * std::int64_t{scrollDelay}); }

bool LabelScroller::Scrolls(const LabelLayout& layout, std::int32_t controlHeight) {
    return layout.totalHeight > controlHeight;
}

void LabelScroller::Step(const LabelLayout& layout) {
    scrollOffset = scrollOffset >= layout.totalHeight ? 1 : scrollOffset + 1;
}

std::vector<LabelStrip> LabelScroller::Strips(const LabelLayout& layout,
                                              std::int32_t controlHeight) const {
    std::vector<LabelStrip> strips;
    const std::int64_t total = layout.totalHeight;
    const auto add = [&strips](std::int64_t pictureTop, std::int64_t controlTop,
                               std::int64_t height) {
        if (height <= 0) return;
        strips.push_back({static_cast<std::int32_t>(pictureTop),
                          static_cast<std::int32_t>(controlTop),
                          static_cast<std::int32_t>(height)});
    };
    if (!Scrolls(layout, controlHeight)) {
        add(0, 0, total);
        return strips;
    }
    const std::int64_t pictureTop = std::max<std::int64_t>(scrollOffset, 0);
    const std::int64_t controlTop = pictureTop - scrollOffset;
    const std::int64_t height =
        std::clamp<std::int64_t>(controlHeight - controlTop, 0, std::max(total - pictureTop, {}));
    add(pictureTop, controlTop, height);
    add(0, controlTop + height, controlHeight - controlTop - height);
    return strips;
}

std::optional<std::size_t> LabelScroller::LinkAt(const LabelLayout& layout,
                                                 std::int32_t controlHeight, std::int32_t x,
                                                 std::int32_t y) const {
    std::int32_t row = y;
    std::int32_t wrappedRow = y;
    if (Scrolls(layout, controlHeight)) {
        const std::int64_t shown = std::int64_t{y} + scrollOffset;
        // Kept: the row is wrapped from the total less the offset on, not from the total on. Far
        // down in a text a row above the first is tried as well, which holds no link.
        const bool wraps = shown > std::int64_t{layout.totalHeight} - scrollOffset;
        row = Limited(shown);
        wrappedRow = Limited(wraps ? shown - layout.totalHeight : shown);
    }
    for (std::size_t index = 0; index < layout.links.size(); ++index) {
        const LabelRect& rect = layout.links[index].rect;
        if (rect.Holds(x, row) || rect.Holds(x, wrappedRow)) return index;
    }
    return std::nullopt;
}

void LabelScroller::PointAt(const LabelLayout& layout, std::int32_t controlHeight, std::int32_t x,
                            std::int32_t y) {
    hotLink = LinkAt(layout, controlHeight, x, y);
}

LabelPress LabelScroller::Press(const LabelLayout& layout, std::int32_t controlHeight,
                                std::int32_t x, std::int32_t y) {
    if (const auto link = LinkAt(layout, controlHeight, x, y)) {
        hotLink.reset();
        return {LabelPressKind::followLink, layout.links[*link].target};
    }
    if (!dragEnabled || !Scrolls(layout, controlHeight)) return {};
    dragging = true;
    dragOrigin = Limited(std::int64_t{scrollOffset} + y);
    return {LabelPressKind::startDrag, 0};
}

void LabelScroller::DragTo(const LabelLayout& layout, std::int32_t y) {
    if (!dragging || layout.totalHeight <= 0) return;
    const std::int64_t total = layout.totalHeight;
    const std::int64_t moved = (std::int64_t{dragOrigin} - y) % total;
    scrollOffset = static_cast<std::int32_t>(moved < 0 ? moved + total : moved);
}

bool LabelScroller::Release() {
    const bool ended = dragging;
    dragging = false;
    return ended;
}

}  // namespace orvane
