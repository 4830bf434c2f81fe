#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "storage/archive.h"
#include "tests/storage/literal_archive.h"
#include "tests/storage/marked_text.h"

// Archives against models, over long random runs and over bytes that no dialog would write.

namespace orvane {
namespace {

using test::BufferOf;
using test::Marked;
using test::Shown;

class Dice {
public:
    explicit Dice(unsigned seed) : engine(seed) {}
    std::size_t Below(std::size_t end) { return engine() % end; }
    std::string Text(std::string_view alphabet, std::size_t longest) {
        std::string text(Below(longest + 1), ' ');
        for (char& byte : text) byte = alphabet[Below(alphabet.size())];
        return text;
    }

private:
    std::mt19937 engine;
};

// Sheets as people think of them: a list of names and texts. The first of a name is meant.
struct SheetList {
    std::vector<std::pair<std::string, std::string>> sheets;

    auto Find(const std::string& name) {
        return std::find_if(sheets.begin(), sheets.end(),
                            [&](const auto& sheet) { return sheet.first == name; });
    }
    std::string Bytes() const {
        std::string bytes(archivePreamble);
        for (const auto& [name, text] : sheets) bytes += Marked("<") + name + Marked(">") + text;
        return bytes;
    }
};

// One random operation on both; true where what they told is the same.
bool StepBoth(TextBuffer& archive, SheetList& list, Dice& dice) {
    const std::string name = dice.Text("abc", 2);
    const std::string other = dice.Text("abc", 2);
    const std::string text = dice.Text("xyz \r\n1+", 30);
    const auto place = list.Find(name);
    const bool isThere = place != list.sheets.end();
    switch (dice.Below(list.sheets.size() > 20 ? 6 : 7)) {
        case 0:
            DeleteSheet(archive, name);
            if (isThere) list.sheets.erase(place);
            return true;
        case 1:
            ReplaceSheetText(archive, name, text);
            if (isThere) place->second = text;
            return true;
        case 2:
            RenameSheet(archive, name, other);
            if (isThere) place->first = other;
            return true;
        case 3: {
            const bool moves = isThere && place != list.sheets.begin();
            if (moves) std::iter_swap(place, place - 1);
            return MoveSheetUp(archive, name) == moves;
        }
        case 4: {
            const bool moves = isThere && place + 1 != list.sheets.end();
            if (moves) std::iter_swap(place, place + 1);
            return MoveSheetDown(archive, name) == moves;
        }
        case 5:
            return ReadSheetText(archive, name) == (isThere ? place->second : "") &&
                   FindSheet(archive, name).has_value() == isThere;
        default:
            AppendSheet(archive, name, text);
            list.sheets.emplace_back(name, text);
            return true;
    }
}

TEST(Archive, AgreesWithAListOfSheetsOverManyRandomSteps) {
    Dice dice(62);
    TextBuffer archive = BufferOf(archivePreamble);
    SheetList list;
    std::size_t most = 0;
    for (int count = 0; count < 150'000; ++count) {
        ASSERT_TRUE(StepBoth(archive, list, dice)) << count;
        ASSERT_EQ(Shown(archive.View()), Shown(list.Bytes())) << count;
        const std::vector<std::string> names = ListNames(archive);
        ASSERT_EQ(names.size(), list.sheets.size()) << count;
        for (std::size_t at = 0; at < names.size(); ++at) {
            ASSERT_EQ(names[at], list.sheets[at].first) << count;
        }
        most = std::max(most, names.size());
    }
    EXPECT_GT(most, 15U);
}

// One operation, by number, on both; what they tell must be the same.
void ExpectSameStep(TextBuffer& archive, test::literal::Archive& model, std::size_t operation,
                    const std::string& name, const std::string& given) {
    switch (operation) {
        case 0:
            AppendSheet(archive, name, given);
            model.Append(name, given);
            break;
        case 1:
            ReplaceSheetText(archive, name, given);
            model.Replace(name, given);
            break;
        case 2:
            RenameSheet(archive, name, given);
            model.Rename(name, given);
            break;
        case 3:
            DeleteSheet(archive, name);
            model.Delete(name);
            break;
        case 4:
            ASSERT_EQ(MoveSheetUp(archive, name), model.MoveUp(name));
            break;
        case 5:
            ASSERT_EQ(MoveSheetDown(archive, name), model.MoveDown(name));
            break;
        default:
            ASSERT_EQ(Shown(ReadSheetText(archive, name)), Shown(model.Read(name)));
            ASSERT_EQ(FindSheet(archive, name).value_or(-1), model.Find(name));
    }
    ASSERT_EQ(Shown(archive.View()), Shown(model.bytes));
}
constexpr std::size_t operationCount = 7;

TEST(Archive, DoesWithMarksAndNulsWhatTheStepsSay) {
    Dice dice(26);
    const std::string alphabet = Marked("aab<<>>#");
    const std::string withoutNul = Marked("aab<<>>");
    TextBuffer archive;
    test::literal::Archive model;
    int found = 0;
    for (int count = 0; count < 200'000; ++count) {
        if (count % 50 == 0 || model.bytes.size() > 300) {
            // A NUL hides what is behind it for good, so most beginnings have none.
            model.bytes = dice.Text(dice.Below(4) == 0 ? alphabet : withoutNul, 60);
            archive.Assign(model.bytes);
        }
        const std::vector<std::string> names = model.Names();
        ASSERT_EQ(ListNames(archive), names) << count;
        const bool isKnown = !names.empty() && dice.Below(4) != 0;
        const std::string name =
            isKnown ? names[dice.Below(names.size())] : dice.Text(withoutNul, 3);
        const std::string given = dice.Text(dice.Below(8) == 0 ? alphabet : withoutNul, 6);
        const std::string before = Shown(model.bytes);
        found += model.Find(name) >= 0 ? 1 : 0;
        ExpectSameStep(archive, model, dice.Below(operationCount), name, given);
        if (HasFatalFailure()) FAIL() << count << ": " << before << " " << Shown(name);
    }
    EXPECT_GT(found, 100'000);
}

TEST(Archive, TakesRandomBytesOfEveryKind) {
    Dice dice(256);
    std::string every;
    for (int byte = 0; byte < 256; ++byte) every += static_cast<char>(byte);
    for (int count = 0; count < 3000; ++count) {
        test::literal::Archive model;
        model.bytes = dice.Text(every, 600);
        TextBuffer archive = BufferOf(model.bytes);
        const std::vector<std::string> names = model.Names();
        ASSERT_EQ(ListNames(archive), names) << count;
        const std::string name =
            names.empty() ? dice.Text(every, 2) : names[dice.Below(names.size())];
        for (std::size_t operation = 0; operation < operationCount; ++operation) {
            ExpectSameStep(archive, model, operation, name, dice.Text(every, 9));
            if (HasFatalFailure()) FAIL() << count;
        }
    }
}

TEST(Archive, TakesAnArchiveCutOffAnywhere) {
    const std::string whole =
        std::string(archivePreamble) +
        Marked("<first>1+2;\r\n<second><third name>a=3<4>5;<first>6<last>7#<x>8");
    const std::string names[] = {"first", "second", "third name", "4", "last", "x", "", "firs"};
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        SCOPED_TRACE(length);
        const std::string start = whole.substr(0, length);
        ASSERT_EQ(ListNames(BufferOf(start)), (test::literal::Archive{start}.Names()));
        for (const std::string& name : names) {
            SCOPED_TRACE(name);
            for (std::size_t operation = 0; operation < operationCount; ++operation) {
                test::literal::Archive model{start};
                TextBuffer archive = BufferOf(start);
                ExpectSameStep(archive, model, operation, name, "given");
                if (HasFatalFailure()) return;
            }
        }
    }
}

constexpr std::size_t hugeSize = 50'000'000;

// What a search for a name that is not there leaves: everything.
void ExpectNothingFound(TextBuffer& archive, const std::string& name) {
    const std::string before(archive.View());
    EXPECT_FALSE(FindSheet(archive, name));
    EXPECT_EQ(ReadSheetText(archive, name), "");
    ReplaceSheetText(archive, name, "new");
    RenameSheet(archive, name, "new");
    DeleteSheet(archive, name);
    EXPECT_FALSE(MoveSheetUp(archive, name));
    EXPECT_FALSE(MoveSheetDown(archive, name));
    EXPECT_TRUE(archive.View() == before);
}

TEST(HugeArchive, HasNoNamesInNameMarksAlone) {
    TextBuffer archive = BufferOf(std::string(hugeSize, nameMark));
    EXPECT_TRUE(ListNames(archive).empty());
    ExpectNothingFound(archive, "a");
    AppendSheet(archive, "a", "text");
    EXPECT_EQ(FindSheet(archive, "a"), static_cast<int>(hugeSize));
    EXPECT_EQ(ReadSheetText(archive, "a"), "text");
    // All the name marks but the first are part of its name now where names are listed.
    const std::vector<std::string> names = ListNames(archive);
    ASSERT_EQ(names.size(), 1U);
    EXPECT_TRUE(names[0] == std::string(hugeSize, nameMark) + "a");
    EXPECT_EQ(FindSheet(archive, names[0]), 0);
    // The name mark in front of the entry is its neighbour.
    EXPECT_TRUE(MoveSheetUp(archive, "a"));
    EXPECT_EQ(FindSheet(archive, "a"), static_cast<int>(hugeSize) - 1);
    DeleteSheet(archive, "a");
    EXPECT_TRUE(archive.View() == std::string(hugeSize, nameMark));
}

// Names that agree over their first millions of bytes with every place that is looked at.
TEST(HugeArchive, FindsANameOfMillionsOfNameMarks) {
    const std::string marks(hugeSize / 2, nameMark);
    TextBuffer archive;
    archive.Append(marks);
    archive.Append(Marked("y>first"));
    archive.Append(marks);
    archive.Append(Marked("x>second"));
    const std::vector<std::string> names = ListNames(archive);
    ASSERT_EQ(names.size(), 2U);
    EXPECT_TRUE(names[0] == marks.substr(1) + "y");
    EXPECT_TRUE(names[1] == marks.substr(1) + "x");
    EXPECT_EQ(FindSheet(archive, names[1]), static_cast<int>(marks.size()) + 7);
    EXPECT_EQ(ReadSheetText(archive, names[1]), "second");
    ExpectNothingFound(archive, marks.substr(1) + "z");
}

TEST(HugeArchive, HasNoNamesInTextMarksAlone) {
    TextBuffer archive = BufferOf(std::string(hugeSize, textMark));
    EXPECT_TRUE(ListNames(archive).empty());
    ExpectNothingFound(archive, "a");
    ExpectNothingFound(archive, "");
    AppendSheet(archive, "a", "text");
    EXPECT_EQ(ListNames(archive), (std::vector<std::string>{"a"}));
    EXPECT_FALSE(MoveSheetUp(archive, "a"));
    DeleteSheet(archive, "a");
    EXPECT_TRUE(archive.View() == std::string(hugeSize, textMark));
}

TEST(HugeArchive, TakesMarksThatAlternate) {
    std::string marks;
    marks.reserve(hugeSize);
    while (marks.size() < hugeSize) marks += Marked("<>");
    TextBuffer archive = BufferOf(marks);
    ExpectNothingFound(archive, "a");
    EXPECT_EQ(ListNames(archive).size(), hugeSize / 2);
    EXPECT_EQ(FindSheet(archive, ""), 0);
    ReplaceSheetText(archive, "", "text");
    EXPECT_TRUE(archive.View() == Marked("<>text") + marks.substr(2));
    EXPECT_TRUE(MoveSheetDown(archive, ""));
    EXPECT_TRUE(archive.View() == Marked("<><>text") + marks.substr(4));
    RenameSheet(archive, "", "first");
    DeleteSheet(archive, "");
    EXPECT_TRUE(archive.View() == Marked("<first>") + marks.substr(4));
}

TEST(HugeArchive, KeepsWhatIsBehindANul) {
    std::string bytes = Marked("<a>1#");
    while (bytes.size() < hugeSize) bytes += Marked("<b>2");
    TextBuffer archive = BufferOf(bytes);
    EXPECT_EQ(ListNames(archive), (std::vector<std::string>{"a"}));
    ExpectNothingFound(archive, "b");
    ReplaceSheetText(archive, "a", "22");
    EXPECT_TRUE(archive.View() == Marked("<a>22") + bytes.substr(4));
}

}  // namespace
}  // namespace orvane
