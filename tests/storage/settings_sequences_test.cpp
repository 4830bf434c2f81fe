#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "storage/settings_file.h"
#include "tests/storage/settings_model.h"
#include "tests/storage/settings_on_disk.h"

namespace orvane {
namespace {

using test::ModelRange;
using test::SettingsModel;
using test::SettingsOnDisk;

// What settings files, broken ones too, are made of.
const std::string pieces[] = {"{SECT_MAIN}",
                              "{SECT_GLOBLE}",
                              "{SECT_MAIN}\r\n",
                              "{SECT_GLOBLE}\r\n",
                              "<KEY>\r\n",
                              "<LIST>\r\n",
                              "<LIST>",
                              "<LIS",
                              "[A]",
                              "[B]",
                              "[AB]",
                              "[A]30\r\n",
                              "[B]text\r",
                              "\r\n",
                              "\r\n",
                              "\r\n\r\n",
                              "\r",
                              "\n",
                              "{",
                              "}",
                              "{\r\n",
                              "{X}\r\n",
                              " ",
                              "   ",
                              "x",
                              "-12",
                              "4294967296",
                              "1/2/3/4/5/",
                              "-6/7/8/9/10/",
                              "00FF80",
                              "ABCDEF01",
                              std::string(1, 0),
                              "\xFF\xE6",
                              "[",
                              "]",
                              "{SECT_MAIN}\r",
                              "{SECT_MAIN} \r\n"};
const std::string keys[] = {"A", "B", "AB", "C", ""};
const std::string sections[] = {"SECT_MAIN", "SECT_MAIN", "SECT_GLOBLE", "X", ""};

// One settings file and its model, driven by the same dice.
class Pair {
public:
    explicit Pair(unsigned seed) : dice(seed), disk(""), settings(disk.Path()) {
        EXPECT_TRUE(settings.Open());
    }
    // One operation on both; false where they differ.
    bool Step();

private:
    std::size_t Roll(std::size_t count) { return dice() % count; }
    template <std::size_t count>
    const std::string& OneOf(const std::string (&texts)[count]) {
        return texts[Roll(count)];
    }
    std::string SomePieces(std::size_t most) {
        std::string text;
        for (std::size_t count = Roll(most + 1); count > 0; --count) text += OneOf(pieces);
        return text;
    }

    bool Rewrite();
    bool Prepare();
    bool Find();
    bool Read();
    bool GetValue();
    bool GetBlock();
    bool GetPlace();
    bool Set();
    bool SetBlock();
    bool SetPlace();
    bool Replace();

    std::mt19937 dice;
    SettingsOnDisk disk;
    SettingsFile settings;
    SettingsModel model;
};

bool Pair::Rewrite() {
    model.bytes = SomePieces(30);
    if (Roll(2) == 0) {
        model.bytes = "\r\n{SECT_MAIN}\r\n<KEY>\r\n" + SomePieces(8) + "\r\n<LIST>\r\n" +
                      SomePieces(4) + "\r\n{SECT_GLOBLE}\r\n<KEY>\r\n" + SomePieces(8);
    }
    disk.Put(model.bytes);
    return Prepare();
}

bool Pair::Prepare() {
    if (Roll(4) == 0) {
        model.OpenAndPrepare();
        return settings.OpenAndPrepare();
    }
    model.Open();
    return settings.Open();
}

bool Pair::Find() {
    const std::string& name = OneOf(sections);
    ByteRange range;
    const bool found = settings.FindSection(name, range);
    const std::optional<ModelRange> expected = model.FindSection(name);
    if (!found || !expected) return found == expected.has_value();
    return range.from == expected->from && range.to == expected->to;
}

bool Pair::Read() {
    std::string line, expectedLine;
    ByteRange range;
    ModelRange expected;
    const bool isThere = settings.ReadLine(line, range);
    if (isThere != model.ReadLine(expectedLine, expected)) return false;
    return line == expectedLine && range.from == expected.from && range.to == expected.to;
}

bool Pair::GetValue() {
    const std::string &section = OneOf(sections), &key = OneOf(keys);
    std::string text;
    const bool found = settings.GetText(section, key, text);
    const std::optional<std::string> expected = model.Value(section, key);
    std::int32_t number = 0;
    if (settings.GetInt(section, key, number) != found) return false;
    return found == expected.has_value() && text == expected.value_or("");
}

bool Pair::GetBlock() {
    const std::string &section = OneOf(sections), &key = OneOf(keys);
    HexSlots slots{}, expected{}, defaults;
    for (std::uint32_t& slot : defaults) slot = dice();
    const bool found = settings.GetHexBlock(section, key, slots, defaults);
    const std::optional<std::string> text = model.Value(section, key);
    expected = defaults;
    for (std::size_t at = 0; text && at < text->size() / 8 && at < expected.size(); ++at) {
        // Where a blank or a sign opens a slot its number is left to another test.
        const char* const first = text->data() + at * 8;
        expected[at] = 0;
        if (std::string_view(" \r\n-+").find(*first) != std::string_view::npos) {
            expected[at] = slots[at];
        } else {
            std::from_chars(first, first + 8, expected[at], 16);
        }
    }
    return found == text.has_value() && slots == expected;
}

bool Pair::GetPlace() {
    const std::string &section = OneOf(sections), &key = OneOf(keys);
    WindowPlacement placement;
    const bool found = settings.GetPlacement(section, key, placement);
    const std::optional<std::string> text = model.Value(section, key);
    if (!found) return placement == WindowPlacement{};
    return text && std::count(text->begin(), text->end(), '/') == 10 && text->back() == '/';
}

bool Pair::Set() {
    const std::string &section = OneOf(sections), &key = OneOf(keys);
    const std::string text = Roll(8) == 0 ? SomePieces(3) : std::to_string(dice());
    const bool create = Roll(4) != 0;
    return settings.SetValue(section, key, text, create) ==
           model.SetValue(section, key, text, create);
}

bool Pair::SetBlock() {
    const std::string &section = OneOf(sections), &key = OneOf(keys);
    HexSlots slots{}, read{};
    for (std::uint32_t& slot : slots) slot = dice();
    std::string text;
    for (const std::uint32_t slot : slots) {
        for (int digit = 7; digit >= 0; --digit) {
            text += "0123456789ABCDEF"[slot >> (4 * digit) & 15];
        }
    }
    const bool isSet = settings.SetHexBlock(section, key, slots);
    if (isSet != model.SetValue(section, key, text, true)) return false;
    // A key that was put ahead of an odd section's first line may be out of reach.
    const bool isRead = settings.GetHexBlock(section, key, read, {});
    return model.Value(section, key) == text ? isRead && read == slots : !isSet || !isRead;
}

bool Pair::SetPlace() {
    const std::string &section = OneOf(sections), &key = OneOf(keys);
    const auto number = [this] { return static_cast<std::int32_t>(dice()); };
    const WindowPlacement placement = {
        static_cast<std::uint32_t>(dice()), 2, number(), 4, 5, 6, number(), 8, 9, -10};
    const std::string text = std::to_string(placement.showState) + "/2/" +
                             std::to_string(placement.left) + "/4/5/6/" +
                             std::to_string(placement.minimisedX) + "/8/9/-10/";
    const bool isSet = settings.SetPlacement(section, key, placement);
    if (isSet != model.SetValue(section, key, text, true)) return false;
    WindowPlacement read;
    const bool isRead = settings.GetPlacement(section, key, read);
    return model.Value(section, key) == text ? isRead && read == placement : !isSet || !isRead;
}

bool Pair::Replace() {
    const std::size_t to = Roll(model.bytes.size() + 1);
    const std::size_t from = Roll(3) == 0 ? to : Roll(to + 1);
    const std::string text = SomePieces(4);
    model.ReplaceRange(from, to, text);
    return settings.ReplaceRange(from, to, text);
}

bool Pair::Step() {
    constexpr bool (Pair::*operations[])() = {
        &Pair::Find,     &Pair::Find,     &Pair::Read,     &Pair::Read,     &Pair::Read,
        &Pair::GetValue, &Pair::GetValue, &Pair::GetBlock, &Pair::GetPlace, &Pair::Set,
        &Pair::Set,      &Pair::SetBlock, &Pair::SetPlace, &Pair::Replace,  &Pair::Prepare};
    const bool isFresh = model.bytes.size() > 3000 || Roll(12) == 0;
    const bool isSame = isFresh ? Rewrite() : (this->*operations[Roll(std::size(operations))])();
    return isSame && disk.Bytes() == model.bytes;
}

class SettingsSequences : public testing::TestWithParam<unsigned> {};

TEST_P(SettingsSequences, LeaveEveryByteAsTheModelHasIt) {
    Pair pair(GetParam());
    for (int step = 0; step < 30'000; ++step) {
        ASSERT_TRUE(pair.Step()) << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, SettingsSequences, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace orvane
