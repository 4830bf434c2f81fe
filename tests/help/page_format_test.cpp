#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

#include "tests/support/help_folder.h"

namespace orvane {
namespace {

using namespace orvane::test;

// What a text browser shows as it is meant, and what the command line lays out.
constexpr std::string_view knownTags[] = {
    "html", "head", "title", "link", "body", "p",  "h1", "h2",    "h3", "pre", "code", "b",
    "i",    "a",    "ul",    "ol",   "li",   "br", "hr", "table", "tr", "th",  "td",   "img"};

bool IsKnown(std::string_view tag) {
    return std::find(std::begin(knownTags), std::end(knownTags), tag) != std::end(knownTags);
}

// Whether these are the bytes of whole characters.
bool IsUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t more = lead < 0x80   ? 0
                                 : lead < 0xC2 ? 4
                                 : lead < 0xE0 ? 1
                                 : lead < 0xF0 ? 2
                                 : lead < 0xF5 ? 3
                                               : 4;
        if (more == 4 || at + more >= text.size()) return false;
        for (std::size_t next = 1; next <= more; ++next) {
            if ((static_cast<unsigned char>(text[at + next]) & 0xC0) != 0x80) return false;
        }
        at += more + 1;
    }
    return true;
}

// "../" for each folder that the page stands in.
std::string WayUp(std::string_view path) {
    std::string way;
    for (const char c : path) way += c == '/' ? "../" : "";
    return way;
}

class HelpPageFormat : public testing::TestWithParam<std::string> {};

TEST_P(HelpPageFormat, IsWellFormedAndReadableByAllThreeReaders) {
    const HelpPageFile& page = HelpPages().at(GetParam());
    EXPECT_EQ(page.fault, "");
    EXPECT_TRUE(page.text.starts_with("<html>")) << "no mark or declaration ahead of the page";
    EXPECT_TRUE(IsUtf8(page.text));
    EXPECT_EQ(page.text.find('\r'), std::string::npos);
    for (const std::string_view entity : {"&nbsp;", "&mdash;", "&copy;", "&hellip;"}) {
        EXPECT_EQ(page.text.find(entity), std::string::npos) << entity;
    }
    for (const pugi::xpath_node& found : page.document.select_nodes("//*")) {
        EXPECT_TRUE(IsKnown(found.node().name())) << found.node().name();
    }
}

TEST_P(HelpPageFormat, HasItsTitleItsStyleAndItsWayBack) {
    const std::string& path = GetParam();
    const pugi::xml_node head = HelpPages().at(path).document.child("html").child("head");
    const pugi::xml_node body = HelpBody(path);
    EXPECT_EQ(head.select_nodes("title").size(), 1u);
    EXPECT_NE(TextOf(head.child("title")), "");
    const pugi::xml_node style = head.child("link");
    EXPECT_EQ(style.attribute("href").value(), WayUp(path) + "style.css");
    EXPECT_STREQ(style.attribute("rel").value(), "stylesheet");
    EXPECT_STREQ(style.attribute("type").value(), "text/css");
    EXPECT_EQ(body.select_nodes("h1").size(), 1u);
    EXPECT_EQ(body.select_nodes("p[@class='path']").size(), path == "about/about.htm" ? 0u : 1u);
}

// Text beside the blocks would be lost on the command line.
TEST_P(HelpPageFormat, HasAllItsTextInBlocks) {
    for (const pugi::xml_node& child : HelpBody(GetParam()).children()) {
        if (child.type() == pugi::node_comment) continue;
        if (child.type() == pugi::node_pcdata) {
            EXPECT_EQ(std::string_view(child.value()).find_first_not_of(" \n"),
                      std::string_view::npos)
                << child.value();
            continue;
        }
        constexpr std::array<std::string_view, 9> blocks = {"p",  "h1", "h2",    "h3", "pre",
                                                            "ul", "ol", "table", "hr"};
        EXPECT_NE(std::find(blocks.begin(), blocks.end(), child.name()), blocks.end())
            << child.name();
    }
}

TEST_P(HelpPageFormat, NamesEveryPlaceOnce) {
    std::set<std::string> names;
    const pugi::xml_document& page = HelpPages().at(GetParam()).document;
    for (const pugi::xpath_node& place : page.select_nodes("//a[@name]")) {
        const std::string name = place.node().attribute("name").value();
        EXPECT_TRUE(names.insert(name).second) << name;
    }
}

std::string NameOfPage(const testing::TestParamInfo<std::string>& page) {
    std::string name = page.param.substr(0, page.param.rfind('.'));
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Pages, HelpPageFormat, testing::ValuesIn(HelpPaths()), NameOfPage);

}  // namespace
}  // namespace orvane
