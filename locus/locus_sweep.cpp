#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

#include "core/calc_parameters.h"
#include "functions/body_samples.h"
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

// What the bodies give at one parameter; `second` of a parametric curve alone.
struct BodyValues {
    double first = 0.0;
    double second = 0.0;
};

// The curve's point at parameter t. Nothing where it is beyond the limit or no number.
using SpotFinder = std::optional<Spot> (*)(double t, const BodyValues& values, double limit);

std::optional<Spot> FindXySpot(double t, const BodyValues& values, double limit) {
    if (!(std::abs(values.first) <= limit)) return std::nullopt;
    return Spot{t, values.first};
}

// Kept: a radius far below zero passes, since its size is not looked at.
std::optional<Spot> FindPolarSpot(double t, const BodyValues& values, double limit) {
    const double radius = values.first;
    if (!(radius <= limit)) return std::nullopt;
    return Spot{std::cos(t) * radius, std::sin(t) * radius};
}

std::optional<Spot> FindParametricSpot(double, const BodyValues& values, double limit) {
    if (!(std::abs(values.first) <= limit && std::abs(values.second) <= limit)) return std::nullopt;
    return Spot{values.first, values.second};
}

// The values of the bodies, first X and then Y, a block at a time where that can be.
class CurveBodies {
public:
    explicit CurveBodies(const StepCall& sweep) : call(sweep), x(call, call.Body()) {
        if (call.IsParametric()) y.emplace(call, call.SecondBody());
    }

    void Fill(const GridBlock& block) {
        const SweepGrid grid = {call.lower, call.step};
        xs = x.Fill(grid, block);
        ys = y && xs != nullptr ? y->Fill(grid, block) : nullptr;
        isFilled = xs != nullptr && (!y || ys != nullptr);
        if (isFilled) return;
        // The tree starts with X. It may fail there, and Y is as it was in front of the block.
        x.VisitByTree();
        if (y) y->Settle();
    }
    // False after an error.
    bool Evaluate(const GridBlock& block, std::size_t place, BodyValues& values) {
        if (isFilled) {
            values.first = xs[place];
            if (y) values.second = ys[place];
            return true;
        }
        const double t = call.ValueAt(block.first + static_cast<std::int64_t>(place), call.step);
        return EvaluateBody(call, call.Body(), t, false, values.first) &&
               (!y || EvaluateBody(call, call.SecondBody(), t, false, values.second));
    }
    // The sweep ends at parameter t, inside a block.
    void SettleAt(double t) {
        if (!isFilled) return;
        x.Visit(t);
        if (y) y->Visit(t);
        Settle();
    }
    void Settle() {
        x.Settle();
        if (y) y->Settle();
    }

private:
    const StepCall& call;
    BodySamples x;
    std::optional<BodySamples> y;
    const double* xs = nullptr;
    const double* ys = nullptr;
    bool isFilled = false;
};

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
    CurveBodies bodies(call);
    const std::int64_t places = std::int64_t{call.count} + 1;
    bool nextPenUp = true;
    std::int64_t lastIndex = -1;
    for (GridBlock block = GridBlock::First(places); !block.IsEmpty(); block = block.Next(places)) {
        bodies.Fill(block);
        for (std::size_t place = 0; place < block.count; ++place) {
            const std::int64_t i = block.first + static_cast<std::int64_t>(place);
            StepProgress(call, i);
            BodyValues values;
            if (!bodies.Evaluate(block, place, values)) return false;
            const double t = call.ValueAt(i, call.step);
            const auto spot = form.findSpot(t, values, limit);
            if (spot && !set.AddPoint(spot->x, spot->y, nextPenUp)) {
                bodies.SettleAt(t);
                return FailForMemory(call);
            }
            nextPenUp = !spot;
            if (spot) lastIndex = i;
        }
    }
    bodies.Settle();
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
