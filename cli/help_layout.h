#pragma once

#include <pugixml.hpp>
#include <string>

// One page of the help, or a section of it, as lines of a terminal.

namespace orvane::cli {

// The blocks from `first` to the one ahead of `end`, which are children of one element; to the last
// one where `end` is empty. A line end stands behind the last line, and no line is longer than
// `columns` but those of fixed text and of words that are longer.
std::string LayOutBlocks(pugi::xml_node first, pugi::xml_node end, int columns);

// The words of an element, with one blank between two.
std::string WordsOf(const pugi::xml_node& element);

}  // namespace orvane::cli
