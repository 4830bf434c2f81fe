#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "editor/text_lines.h"

// Fills a store of lines for tests and reads it, with everything checked that holds for every
// store.

namespace orvane {

inline void Fill(TextLines& text, std::string_view content) { ASSERT_TRUE(text.SetText(content)); }

inline SelRange Range(std::int32_t startLine, std::int32_t startCol, std::int32_t endLine,
                      std::int32_t endCol) {
    SelRange range;
    range.SetRange(startLine, startCol, endLine, endCol);
    return range;
}

inline void ExpectSound(const TextLines& text) {
    ASSERT_GE(text.count, 1);
    ASSERT_GE(text.capacity, text.count);
    EXPECT_EQ(text.capacity % 100, 0);
    for (std::int32_t index = 0; index < text.count; ++index) {
        const TextLine& line = text.LineAt(index);
        ASSERT_GE(line.length, 0);
        ASSERT_GE(line.capacity, line.length);
        EXPECT_GE(line.capacity, 1000);
        ASSERT_GE(line.allocated, line.length);
        EXPECT_LE(line.allocated, line.capacity);
        EXPECT_EQ(line.chars[line.length], '\0');
        EXPECT_EQ(line.View().find_first_of("\r\n"), std::string_view::npos);
    }
}

inline std::string StoredText(const TextLines& text) {
    ExpectSound(text);
    std::string stored;
    text.AppendTextTo(stored);
    return stored;
}

inline std::vector<std::string> StoredLines(const TextLines& text) {
    ExpectSound(text);
    std::vector<std::string> lines;
    for (std::int32_t index = 0; index < text.count; ++index) {
        lines.emplace_back(text.GetLine(index));
    }
    return lines;
}

}  // namespace orvane
