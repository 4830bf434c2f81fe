#include "cli/help_text.h"

#include <algorithm>
#include <pugixml.hpp>

#include "cli/help_layout.h"
#include "cli/help_pages.h"
#include "functions/keyword_table.h"
#include "windows/help_topics.h"

namespace orvane::cli {

namespace {

constexpr std::string_view pageEnding = ".htm";
constexpr std::size_t mostNames = 6;

// Blanks between tags separate words, so they are read as well.
void LoadPage(const HelpPage& page, pugi::xml_document& document) {
    std::string text;
    for (const std::string_view piece : page.pieces) text += piece;
    document.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_ws_pcdata,
                         pugi::encoding_utf8);
}

const HelpPage* FindPage(std::string_view path) {
    const auto found = std::find_if(helpPages.begin(), helpPages.end(),
                                    [path](const HelpPage& page) { return page.path == path; });
    return found == helpPages.end() ? nullptr : &*found;
}

pugi::xml_node BodyOf(const pugi::xml_document& document) {
    return document.child("html").child("body");
}

bool HasAnchor(const pugi::xml_node& heading, std::string_view name) {
    for (const pugi::xml_node& anchor : heading.children("a")) {
        if (anchor.attribute("name").value() == name) return true;
    }
    return false;
}

std::string WithoutEnding(std::string_view path) {
    if (path.ends_with(pageEnding)) path.remove_suffix(pageEnding.size());
    return std::string(path);
}

char LowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// How many letters must be put in, taken out or replaced; capitals don't matter.
std::size_t EditDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    for (std::size_t at = 0; at <= to.size(); ++at) row[at] = at;
    for (std::size_t letter = 0; letter < from.size(); ++letter) {
        std::size_t diagonal = row[0];
        row[0] = letter + 1;
        for (std::size_t at = 0; at < to.size(); ++at) {
            const std::size_t replaced =
                diagonal + (LowerCase(from[letter]) == LowerCase(to[at]) ? 0 : 1);
            diagonal = row[at + 1];
            row[at + 1] = std::min({replaced, row[at] + 1, row[at + 1] + 1});
        }
    }
    return row[to.size()];
}

struct NearName {
    std::size_t distance;
    std::string name;
};

// A name that begins with the word is near, however long it is.
void AddIfNear(std::string_view word, std::string_view compared, const std::string& name,
               std::vector<NearName>& near) {
    const std::size_t distance = EditDistance(word, compared);
    const bool begins = word.size() >= 2 && compared.starts_with(word);
    const std::size_t largest = word.size() < 4 ? 1 : 2;
    if (distance <= largest || begins) near.push_back({begins ? 1 : distance, name});
}

}  // namespace

std::vector<HelpTopic> HelpTopics() {
    std::vector<HelpTopic> found;
    for (const HelpPage& page : helpPages) {
        pugi::xml_document document;
        LoadPage(page, document);
        found.push_back({page.path, WordsOf(document.child("html").child("head").child("title"))});
    }
    return found;
}

std::optional<std::string> HelpForKeyword(std::string_view word) {
    const KeywordEntry* const entry = keywordTable.Find(word);
    if (entry == nullptr) return std::nullopt;
    const HelpPage* const page = FindPage(TopicForKeyword(*entry));
    if (page == nullptr) return std::nullopt;
    pugi::xml_document document;
    LoadPage(*page, document);
    for (const pugi::xml_node& heading : BodyOf(document).children("h2")) {
        if (!HasAnchor(heading, word)) continue;
        const pugi::xml_node end = heading.next_sibling("h2");
        return LayOutBlocks(heading, end, helpColumns) + "\nMore on this page: orvane-cli help " +
               WithoutEnding(page->path) + "\n";
    }
    return std::nullopt;
}

std::optional<std::string> HelpForPage(std::string_view path) {
    const HelpPage* const page = FindPage(WithoutEnding(path).append(pageEnding));
    if (page == nullptr) return std::nullopt;
    pugi::xml_document document;
    LoadPage(*page, document);
    return LayOutBlocks(BodyOf(document).first_child(), {}, helpColumns);
}

std::vector<std::string> NamesNear(std::string_view word) {
    std::vector<NearName> near;
    for (const KeywordEntry* const entry : keywordTable.Sorted()) {
        AddIfNear(word, entry->name, entry->name, near);
    }
    const std::string path = WithoutEnding(word);
    for (const HelpPage& page : helpPages) {
        const std::string name = WithoutEnding(page.path);
        const std::size_t slash = name.rfind('/');
        const bool hasFolder = path.find('/') != std::string::npos;
        AddIfNear(path, hasFolder ? name : name.substr(slash + 1), name, near);
    }
    std::stable_sort(near.begin(), near.end(), [](const NearName& left, const NearName& right) {
        return left.distance < right.distance;
    });
    std::vector<std::string> names;
    for (const NearName& found : near) {
        if (names.size() < mostNames) names.push_back(found.name);
    }
    return names;
}

}  // namespace orvane::cli
