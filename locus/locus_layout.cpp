#include "locus/locus_layout.h"

#include <cstdint>

namespace orvane {
namespace {

constexpr int tabMargin = 10;  // around the tab control
constexpr int pageMargin = 2;  // below the tab headers, and around the pages
constexpr int textAbove = 20;  // from the middle up to the text without curves

}  // namespace

PlotPoint HelpButtonCorner(const PlotRect& client, int buttonWidth) {
    return {(client.left + client.right) / 2 - buttonWidth / 2, (client.top + client.bottom) / 2};
}

PlotRect NoCurvesTextArea(const PlotRect& client) {
    return {client.left, client.top, client.right, (client.top + client.bottom) / 2 - textAbove};
}

PlotRect TabControlArea(const PlotRect& client) { return client.DeflatedBy(tabMargin); }

PlotRect PageArea(const PlotRect& client, int tabHeaderHeight) {
    PlotRect area = TabControlArea(client);
    area.top += tabHeaderHeight + pageMargin;
    return area.DeflatedBy(pageMargin);
}

std::string TabTitle(const LocusSet& set) {
    std::string title = std::to_string(std::int64_t{set.sentenceIndex} + 1);
    title += ": ";
    switch (set.kind) {
        case LocusKind::xy:
            return title += "xy";
        case LocusKind::polar:
            return title += "polar";
        case LocusKind::parametric:
            return title += "param";
    }
    return title;
}

}  // namespace orvane
