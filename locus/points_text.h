#pragma once

#include <map>
#include <string>

#include "locus/locus_store.h"
#include "storage/file_bytes.h"

// The points of a curve as CSV text, and what the files of curves are called.

namespace orvane {

// Gives the text piece by piece, some thousand points at a time, an empty piece behind the last: a
// heading, then x, y and whether the pen is up on its way to the point. The curve must stay as it
// is meanwhile.
NextPiece PointsText(const LocusSet& curve);

// The sentence from 1 and the kind, without an ending: "3_polar" for a curve of sentence 3,
// "4_parametric" for one of sentence 4.
std::string PointsName(const LocusSet& curve);

// The same for the curves of one run, told apart: "3_polar_2" for the second one of its kind in a
// sentence.
class CurveNames {
public:
    std::string NextName(const LocusSet& curve);

private:
    std::map<std::string, int> uses;
};

}  // namespace orvane
