#include "locus/points_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/number_literal.h"

namespace orvane {

NextPiece PointsText(const LocusSet& curve) {
    return [&curve, next = std::size_t{0}, isFirst = true]() mutable {
        constexpr std::size_t pointsPerPiece = 4096;
        std::string piece = isFirst ? "x,y,pen_up\n" : "";
        isFirst = false;
        const std::size_t end = std::min(curve.points.size(), next + pointsPerPiece);
        for (; next < end; ++next) {
            const LocusPoint& point = curve.points[next];
            piece.append(FormatShortest(point.x)).append(",").append(FormatShortest(point.y));
            piece += point.penUp ? ",1\n" : ",0\n";
        }
        return piece;
    };
}

std::string PointsName(const LocusSet& curve) {
    std::string name = std::to_string(std::int64_t{curve.sentenceIndex} + 1);
    return name.append("_").append(LocusKindName(curve.kind));
}

std::string CurveNames::NextName(const LocusSet& curve) {
    std::string name = PointsName(curve);
    const int number = ++uses[name];
    if (number > 1) name.append("_").append(std::to_string(number));
    return name;
}

}  // namespace orvane
