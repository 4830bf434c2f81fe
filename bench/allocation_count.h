#pragma once

#include <cstdint>

namespace orvane::bench {

// How often this program has asked for memory with `new` until now.
std::int64_t AllocationCount();

}  // namespace orvane::bench
