#include "functions/keyword_texts.h"

#include <cstddef>
#include <utility>

namespace orvane {

namespace {

std::string SpaceCommas(std::string_view form) {
    std::string spaced;
    for (const char c : form) {
        if (c == ',') spaced += ' ';
        spaced += c;
    }
    return spaced;
}

// The '/' alternatives of a parameter text, each with `lead` in front. No text has no form.
std::vector<std::string> FormsOf(const char* params, std::string_view lead) {
    std::vector<std::string> forms;
    if (params == nullptr) return forms;
    std::string_view rest = params;
    for (;;) {
        const std::size_t slash = rest.find('/');
        forms.push_back(std::string(lead) + SpaceCommas(rest.substr(0, slash)));
        if (slash == std::string_view::npos) return forms;
        rest.remove_prefix(slash + 1);
    }
}

// A word that can't be called: what it is, and a constant's digits.
KeywordLine LineOfWord(const KeywordEntry& entry) {
    if (entry.group == KeywordGroup::header) return {"<header>", entry.name, "", {}, ""};
    const std::string_view digits = KeywordTable::ConstantText(entry.name).value_or("");
    return {"<constant>", entry.name, "", {std::string(digits), ""}, ""};
}

}  // namespace

std::vector<Signature> SignaturesOf(const KeywordEntry& entry) {
    const std::vector<std::string> optional = FormsOf(entry.optionalParams, " ,");
    std::vector<Signature> signatures;
    for (const std::string& form : FormsOf(entry.mainParams, "")) {
        const std::size_t index = signatures.size();
        signatures.push_back({form, index < optional.size() ? optional[index] : ""});
    }
    return signatures;
}

std::vector<KeywordLine> LinesOf(const KeywordEntry& entry) {
    if (entry.returnText == nullptr) return {LineOfWord(entry)};
    std::vector<KeywordLine> lines;
    for (Signature& signature : SignaturesOf(entry)) {
        lines.push_back({entry.returnText, entry.name, "(", std::move(signature), ")"});
    }
    return lines;
}

}  // namespace orvane
