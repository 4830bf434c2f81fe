#pragma once

#include <string>
#include <string_view>

namespace orvane {

// The mark-up of the About dialog. `webSite` is an address without quotes and angle brackets.
std::string AboutText(std::string_view version, std::string_view webSite);

}  // namespace orvane
