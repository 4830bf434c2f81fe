#include "locus/locus_store.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace orvane {

LocusStore locusStore;

namespace {

// The one place where the system looks at a lack of memory: a sweep may ask for any number of
// points and of curves, and a sheet that asks for too many must not take the user's work with it.
template <typename Taking>
bool HasMemoryFor(Taking take) {
    try {
        take();
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

}  // namespace

std::string_view LocusKindName(LocusKind kind) {
    switch (kind) {
        case LocusKind::xy:
            return "xy";
        case LocusKind::polar:
            return "polar";
        case LocusKind::parametric:
            break;
    }
    return "parametric";
}

bool LocusSet::AddPoint(double x, double y, bool penUp) {
    if (points.size() == points.capacity()) {
        const std::size_t room = std::max(firstCapacity, points.capacity() * 2);
        if (!HasMemoryFor([&] { points.reserve(room); })) return false;
    }
    points.push_back({x, y, penUp});
    return true;
}

void LocusSet::FindRanges(int screenWidth, int screenHeight, int fine) {
    minX = minY = rangeStart;
    maxX = maxY = -rangeStart;
    for (const LocusPoint& point : points) {
        if (point.x > maxX) maxX = point.x;
        if (point.x < minX) minX = point.x;
        if (point.y > maxY) maxY = point.y;
        if (point.y < minY) minY = point.y;
    }
    if (points.size() >= smallestThinned) {
        const double pixels = std::max(fine, 1);
        DropNearPoints((maxX - minX) * pixels / screenWidth, (maxY - minY) * pixels / screenHeight);
    }
    points.shrink_to_fit();  // a sheet may record very many short curves
}

// A dropped point hands its penUp to the point behind it, so that no gap is drawn over.
void LocusSet::DropNearPoints(double nearX, double nearY) {
    std::size_t kept = 1;
    LocusPoint previous = points.front();
    for (std::size_t at = 1; at < points.size(); ++at) {
        const LocusPoint& point = points[at];
        const bool isNear =
            std::abs(point.x - previous.x) < nearX && std::abs(point.y - previous.y) < nearY;
        if (!isNear) {
            previous = point;
            points[kept++] = previous;
        } else if (point.penUp && at + 1 < points.size()) {
            points[at + 1].penUp = true;
        }
    }
    droppedCount += static_cast<std::int32_t>(points.size() - kept);
    points.resize(kept);
}

// The large blocks are taken first. Where a small one fails they are given back, and a message has
// room again.
LocusSet* LocusStore::Add(int sentenceIndex, LocusKind kind) {
    if (sets.size() >= mostCurves) return nullptr;
    const auto takeSet = [this] {
        spare.reserve(spareSize);
        std::vector<LocusPoint> points;
        points.reserve(LocusSet::firstCapacity);
        auto set = std::make_unique<LocusSet>();
        set->points = std::move(points);
        sets.push_back(std::move(set));
    };
    if (!HasMemoryFor(takeSet)) return nullptr;
    LocusSet& set = *sets.back();
    set.sentenceIndex = sentenceIndex;
    set.kind = kind;
    return &set;
}

}  // namespace orvane
