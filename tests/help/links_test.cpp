#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "functions/keyword_table.h"
#include "tests/support/help_folder.h"
#include "tests/support/sheet_files.h"
#include "windows/help_topics.h"

namespace orvane {
namespace {

using namespace orvane::test;

struct Link {
    std::string from;
    std::string target;  // a topic, or what stands there where it leads out of the help
};

bool LeadsOut(const std::string& target) {
    return target.starts_with("http:") || target.starts_with("https:");
}

// The topic that a link of this page leads to.
std::string TopicOf(const std::string& page, const std::string& reference) {
    if (reference.starts_with('#')) return page + reference;
    const std::filesystem::path folder = std::filesystem::path(page).parent_path();
    return (folder / reference).lexically_normal().generic_string();
}

std::vector<Link> LinksOf(const std::string& page) {
    std::vector<Link> links;
    for (const pugi::xpath_node& found : HelpBody(page).select_nodes(".//a[@href]")) {
        const std::string reference = found.node().attribute("href").value();
        links.push_back({page, LeadsOut(reference) ? reference : TopicOf(page, reference)});
    }
    return links;
}

TEST(HelpLinks, AllLeadToAPageAndAPlaceSpelledSo) {
    for (const std::string& page : HelpPaths()) {
        for (const Link& link : LinksOf(page)) {
            if (!LeadsOut(link.target)) {
                EXPECT_TRUE(HasTopic(link.target)) << page << " leads to " << link.target;
            }
        }
    }
}

TEST(HelpLinks, PicturesAndStylesAreThere) {
    const std::filesystem::path folder = ORVANE_HELP_FOLDER;
    for (const auto& [path, page] : HelpPages()) {
        for (const pugi::xpath_node& found :
             page.document.select_nodes("//img/@src|//link/@href")) {
            const std::string file = TopicOf(path, found.attribute().value());
            EXPECT_TRUE(std::filesystem::is_regular_file(folder / file)) << path << ": " << file;
        }
    }
}

TEST(HelpLinks, ReachEveryPageFromTheContents) {
    std::set<std::string> reached = {std::string(topics::contents)};
    std::vector<std::string> waiting(reached.begin(), reached.end());
    while (!waiting.empty()) {
        const std::string page = waiting.back();
        waiting.pop_back();
        if (!HasTopic(page)) continue;
        for (const Link& link : LinksOf(page)) {
            const std::string target = link.target.substr(0, link.target.find('#'));
            if (!LeadsOut(target) && reached.insert(target).second) waiting.push_back(target);
        }
    }
    for (const std::string& page : HelpPaths()) EXPECT_TRUE(reached.contains(page)) << page;
}

TEST(HelpFolder, StandsBesideTheProgramFileByFile) {
    const std::filesystem::path folder = ORVANE_HELP_FOLDER;
    const std::filesystem::path copies = ORVANE_HELP_COPIES;
    const auto filesIn = [](const std::filesystem::path& top) {
        std::set<std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(top)) {
            if (entry.is_regular_file()) files.insert(entry.path().lexically_relative(top));
        }
        return files;
    };
    EXPECT_EQ(filesIn(copies), filesIn(folder));
    for (const std::string& file : filesIn(folder)) {
        EXPECT_EQ(ReadAll(copies / file), ReadAll(folder / file)) << file;
    }
}

TEST(HelpTopics, OfAllCommandsAndDialogsHaveTheirPages) {
    for (int command = 32824; command <= 32923; ++command) {
        if (const auto topic = TopicForCommand(command)) {
            EXPECT_TRUE(HasTopic(std::string(*topic))) << command << " " << *topic;
        }
    }
    for (const std::string_view topic :
         {topics::contents, topics::textColours, topics::generalOptions, topics::allKeywords,
          topics::locus, topics::fastHelp}) {
        EXPECT_TRUE(HasTopic(std::string(topic))) << topic;
    }
    for (const std::string_view topic : openingTopics) {
        EXPECT_TRUE(HasTopic(std::string(topic))) << topic;
    }
}

TEST(HelpTopics, OfAllKeywordsHaveTheirPagesAndPlaces) {
    for (const KeywordEntry& entry : keywordRows) {
        EXPECT_TRUE(HasTopic(TopicForKeyword(entry))) << TopicForKeyword(entry);
        EXPECT_TRUE(HasTopic(TopicForFastHelp(entry.name))) << TopicForFastHelp(entry.name);
    }
}

}  // namespace
}  // namespace orvane
