#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

// The curves that the locus functions of the last run recorded, for the plot window and the
// command-line tool.

namespace orvane {

enum class LocusKind : std::int32_t { xy = 0, polar = 1, parametric = 2 };

// "xy", "polar" or "parametric", as in the keyword.
std::string_view LocusKindName(LocusKind kind);

// In sheet units; y grows upward. A point with penUp starts a new stroke: the plot moves to it
// without drawing.
struct LocusPoint {
    double x = 0.0;
    double y = 0.0;
    bool penUp = false;
};

// The curve of one locus call. A sweep that fails leaves the points that it has and ranges of 0.
struct LocusSet {
    static constexpr std::size_t firstCapacity = 1000;
    static constexpr std::size_t smallestThinned = 100;  // fewer points are never thinned
    static constexpr double rangeStart = 1.7e308;

    std::int32_t sentenceIndex = 0;  // of the sentence that made it, from 0
    LocusKind kind = LocusKind::xy;
    bool stoppedEarly = false;   // the last round gave no point; never set for xy
    double lastParameter = 0.0;  // of the last point taken, when `stoppedEarly` is set
    double minX = 0.0, maxX = 0.0, minY = 0.0, maxY = 0.0;
    // In sweep order. Room for 1000, 24 KB, from the first one on; it doubles whenever it is full.
    std::vector<LocusPoint> points;
    std::int32_t droppedCount = 0;  // points that thinning removed

    // False when there is no memory for one more point; the set is as it was then.
    bool AddPoint(double x, double y, bool penUp);

    // Finds the ranges and drops points nearer than `fine` pixels, taken as 1 at least, to the last
    // one kept, in both directions, on a screen of this size that the curve would fill. The first
    // point stays. Without points the ranges are 1.7e308 to -1.7e308, upside down.
    void FindRanges(int screenWidth, int screenHeight, int fine);

private:
    void DropNearPoints(double nearX, double nearY);
};

class LocusStore {
public:
    // Curves of one run. A sweep of curves, each one small, must not eat the memory either.
    static constexpr std::size_t mostCurves = 1000000;

    // The work area of the desktop, in pixels. The plot window's own size comes later and does not
    // count; whoever has a screen sets it before a run.
    int screenWidth = 1920;
    int screenHeight = 1080;

    void Clear() { sets.clear(); }
    // Drops the curves of this sentence and of those behind it.
    void DropFrom(int sentenceIndex) {
        while (!sets.empty() && sets.back()->sentenceIndex >= sentenceIndex) sets.pop_back();
    }
    // A new set with room for its first points. It stays where it is until the store is cleared.
    // Null when there is no memory for it, or no place; the store is as it was then.
    LocusSet* Add(int sentenceIndex, LocusKind kind);
    // Gives the memory back that was held for the time when there is no other, so that a message
    // can be built and the run can end. The next set takes it again.
    void ReleaseSpare() { spare = {}; }
    int Count() const { return static_cast<int>(sets.size()); }
    bool IsEmpty() const { return sets.empty(); }
    // In the order of the calls.
    const LocusSet& operator[](int index) const { return *sets[static_cast<std::size_t>(index)]; }

private:
    static constexpr std::size_t spareSize = 65536;  // bytes

    std::vector<std::unique_ptr<LocusSet>> sets;
    std::vector<std::byte> spare;  // room alone
};

// Emptied at the start of each run; what a run recorded stays until the next one.
extern LocusStore locusStore;

}  // namespace orvane
