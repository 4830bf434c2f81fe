#pragma once

#include <map>
#include <pugixml.hpp>
#include <string>
#include <vector>

// The pages of the help as the tree holds them.

namespace orvane::test {

struct HelpPageFile {
    std::string text;
    pugi::xml_document document;
    std::string fault;  // why it could not be read; such a page is empty
};

// By their paths below help/html, as in "function/bits.htm". Read once.
const std::map<std::string, HelpPageFile>& HelpPages();
std::vector<std::string> HelpPaths();

// The body of a page; an empty node, and a failed test, where there is none.
pugi::xml_node HelpBody(const std::string& path);

// Whether there is such a page and, behind "#", such a place on it.
bool HasTopic(const std::string& topic);

// All text below an element.
std::string TextOf(const pugi::xml_node& element);

}  // namespace orvane::test
