#include "tests/support/help_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/sheet_files.h"

namespace orvane::test {

namespace {

namespace fs = std::filesystem;

std::map<std::string, HelpPageFile> ReadPages() {
    std::map<std::string, HelpPageFile> pages;
    const fs::path folder = ORVANE_HELP_FOLDER;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".htm") continue;
        HelpPageFile& page = pages[entry.path().lexically_relative(folder).generic_string()];
        page.text = ReadAll(entry.path());
        const pugi::xml_parse_result parsed = page.document.load_buffer(
            page.text.data(), page.text.size(), pugi::parse_full | pugi::parse_ws_pcdata,
            pugi::encoding_utf8);
        if (!parsed) page.fault = parsed.description();
    }
    return pages;
}

}  // namespace

const std::map<std::string, HelpPageFile>& HelpPages() {
    static const std::map<std::string, HelpPageFile> pages = ReadPages();
    return pages;
}

std::vector<std::string> HelpPaths() {
    std::vector<std::string> paths;
    for (const auto& [path, page] : HelpPages()) paths.push_back(path);
    return paths;
}

pugi::xml_node HelpBody(const std::string& path) {
    const auto found = HelpPages().find(path);
    const pugi::xml_node body = found == HelpPages().end()
                                    ? pugi::xml_node()
                                    : found->second.document.child("html").child("body");
    EXPECT_TRUE(body) << path << " is no page";
    return body;
}

bool HasTopic(const std::string& topic) {
    const std::size_t mark = topic.find('#');
    const auto found = HelpPages().find(topic.substr(0, mark));
    if (found == HelpPages().end()) return false;
    if (mark == std::string::npos) return true;
    for (const pugi::xpath_node& place : found->second.document.select_nodes("//a[@name]")) {
        if (place.node().attribute("name").value() == topic.substr(mark + 1)) return true;
    }
    return false;
}

std::string TextOf(const pugi::xml_node& element) {
    std::string text;
    for (const pugi::xpath_node& found : element.select_nodes(".//text()")) {
        text += found.node().value();
    }
    return text;
}

}  // namespace orvane::test
