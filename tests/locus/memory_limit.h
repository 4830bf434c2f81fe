#pragma once

#include <cstddef>

namespace orvane::test {

// While it stands, blocks of this many bytes and more are refused to the whole test program, as if
// memory had run out.
class MemoryLimit {
public:
    explicit MemoryLimit(std::size_t refusedSize);
    ~MemoryLimit();
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;
};

}  // namespace orvane::test
