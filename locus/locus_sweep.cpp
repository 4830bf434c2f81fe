#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "core/calc_parameters.h"
#include "functions/function_bodies.h"
#include "functions/step_call.h"
#include "locus/locus_store.h"

// The sweep behind locus_xy, locus_polar and locus_parametric.

namespace orvane {

namespace {

constexpr double usualLimit = 1000000.0;  // where none above 0 is given

struct Spot {
    double x;
    double y;
};

// The curve's point at parameter t. Nothing where it is beyond the limit or no number, and after
// an error.
using SpotFinder = std::optional<Spot> (*)(const StepCall& call, double t, double limit);

std::optional<Spot> FindXySpot(const StepCall& call, double t, double limit) {
    double y = 0.0;
    if (!EvaluateBody(call, call.Body(), t, false, y)) return std::nullopt;
    if (!(std::abs(y) <= limit)) return std::nullopt;
    return Spot{t, y};
}

// Kept: a radius far below zero passes, since its size is not looked at.
std::optional<Spot> FindPolarSpot(const StepCall& call, double t, double limit) {
    double radius = 0.0;
    if (!EvaluateBody(call, call.Body(), t, false, radius)) return std::nullopt;
    if (!(radius <= limit)) return std::nullopt;
    return Spot{std::cos(t) * radius, std::sin(t) * radius};
}

std::optional<Spot> FindParametricSpot(const StepCall& call, double t, double limit) {
    Spot spot = {0.0, 0.0};
    if (!EvaluateBody(call, call.Body(), t, false, spot.x)) return std::nullopt;
    if (!EvaluateBody(call, call.SecondBody(), t, false, spot.y)) return std::nullopt;
    if (!(std::abs(spot.x) <= limit && std::abs(spot.y) <= limit)) return std::nullopt;
    return spot;
}

struct CurveForm {
    LocusKind kind;
    SpotFinder findSpot;
    bool notesLast;  // shows where the curve ended when it ended early
};

// A term inside a body may be infinite: the curve has a gap there and goes on. What the body itself
// gives is still tested where the body is a normal, bit or point function.
void LetTermsBeInfinite(const StepCall& call) {
    MarkStepTerm(call.Body());
    if (call.IsParametric()) MarkStepTerm(call.SecondBody());
}

bool FailForMemory(const StepCall& call) {
    locusStore.ReleaseSpare();
    return call.Fail("14", "has too many points for the memory");
}

// Records the curve. False after an error; the points up to it stay.
bool RecordPoints(const StepCall& call, const CurveForm& form, LocusSet& set) {
    const double limit = call.option > 0.0 ? call.option : usualLimit;
    bool nextPenUp = true;
    std::int64_t lastIndex = -1;
    for (std::int64_t i = 0; i <= call.count; ++i) {
        StepProgress(call, i);
        const std::optional<Spot> spot = form.findSpot(call, call.ValueAt(i, call.step), limit);
        if (call.Failed()) return false;
        if (spot && !set.AddPoint(spot->x, spot->y, nextPenUp)) return FailForMemory(call);
        nextPenUp = !spot;
        if (spot) lastIndex = i;
    }
    if (form.notesLast && lastIndex != call.count) {
        set.stoppedEarly = true;
        set.lastParameter = call.ValueAt(lastIndex, call.step);
    }
    return true;
}

void RunLocus(StepCall& call, const CurveForm& form) {
    LocusSet* const set = locusStore.Add(call.family.sentence, form.kind);
    if (set == nullptr) {
        FailForMemory(call);
        return;
    }
    LetTermsBeInfinite(call);
    if (!RecordPoints(call, form, *set)) return;

    constexpr std::int32_t lastRow = std::numeric_limits<std::int32_t>::max() - 1;
    const int fine = std::clamp(call.family.parameters.locusFine, 0, lastRow) + 1;
    set->FindRanges(locusStore.screenWidth, locusStore.screenHeight, fine);
    call.Store(1.0);
}

}  // namespace

void RunLocusXy(StepCall& call) { RunLocus(call, {LocusKind::xy, FindXySpot, false}); }

void RunLocusPolar(StepCall& call) { RunLocus(call, {LocusKind::polar, FindPolarSpot, true}); }

void RunLocusParametric(StepCall& call) {
    RunLocus(call, {LocusKind::parametric, FindParametricSpot, true});
}

}  // namespace orvane
