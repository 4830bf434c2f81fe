#pragma once

#include <string>
#include <string_view>
#include <vector>

// The rules of the text passes in their plainest form, for comparison: one replacement, and then
// everything again from the beginning of the text. Slow, and shares no code with the passes.
// Sentence numbers count from one, as messages show them.

namespace orvane::test {

// Each of these gives the message of the first fault, or an empty text.
std::string CheckNumbersPlainly(std::string_view text, int number);
std::string CheckSymbolsPlainly(std::string_view text, int number);
// Leaves the text half rewritten when it fails.
std::string RewriteOperatorsPlainly(std::string& text, int number);

void CollapseSignsPlainly(std::string& text);
void RemoveDoubledBracketsPlainly(std::string& text);

struct PlainDefine {
    std::string name;
    std::string text;
};

// One replacement; false when there is nothing to replace.
bool SubstituteOncePlainly(std::string& text, const std::vector<PlainDefine>& defines);
bool FoldOncePlainly(std::string& text);

}  // namespace orvane::test
