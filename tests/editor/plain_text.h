#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "editor/text_lines.h"

// The plainest model of the editor's text, to compare with.

namespace orvane::test {

// A sheet as one string; positions are turned into offsets by walking.
struct PlainText {
    std::string text;

    std::size_t Lines() const { return 1 + std::count(text.begin(), text.end(), '\n'); }
    std::optional<std::size_t> LineStart(std::int32_t line) const {
        if (line < 0) return std::nullopt;
        std::size_t start = 0;
        for (; line > 0; --line) {
            start = text.find('\n', start);
            if (start == std::string::npos) return std::nullopt;
            ++start;
        }
        return start;
    }
    // Columns past the line's end count as its end.
    std::optional<std::size_t> OffsetAtMost(std::int32_t line, std::int32_t col) const {
        const std::optional<std::size_t> start = LineStart(line);
        if (!start || col < 0) return std::nullopt;
        return std::min(*start + static_cast<std::size_t>(col), LineEnd(*start));
    }
    std::optional<std::size_t> Offset(std::int32_t line, std::int32_t col) const {
        const std::optional<std::size_t> start = LineStart(line);
        if (!start || col < 0 || *start + static_cast<std::size_t>(col) > LineEnd(*start)) {
            return std::nullopt;
        }
        return *start + static_cast<std::size_t>(col);
    }
    std::size_t LineEnd(std::size_t offset) const {
        return std::min(text.find('\n', offset), text.size());
    }
    TextPosition PositionOf(std::size_t offset) const {
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(offset);
        const std::size_t start = offset == 0 ? 0 : text.rfind('\n', offset - 1) + 1;
        return {static_cast<std::int32_t>(std::count(text.begin(), end, '\n')),
                static_cast<std::int32_t>(offset - start)};
    }
    // Step by step, each on the whole string.
    bool RemoveExact(std::size_t offset, std::string_view removed, std::int32_t& breaks) {
        breaks = 0;
        while (!removed.empty()) {
            const std::string run(removed.substr(0, removed.find('\n')));
            removed.remove_prefix(std::max<std::size_t>(run.size(), 1));
            if (run.empty()) {
                const std::size_t end = LineEnd(offset);
                if (end == text.size()) return false;
                text.erase(end, 1);
                ++breaks;
            } else {
                if (text.compare(offset, run.size(), run) != 0) return false;
                text.erase(offset, run.size());
            }
        }
        return true;
    }
};

inline std::string WithoutReturns(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    return text;
}

}  // namespace orvane::test
