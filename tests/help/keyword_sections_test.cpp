#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "functions/keyword_table.h"
#include "functions/keyword_texts.h"
#include "tests/support/help_folder.h"
#include "windows/help_topics.h"

namespace orvane {
namespace {

using namespace orvane::test;

// What stands between one heading of the second rank and the next.
struct Section {
    std::vector<std::string> signatures;  // line by line
    std::vector<std::string> sheets;      // with a report behind each
};

void AddLines(const std::string& text, std::vector<std::string>& lines) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        if (end > at) lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
}

std::string_view ClassOf(const pugi::xml_node& node) { return node.attribute("class").value(); }

pugi::xml_node ElementBehind(pugi::xml_node node) {
    do node = node.next_sibling();
    while (node && node.type() != pugi::node_element);
    return node;
}

Section SectionBehind(const pugi::xml_node& heading) {
    Section section;
    for (pugi::xml_node node = ElementBehind(heading);
         node && std::string_view(node.name()) != "h2"; node = ElementBehind(node)) {
        if (ClassOf(node) == "signature") AddLines(TextOf(node), section.signatures);
        if (ClassOf(node) == "sheet" && ClassOf(ElementBehind(node)) == "report") {
            section.sheets.push_back(TextOf(node));
        }
    }
    return section;
}

// The heading with the keyword's own place, whose text is the keyword.
pugi::xml_node HeadingOf(const KeywordEntry& entry) {
    const std::string path = TopicForKeyword(entry);
    for (const pugi::xml_node& heading : HelpBody(path).children("h2")) {
        for (const pugi::xml_node& place : heading.children("a")) {
            if (std::string_view(place.attribute("name").value()) == entry.name &&
                TextOf(place) == entry.name) {
                return heading;
            }
        }
    }
    return {};
}

// The line as orvane-cli keywords prints it, with one blank between its columns.
std::string SignatureText(const KeywordLine& line) {
    std::string text(line.returnText);
    text.append(" ").append(line.name).append(line.opening);
    const std::string params = line.signature.mainParams + line.signature.optionalParams;
    if (!line.opening.empty()) return text.append(" ").append(params).append(" )");
    return params.empty() ? text : text.append(" = ").append(params);
}

// The name in such a line: the last word ahead of the bracket, or the one behind the kind of a word
// that can't be called.
std::string NameIn(const std::string& signature) {
    const std::string head = signature.substr(0, signature.find_first_of("(="));
    const std::size_t end = head.find_last_not_of(' ');
    const std::size_t blank = head.rfind(' ', end);
    return blank == std::string::npos ? "" : head.substr(blank + 1, end - blank);
}

bool HasWord(std::string_view text, std::string_view word) {
    const auto isWord = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_';
    };
    for (std::size_t at = text.find(word); at != std::string_view::npos;
         at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if ((at == 0 || !isWord(text[at - 1])) && (end == text.size() || !isWord(text[end]))) {
            return true;
        }
    }
    return false;
}

TEST(HelpOfKeywords, HasASectionForEachOfThem) {
    EXPECT_EQ(keywordRows.size(), 151u);
    for (const KeywordEntry& entry : keywordRows) {
        EXPECT_TRUE(HeadingOf(entry)) << entry.name << " on " << TopicForKeyword(entry);
    }
}

TEST(HelpOfKeywords, ShowsTheSignaturesOfTheTable) {
    for (const KeywordEntry& entry : keywordRows) {
        const pugi::xml_node heading = HeadingOf(entry);
        if (!heading) continue;  // told by the test above
        SCOPED_TRACE(entry.name);
        const std::vector<std::string> shown = SectionBehind(heading).signatures;
        std::vector<std::string> own;
        for (const std::string& line : shown) {
            if (NameIn(line) == entry.name) own.push_back(line);
        }
        std::vector<std::string> wanted;
        for (const KeywordLine& line : LinesOf(entry)) wanted.push_back(SignatureText(line));
        EXPECT_EQ(own, wanted);
    }
}

TEST(HelpOfKeywords, UsesEachOfThemInAnExampleOfItsSection) {
    for (const KeywordEntry& entry : keywordRows) {
        const pugi::xml_node heading = HeadingOf(entry);
        if (!heading) continue;
        const std::vector<std::string> sheets = SectionBehind(heading).sheets;
        EXPECT_TRUE(std::any_of(sheets.begin(), sheets.end(), [&](const std::string& sheet) {
            return HasWord(sheet, entry.name);
        })) << entry.name;
    }
}

// Every code that a message can begin with; "E006-" stands alone in front of checks that many
// functions share.
constexpr std::string_view errorCodes[] = {
    "C001-01", "C001-02", "C001-03", "C001-04", "C001-05", "C001-06", "C001-07", "C001-08",
    "C001-09", "C001-10", "C002-01", "C002-02", "C002-03", "C002-04", "C002-05", "C002-06",
    "C002-09", "C002-10", "C002-11", "C002-12", "E001-01", "E001-03", "E001-04", "E001-05",
    "E001-06", "E002-01", "E002-02", "E002-03", "E002-04", "E002-05", "E002-06", "E003-01",
    "E003-02", "E004-01", "E004-02", "E005-01", "E005-02", "E005-03", "E005-04", "E005-05",
    "E005-06", "E006-",   "E006-05", "E006-10", "E007-01", "E007-02", "E008-05", "E008-06",
    "E008-07", "E008-08", "E008-09", "E008-10", "E008-11", "E008-12", "E008-13", "E008-14",
    "E008-15", "E008-16", "E009-01", "E009-02", "E009-03", "E009-10", "E009-11", "E009-14",
    "E009-20", "E009-21", "E009-22", "E009-23", "E009-24", "E009-30", "E009-33", "E009-41",
    "E009-42", "E009-43", "E010-01", "E011-01", "E011-02", "E011-03", "E011-04", "E012-01",
    "E012-02", "E012-03"};

TEST(HelpOfErrors, HasAPlaceForEveryCode) {
    for (const std::string_view code : errorCodes) {
        EXPECT_TRUE(HasTopic("sentence/errors.htm#" + std::string(code))) << code;
    }
}

}  // namespace
}  // namespace orvane
