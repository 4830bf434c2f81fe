#include "tests/locus/memory_limit.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t noLimit = std::numeric_limits<std::size_t>::max();
std::size_t firstRefused = noLimit;

}  // namespace

void* operator new(std::size_t size) {
    void* const block = size < firstRefused ? std::malloc(size > 0 ? size : 1) : nullptr;
    if (block == nullptr) throw std::bad_alloc();
    return block;
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace orvane::test {

MemoryLimit::MemoryLimit(std::size_t refusedSize) { firstRefused = refusedSize; }
MemoryLimit::~MemoryLimit() { firstRefused = noLimit; }

}  // namespace orvane::test
