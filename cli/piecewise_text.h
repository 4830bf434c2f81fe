#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace orvane::cli {

// A text that is handed on in pieces while it is made, so that it never stands in memory as a
// whole: what a sheet's values print as may be many times as large as they are.
class PiecewiseText {
public:
    using Taker = std::function<void(std::string_view piece)>;

    explicit PiecewiseText(Taker takes) : taker(std::move(takes)) {}

    // Where the text goes on.
    std::string& End() { return piece; }
    // Hands on what there is once it is worth it. To be called in every loop that can be long.
    void Offer() {
        constexpr std::size_t worth = std::size_t{1} << 20;
        if (piece.size() >= worth) HandOn();
    }
    void HandOn() {
        taker(piece);
        piece.clear();
    }

private:
    Taker taker;
    std::string piece;
};

}  // namespace orvane::cli
