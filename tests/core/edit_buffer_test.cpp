#include "core/edit_buffer.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace orvane {
namespace {

// The text as its NUL ends it, which must agree with its length.
std::string TextOf(const EditBuffer& buffer) {
    EXPECT_EQ(buffer.Data()[buffer.length], '\0');
    EXPECT_LE(buffer.length, buffer.capacity);
    return std::string(buffer.View());
}

TEST(EditBuffer, IsEmptyAtFirst) {
    EditBuffer buffer;
    EXPECT_EQ(buffer.length, 0);
    EXPECT_EQ(buffer.capacity, 0);
    EXPECT_STREQ(std::as_const(buffer).Data(), "");
    EXPECT_STREQ(buffer.Data(), "");
    EXPECT_EQ(buffer.View(), "");
}

TEST(EditBuffer, StartsWithExactlyTheRoomThatTheTextNeeds) {
    const EditBuffer buffer("abc");
    EXPECT_EQ(TextOf(buffer), "abc");
    EXPECT_EQ(buffer.capacity, 3);
    EXPECT_EQ(buffer.length, 3);
}

TEST(EditBuffer, AssignTakesRoomToSpareOnlyWhenItMustGrow) {
    EditBuffer buffer("abc");
    buffer.Assign("abcd");
    EXPECT_EQ(TextOf(buffer), "abcd");
    EXPECT_EQ(buffer.capacity, 4 + 4096);

    const char* const place = buffer.Data();
    const std::string filling(4100, 'x');
    buffer.Assign(filling);
    EXPECT_EQ(TextOf(buffer), filling);
    EXPECT_EQ(buffer.capacity, 4100);
    EXPECT_EQ(buffer.Data(), place);

    buffer.Assign("");
    EXPECT_EQ(TextOf(buffer), "");
    EXPECT_EQ(buffer.capacity, 4100);

    buffer.Assign(filling + 'x');
    EXPECT_EQ(buffer.capacity, 4101 + 4096);
}

TEST(EditBuffer, ReplacesARangeByTextOfAnyLength) {
    struct Row {
        std::string_view text;
        std::size_t from, to;
        std::string_view newText, result;
    };
    constexpr Row rows[] = {
        {"abcdef", 1, 4, "x", "axef"},          // shorter
        {"abcdef", 1, 4, "xyz", "axyzef"},      // as long
        {"abcdef", 1, 4, "wxyz!", "awxyz!ef"},  // longer
        {"abcdef", 0, 6, "", ""},
        {"abcdef", 0, 0, "x", "xabcdef"},
        {"abcdef", 6, 6, "x", "abcdefx"},
        {"", 0, 0, "x", "x"},
        {"abc", 1, 1, "", "abc"},
    };
    for (const auto& [text, from, to, newText, result] : rows) {
        SCOPED_TRACE(result);
        EditBuffer tight(text);
        tight.Replace(from, to, newText);
        EXPECT_EQ(TextOf(tight), result);

        EditBuffer roomy;
        roomy.Assign(text);
        roomy.Replace(from, to, newText);
        EXPECT_EQ(TextOf(roomy), result);
    }
}

TEST(EditBuffer, GrowsBy4096MoreThanTheNewText) {
    EditBuffer buffer("abc");
    buffer.Replace(1, 2, "xyz");
    EXPECT_EQ(TextOf(buffer), "axyzc");
    EXPECT_EQ(buffer.capacity, 5 + 4096);

    // What still fits moves nothing.
    const char* const place = buffer.Data();
    buffer.Replace(5, 5, std::string(4096, '.'));
    EXPECT_EQ(buffer.length, 5 + 4096);
    EXPECT_EQ(buffer.capacity, 5 + 4096);
    EXPECT_EQ(buffer.Data(), place);

    buffer.Replace(0, 0, "!");
    EXPECT_EQ(buffer.capacity, 6 + 4096 + 4096);
    EXPECT_EQ(TextOf(buffer), "!axyzc" + std::string(4096, '.'));
}

TEST(EditBuffer, StartsOnARoomThatIsLentToIt) {
    char room[] = "abcdef;next";
    EditBuffer buffer(room, 6);
    EXPECT_EQ(TextOf(buffer), "abcdef");
    EXPECT_EQ(buffer.capacity, 6);
    EXPECT_EQ(buffer.Data(), room);

    buffer.Replace(0, 6, "xyz");
    buffer.AssignExactly("12345");
    EXPECT_EQ(TextOf(buffer), "12345");
    EXPECT_EQ(buffer.Data(), room);

    // A growth takes a room of its own, and leaves what stands behind the lent one alone.
    buffer.AssignExactly("1234567");
    EXPECT_EQ(TextOf(buffer), "1234567");
    EXPECT_EQ(buffer.capacity, 7);
    EXPECT_NE(buffer.Data(), room);
    EXPECT_EQ(std::string_view(room + 7), "next");

    EditBuffer grown(room, 2);
    grown.Replace(2, 2, "34567");
    EXPECT_EQ(TextOf(grown), "1234567");
    EXPECT_EQ(grown.capacity, 7 + 4096);
    EXPECT_EQ(std::string_view(room + 7), "next");
}

TEST(EditBuffer, KeepsALentRoomWhenItIsFitted) {
    std::string room(1000, 'x');
    EditBuffer buffer(room.data(), 999);
    buffer.Assign("short");
    buffer.Fit();
    EXPECT_EQ(TextOf(buffer), "short");
    EXPECT_EQ(buffer.Data(), room.data());
}

TEST(EditBuffer, IsAssignedWithoutRoomToSpare) {
    EditBuffer buffer("abc");
    buffer.AssignExactly("a");
    EXPECT_EQ(TextOf(buffer), "a");
    EXPECT_EQ(buffer.capacity, 1);
    buffer.AssignExactly("abcde");
    EXPECT_EQ(TextOf(buffer), "abcde");
    EXPECT_EQ(buffer.capacity, 5);
}

TEST(EditBuffer, RemovesARange) {
    EditBuffer buffer("abcdef");
    buffer.Remove(2, 4);
    EXPECT_EQ(TextOf(buffer), "abef");
    buffer.Remove(0, 0);
    EXPECT_EQ(TextOf(buffer), "abef");
    buffer.Remove(0, 4);
    EXPECT_EQ(TextOf(buffer), "");
    EXPECT_EQ(buffer.capacity, 6);
}

TEST(EditBuffer, ReplacesARangeByANumber) {
    struct Row {
        double value;
        std::string_view result;
    };
    constexpr Row rows[] = {
        {1.0, "a1c"},
        {0.0, "a0c"},
        {-2.5, "a-2.5c"},
        {100.0, "a100c"},
        {0.1, "a0.10000000000000000555111512312578c"},
        {3.141592653589793, "a3.14159265358979311599796346854419c"},
    };
    for (const auto& [value, result] : rows) {
        SCOPED_TRACE(result);
        EditBuffer buffer("abbbc");
        EXPECT_TRUE(buffer.ReplaceByNumber(1, 4, value));
        EXPECT_EQ(TextOf(buffer), result);
    }
}

TEST(EditBuffer, KeepsItsTextWhenTheNumberIsNotFinite) {
    constexpr double rows[] = {std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()};
    for (const double value : rows) {
        EditBuffer buffer("abc");
        EXPECT_FALSE(buffer.ReplaceByNumber(0, 3, value));
        EXPECT_EQ(TextOf(buffer), "abc");
    }
}

TEST(EditBuffer, FitGivesTheSpareRoomBack) {
    EditBuffer buffer("abc");
    buffer.Assign("abcd");
    ASSERT_EQ(buffer.capacity, 4100);
    buffer.Fit();
    EXPECT_EQ(TextOf(buffer), "abcd");
    EXPECT_EQ(buffer.capacity, 4);
}

TEST(ForwardEdit, ChangesTheBufferWhenItsWalkIsOver) {
    EditBuffer buffer("one two three");
    {
        ForwardEdit edit(buffer);
        EXPECT_EQ(edit.Rest(), "one two three");
        EXPECT_EQ(edit.Length(), 13u);
        edit.Pass(4);
        EXPECT_EQ(edit.Rest(), "two three");
        edit.Replace(3, "2");
        EXPECT_EQ(edit.Rest(), "2 three");
        EXPECT_EQ(edit.Length(), 11u);
        edit.Pass(2);
        edit.Replace(5, "a long text in place of a word");
        EXPECT_EQ(edit.Rest(), "a long text in place of a word");
        EXPECT_FALSE(edit.AtEnd());
        edit.Pass(6);
        EXPECT_EQ(edit.Rest(), " text in place of a word");
        edit.Replace(edit.Rest().size(), "");
        EXPECT_TRUE(edit.AtEnd());
    }
    EXPECT_EQ(TextOf(buffer), "one 2 a long");
}

TEST(ForwardEdit, KeepsWhatItHasNotRead) {
    EditBuffer buffer("abcdef");
    {
        ForwardEdit edit(buffer);
        edit.Pass(1);
        edit.Replace(1, std::string(10000, 'x'));
        edit.Replace(5000, "");
        EXPECT_EQ(edit.Length(), 5u + 5000u);
    }
    EXPECT_EQ(TextOf(buffer), 'a' + std::string(5000, 'x') + "cdef");
}

TEST(ForwardEdit, LeavesABufferAloneThatItOnlyReads) {
    EditBuffer buffer("abc");
    const char* const place = buffer.Data();
    {
        ForwardEdit edit(buffer);
        edit.Pass(3);
        EXPECT_TRUE(edit.AtEnd());
    }
    EXPECT_EQ(TextOf(buffer), "abc");
    EXPECT_EQ(buffer.Data(), place);
}

}  // namespace
}  // namespace orvane
