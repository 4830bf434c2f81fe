#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// The vocabulary of the sheet language: 151 rows of plain data that name every constant, header,
// output keyword and function. Compile passes ask it what a word is; evaluation reads family and
// body from the row; the editor and the dialogs show its texts.

namespace orvane {

struct CalcParameters;
struct FunctionNode;
struct ScalarCall;
struct StepCall;
struct ValueCall;

// The family that evaluates a keyword.
enum class KeywordGroup : std::int32_t {
    constant = 0,  // replaced by its value, never called
    header = 1,    // headers and output keywords, never called
    bits = 2,
    normal = 3,  // normal, logic, statistics and date functions
    string = 4,  // folded into numbers before anything is evaluated
    point = 5,
    vector = 6,
    matrix = 7,
    variable = 8,
    condition = 9,
    operators = 10,
    complex = 11,
};
inline constexpr int keywordGroupCount = 12;

// The help topic of a keyword, in the order of the Functions menu.
enum class HelpKind : std::int32_t {
    number = 0,
    outputKey = 1,
    text = 2,
    define = 3,
    bits = 4,
    condition = 5,
    logic = 6,
    normal = 7,
    point = 8,
    statistics = 9,
    string = 10,
    vectorMatrix = 11,
    complex = 12,
    operators = 13,
    series = 14,
    product = 15,
    locus = 16,
    equation = 17,
    integralArea = 18,
    integralCurve = 19,
};

// What a row runs, in the form of its family: numbers to a number, one run of a sweep, or values
// of any shape.
using ScalarBody = double (*)(ScalarCall& call);
using StepBody = void (*)(StepCall& call);
using ValueBody = void (*)(ValueCall& call);

// What the bodies of a sweep give: one value, or x and y over a parameter.
enum class SweepShape { plain, parametric };

// How a sweep reads its parameters: the name, the lower end, the right end or the step, the step
// count, one body or two, and an option.
struct SweepForm {
    SweepShape shape = SweepShape::plain;
    bool stepIsGiven = false;  // the third parameter is the step itself, not the right end
};

struct KeywordBody {
    ScalarBody scalar = nullptr;
    StepBody step = nullptr;
    SweepForm sweepForm = {};  // of `step`
    ValueBody value = nullptr;

    constexpr KeywordBody() = default;
    constexpr KeywordBody(ScalarBody body) : scalar(body) {}
    constexpr KeywordBody(StepBody body, SweepForm form = {}) : step(body), sweepForm(form) {}
    constexpr KeywordBody(ValueBody body) : value(body) {}
};

// `mainParams` and `optionalParams` are words for people; no code judges a value by them. A '/'
// separates the signatures of a keyword and a ',' the parameters of one signature.
struct KeywordEntry {
    const char* name;
    const char* returnText;  // none for constants and headers
    KeywordGroup group;
    std::int32_t minParams;  // the counts are tested by the normal family alone
    std::int32_t maxParams;  // negative: no upper limit
    const char* mainParams;
    const char* optionalParams;
    HelpKind helpKind;
    KeywordBody body = {};
};

// How evaluation treats the children before the family runs.
enum class ChildRule {
    all,     // every child first, in order
    none,    // the family evaluates what it needs
    chosen,  // the first child, and then the one that `choose` names; its value is the node's
};

// What all family functions take. `sentence` counts from zero.
struct FamilyCall {
    FunctionNode& node;
    const KeywordEntry* keyword;  // null for a bracket without a word
    int sentence;
    const CalcParameters& parameters;
    std::string& errorText;
};

using FamilyFunction = void (*)(const FamilyCall& call);
// Called with no child evaluated and then with the first one evaluated; gives the next child to
// evaluate, or null after an error.
using ChooseFunction = FunctionNode* (*)(const FamilyCall& call, bool firstIsEvaluated);

struct FamilyEntry {
    KeywordGroup group;
    ChildRule children;
    FamilyFunction evaluate;  // null: the group has no family
    ChooseFunction choose;
};

inline constexpr int keywordCount = 151;
extern const std::array<KeywordEntry, keywordCount> keywordRows;
extern const std::array<FamilyEntry, keywordGroupCount> familyRows;

// The rows in byte order of their names. Names are compared exactly: "Sin" is no keyword.
class KeywordTable {
public:
    KeywordTable();

    // The row of this name, or null.
    const KeywordEntry* Find(std::string_view name) const;
    // The same, but null for constants and headers: they can't be called.
    const KeywordEntry* FindFunction(std::string_view name) const;
    bool IsKnown(std::string_view name) const { return Find(name) != nullptr; }
    bool IsHeader(std::string_view name) const;
    bool IsStringFunction(std::string_view name) const;

    // The completion list's incremental search: the index of the row that the typed characters
    // lead to, or -1. Each character moves forward from the row that the one before it found, so
    // characters beyond all rows keep the last match.
    int FindByPrefix(std::string_view typed) const;

    // The value of a constant word. Kept: of `false` only the length and the first two letters
    // are looked at, so every five-letter word that begins with "fa" is 0. Sheets rely on it.
    static std::optional<double> ConstantValue(std::string_view word);
    // The same words as people read them, with 30 decimals.
    static std::optional<std::string_view> ConstantText(std::string_view word);

    // The longest keyword, and the longest group word beside it: the pop-up list is as wide.
    struct WidestTexts {
        std::string_view name;
        std::string_view groupWord;
    };
    WidestTexts LongestNames() const;
    // The family's word in the completion list.
    static std::string_view GroupWord(const KeywordEntry& entry);
    // What the editor colours as symbols.
    static constexpr std::string_view symbolChars = "^><=,.+-*/%{[()]}|;:";

    std::span<const KeywordEntry* const> Sorted() const { return sorted; }

private:
    // Passes ask about every word of a sheet, so a name is found by its hash: `nameSlots` holds the
    // row's place in `sorted` plus 1, and 0 where a search ends.
    static constexpr std::size_t slotCount = 512;
    static std::size_t FirstSlot(std::string_view name);

    std::array<const KeywordEntry*, keywordCount> sorted{};
    std::array<std::string_view, keywordCount> sortedNames{};
    std::array<std::uint8_t, slotCount> nameSlots{};
};

extern const KeywordTable keywordTable;

// The family of a group. Every group has a row.
const FamilyEntry& FamilyOf(KeywordGroup group);

}  // namespace orvane
