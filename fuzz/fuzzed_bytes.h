#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

// What the fuzz targets share: bytes cut into what a target asks for, and the end of a run that
// shows a fault.

namespace orvane::fuzz {

// Taken from the front; behind the end there are zeros and empty texts.
class FuzzedBytes {
public:
    FuzzedBytes(const std::uint8_t* data, std::size_t size)
        : rest(reinterpret_cast<const char*>(data), size) {}

    bool IsEmpty() const { return rest.empty(); }
    unsigned Byte() {
        if (rest.empty()) return 0;
        const auto byte = static_cast<unsigned char>(rest.front());
        rest.remove_prefix(1);
        return byte;
    }
    // 0 to count - 1, count at most 256.
    unsigned Below(unsigned count) { return Byte() % count; }
    // Its length, at most `longest` and that at most 255, stands in front of it.
    std::string_view Text(unsigned longest) { return Take(Below(longest + 1)); }
    // What stands in front of the mark, or everything where there is none; the mark goes.
    std::string_view TextUpTo(char mark) {
        const std::string_view text = Take(std::min(rest.find(mark), rest.size()));
        Take(1);
        return text;
    }
    std::string_view Rest() { return Take(rest.size()); }
    // The bits of any number at all.
    double Number() {
        double number = 0.0;
        const std::string_view bits = Take(std::min(rest.size(), sizeof number));
        std::memcpy(&number, bits.data(), bits.size());
        return number;
    }

private:
    std::string_view Take(std::size_t count) {
        const std::string_view taken = rest.substr(0, count);
        rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest;
};

// Ends the program where something that must hold does not: to a fuzzer that is a crash.
inline void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

}  // namespace orvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
