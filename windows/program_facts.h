#pragma once

#include <string_view>

// What the build says about the program.

namespace orvane {

std::string_view ProgramVersion();

// The address of the maker's web site, which starts with "http" and ends with '/'.
std::string_view WebSite();

}  // namespace orvane
