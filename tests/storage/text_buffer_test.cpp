#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "storage/archive.h"
#include "tests/storage/marked_text.h"

namespace orvane {
namespace {

using test::BufferOf;

// The text as its NUL ends it, which must agree with its length.
std::string TextOf(const TextBuffer& buffer) {
    EXPECT_LT(buffer.length, buffer.capacity);
    EXPECT_EQ(buffer.data[static_cast<std::size_t>(buffer.length)], '\0');
    return std::string(buffer.View());
}

std::string Filling(std::size_t length) { return std::string(length, 'x'); }

TEST(TextBuffer, StartsEmptyWithRoomForAHundred) {
    const TextBuffer buffer;
    EXPECT_EQ(TextOf(buffer), "");
    EXPECT_EQ(buffer.capacity, 100);
    EXPECT_EQ(buffer.growthStep, 100);
    const TextBuffer large(1000);
    EXPECT_EQ(TextOf(large), "");
    EXPECT_EQ(large.capacity, 100);
    EXPECT_EQ(large.growthStep, 1000);
}

TEST(TextBuffer, GrowsWhenItWouldBeFull) {
    struct Row {
        std::int32_t step;
        std::size_t length;
        std::int32_t capacity;
    };
    constexpr Row rows[] = {
        {100, 99, 100},   // the NUL has the last place
        {100, 100, 200},  // filled: the new length and a step
        {100, 101, 201}, {100, 5000, 5100}, {1000, 99, 100}, {1000, 100, 1100}, {1000, 35, 100},
    };
    for (const auto& [step, length, capacity] : rows) {
        SCOPED_TRACE(length);
        const std::string text = Filling(length);
        TextBuffer assigned(step), appended(step), single(step), resized(step), replaced(step);
        assigned.Assign(text);
        EXPECT_EQ(assigned.capacity, capacity);
        EXPECT_EQ(TextOf(assigned), text);
        appended.Append(text);
        EXPECT_EQ(appended.capacity, capacity);
        EXPECT_EQ(TextOf(appended), text);
        resized.Resize(static_cast<std::int32_t>(length));
        EXPECT_EQ(resized.capacity, capacity);
        EXPECT_EQ(resized.length, static_cast<std::int32_t>(length));
        replaced.Assign("x");
        replaced.ReplaceRange(0, 1, text);
        EXPECT_EQ(replaced.capacity, capacity);
        EXPECT_EQ(TextOf(replaced), text);
        for (char byte : text) single.AppendByte(byte);
        EXPECT_EQ(TextOf(single), text);
    }
}

TEST(TextBuffer, GrowsOnceForEachStepOfSingleBytes) {
    TextBuffer buffer;
    std::vector<std::int32_t> capacities{buffer.capacity};
    for (int count = 0; count < 450; ++count) {
        buffer.AppendByte('x');
        if (buffer.capacity != capacities.back()) capacities.push_back(buffer.capacity);
    }
    EXPECT_EQ(capacities, (std::vector<std::int32_t>{100, 200, 300, 400, 500}));
}

TEST(TextBuffer, KeepsItsMemoryUntilAnAssignmentIsMuchShorter) {
    TextBuffer buffer;
    buffer.Assign(Filling(1000));
    ASSERT_EQ(buffer.capacity, 1100);
    buffer.Assign(Filling(900));  // not below 1100 - 200
    EXPECT_EQ(buffer.capacity, 1100);
    buffer.Assign(Filling(899));
    EXPECT_EQ(buffer.capacity, 999);
    EXPECT_EQ(TextOf(buffer), Filling(899));

    // Only a shorter text shrinks, and only an assignment does.
    buffer.DeleteRange(0, 890);
    EXPECT_EQ(buffer.capacity, 999);
    buffer.Assign(Filling(9));
    EXPECT_EQ(buffer.capacity, 999);
    buffer.Assign(Filling(10));
    EXPECT_EQ(buffer.capacity, 999);
    buffer.Resize(2);
    EXPECT_EQ(buffer.capacity, 999);
    buffer.Assign("x");
    EXPECT_EQ(buffer.capacity, 101);
    EXPECT_EQ(TextOf(buffer), "x");
    buffer.Assign("");
    EXPECT_EQ(buffer.capacity, 101);
    EXPECT_EQ(TextOf(buffer), "");
}

TEST(TextBuffer, ReplacesAndDeletesRanges) {
    struct Row {
        std::string_view text;
        std::int32_t from, to;
        std::string_view bytes, result;
    };
    constexpr Row rows[] = {
        {"abcdef", 1, 4, "x", "axef"},    {"abcdef", 1, 4, "xyz", "axyzef"},
        {"abcdef", 1, 4, "", "aef"},      {"abcdef", 1, 4, "wxyz!", "awxyz!ef"},
        {"abcdef", 0, 6, "", ""},         {"abcdef", 0, 0, "x", "xabcdef"},
        {"abcdef", 6, 6, "x", "abcdefx"}, {"", 0, 0, "x", "x"},
        {"abcdef", 2, 2, "", "abcdef"},   {"abcdef", 5, 6, "", "abcde"},
    };
    for (const auto& [text, from, to, bytes, result] : rows) {
        SCOPED_TRACE(result);
        TextBuffer buffer = BufferOf(text);
        buffer.ReplaceRange(from, to, bytes);
        EXPECT_EQ(TextOf(buffer), result);
        if (!bytes.empty()) continue;
        TextBuffer deleted = BufferOf(text);
        deleted.DeleteRange(from, to);
        EXPECT_EQ(TextOf(deleted), result);
    }
}

TEST(TextBuffer, ResizeKeepsTheBytesThatStay) {
    TextBuffer buffer = BufferOf("abcdef");
    buffer.Resize(4);
    EXPECT_EQ(TextOf(buffer), "abcd");
    buffer.Resize(1000);
    EXPECT_EQ(buffer.capacity, 1100);
    EXPECT_EQ(TextOf(buffer).substr(0, 4), "abcd");
    buffer.Resize(0);
    EXPECT_EQ(TextOf(buffer), "");
    buffer.Resize(-1);
    EXPECT_EQ(TextOf(buffer), "");
}

TEST(TextBuffer, FindsAByteBackwards) {
    struct Row {
        std::string_view text;
        std::int32_t from;
        std::optional<std::int32_t> place;
    };
    const Row rows[] = {
        {"axbxc", 4, 3},
        {"axbxc", 3, 3},
        {"axbxc", 2, 1},
        {"axbxc", 1, 1},
        {"axbxc", 99, 3},
        {"xbc", 0, 0},
        {"axbxc", 0, std::nullopt},
        {"axbxc", -1, std::nullopt},
        {"", 0, std::nullopt},
        {"abc", 2, std::nullopt},
    };
    for (const auto& [text, from, place] : rows) {
        SCOPED_TRACE(from);
        EXPECT_EQ(BufferOf(text).FindBackwards('x', from), place);
    }
}

TEST(TextBuffer, ShowsSearchesTheBytesInFrontOfTheFirstNul) {
    EXPECT_EQ(BufferOf("").SearchableView(), "");
    EXPECT_EQ(BufferOf("abc").SearchableView(), "abc");
    EXPECT_EQ(BufferOf(std::string("ab\0c\0", 5)).SearchableView(), "ab");
    EXPECT_EQ(BufferOf(std::string("\0abc", 4)).SearchableView(), "");
    EXPECT_EQ(BufferOf(std::string("ab\0c\0", 5)).View().size(), 5U);
}

// The memory is asked for and never touched, so this costs next to nothing.
TEST(TextBuffer, NeverGetsLongerThanItsPositionsCanTell) {
    TextBuffer buffer;
    buffer.Resize(TextBuffer::largestLength);
    ASSERT_EQ(buffer.length, 1 << 30);
    EXPECT_EQ(buffer.capacity, (1 << 30) + 100);
    buffer.AppendByte('x');
    EXPECT_EQ(buffer.length, 1 << 30);
    buffer.Append("xy");
    EXPECT_EQ(buffer.length, 1 << 30);
    buffer.ReplaceRange(0, 1, "xy");
    EXPECT_EQ(buffer.length, 1 << 30);
    buffer.Resize(TextBuffer::largestLength + 1);
    EXPECT_EQ(buffer.length, 1 << 30);
    AppendSheet(buffer, "", "");
    EXPECT_EQ(buffer.length, 1 << 30);

    // Room for the two marks and not for the text: nothing of the entry is added.
    buffer.Resize(TextBuffer::largestLength - 2);
    AppendSheet(buffer, "", "x");
    EXPECT_EQ(buffer.length, (1 << 30) - 2);
}

// What TextBuffer promises, told once more over a string.
struct Model {
    std::string text;
    std::size_t capacity = 100;
    std::size_t step;

    void GrowFor(std::size_t length) {
        if (length >= capacity) capacity = length + step;
    }
    void Assign(const std::string& bytes) {
        const bool shrinks = bytes.size() < text.size() && bytes.size() + 2 * step < capacity;
        if (shrinks) capacity = bytes.size() + step;
        GrowFor(bytes.size());
        text = bytes;
    }
    void Replace(std::size_t from, std::size_t to, const std::string& bytes) {
        std::string changed = text.substr(0, from);
        changed += bytes;
        changed += text.substr(to);
        text = std::move(changed);
        GrowFor(text.size());
    }
};

TEST(TextBuffer, AgreesWithAStringOverManyRandomSteps) {
    for (const std::int32_t step : {100, 1000}) {
        SCOPED_TRACE(step);
        std::mt19937 random(static_cast<unsigned>(step));
        const auto below = [&](std::size_t end) { return random() % end; };
        TextBuffer buffer(step);
        Model model{.text = "", .step = static_cast<std::size_t>(step)};
        for (int count = 0; count < 100'000; ++count) {
            const std::size_t longest = below(20) == 0 ? 3000 : 60;
            std::string bytes(below(longest), '\0');
            for (char& byte : bytes) byte = static_cast<char>(random());
            std::size_t from = below(model.text.size() + 1);
            std::size_t to = below(model.text.size() + 1);
            if (to < from) std::swap(from, to);
            switch (below(model.text.size() > 5000 ? 3 : 6)) {
                case 0:
                    buffer.DeleteRange(static_cast<int>(from), static_cast<int>(to));
                    model.Replace(from, to, "");
                    break;
                case 1:
                    if (below(10) != 0) break;
                    buffer.Assign(bytes);
                    model.Assign(bytes);
                    break;
                case 2:
                    buffer.Resize(static_cast<int>(to));
                    model.text.resize(to);
                    break;
                case 3:
                    buffer.Append(bytes);
                    model.Replace(model.text.size(), model.text.size(), bytes);
                    break;
                case 4:
                    buffer.AppendByte('\0');
                    model.Replace(model.text.size(), model.text.size(), std::string(1, '\0'));
                    break;
                default:
                    buffer.ReplaceRange(static_cast<int>(from), static_cast<int>(to), bytes);
                    model.Replace(from, to, bytes);
            }
            ASSERT_EQ(buffer.View(), model.text) << count;
            ASSERT_EQ(static_cast<std::size_t>(buffer.capacity), model.capacity) << count;
            ASSERT_EQ(buffer.data[model.text.size()], '\0') << count;
            const char sought = static_cast<char>(random());
            const std::size_t found = model.text.rfind(sought, from);
            ASSERT_EQ(buffer.FindBackwards(sought, static_cast<int>(from)).value_or(-1),
                      found == std::string::npos ? -1 : static_cast<int>(found))
                << count;
            ASSERT_EQ(buffer.SearchableView(), std::string_view(model.text.c_str())) << count;
        }
    }
}

}  // namespace
}  // namespace orvane
