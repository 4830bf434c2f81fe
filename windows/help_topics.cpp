#include "windows/help_topics.h"

#include <cstddef>

namespace orvane {

namespace {

struct CommandTopic {
    int command;
    std::string_view topic;
};

constexpr CommandTopic commandTopics[] = {
    {32824, "function/function.htm"},
    {32825, "function/string.htm"},
    {32826, "function/bits.htm"},
    {32827, "function/logic.htm"},
    {32828, "function/condition.htm"},
    {32829, "function/normal.htm"},
    {32830, "function/statistics.htm"},
    {32831, "function/point.htm"},
    {32832, "function/vectormatrix.htm"},
    {32833, "function/variable/integral.htm"},
    {32834, "function/variable/series.htm"},
    {32835, "function/variable/product.htm"},
    {32836, "function/variable/equation.htm"},
    {32837, "function/variable/locus.htm"},
    {32838, "function/complex.htm"},
    {32839, "function/operator.htm"},
    {32850, "sentence/number.htm"},
    {32851, "sentence/operator.htm"},
    {32852, "sentence/formula/outputkey.htm"},
};

// Pages that keywords name in full, indexed by help kind.
constexpr std::string_view sentencePages[] = {
    "sentence/number.htm",
    "sentence/formula/outputkey.htm",
    "sentence/text.htm",
    "sentence/define.htm",
};

// The pages of functions, from HelpKind::bits on. Kept: the capital letter of the integrals, which
// the page of their command does not have. They are different pages.
constexpr std::string_view functionPages[] = {
    "bits",
    "condition",
    "logic",
    "normal",
    "point",
    "statistics",
    "string",
    "vectormatrix",
    "complex",
    "operator",
    "variable/series",
    "variable/product",
    "variable/locus",
    "variable/equation",
    "variable/Integral/area",
    "variable/Integral/curve",
};

}  // namespace

std::optional<std::string_view> TopicForCommand(int command) {
    for (const CommandTopic& row : commandTopics) {
        if (row.command == command) return row.topic;
    }
    return std::nullopt;
}

std::string TopicForKeyword(const KeywordEntry& entry) {
    const auto kind = static_cast<std::size_t>(entry.helpKind);
    if (kind < std::size(sentencePages)) return std::string(sentencePages[kind]);
    const std::size_t page = kind - std::size(sentencePages);
    // Kept: a kind without a page still gives a path, and the help shows nothing for it.
    const std::string_view word = page < std::size(functionPages) ? functionPages[page] : "";
    return "function/" + std::string(word) + ".htm";
}

std::string TopicForFastHelp(std::string_view word) {
    const KeywordEntry* entry = keywordTable.Find(word);
    if (entry == nullptr) return std::string(topics::fastHelp);
    return TopicForKeyword(*entry) + "#" + entry->name;
}

}  // namespace orvane
