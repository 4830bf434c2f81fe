#pragma once

#include <ostream>

#include "editor/keyword_list.h"

// So that a failed comparison shows places and sizes.

namespace orvane {

inline void PrintTo(const PixelPoint& point, std::ostream* out) {
    *out << '(' << point.x << ", " << point.y << ')';
}

}  // namespace orvane
