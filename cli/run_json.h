#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "app/calculation.h"

// A run as JSON. Texts are 8-bit: every byte becomes the code point of the same number. Numbers
// read back as the same double; those that are not finite are the strings "inf", "-inf", "nan".

namespace orvane::cli {

using Json = nlohmann::ordered_json;

Json TextJson(std::string_view text);
Json NumberJson(double number);

// One line of ASCII with a line feed behind it.
std::string Print(const Json& json);

// The whole run in the same way. It is never one object in memory, which would be many times as
// large as its text.
std::string PrintRun(const FinishedRun& run);

}  // namespace orvane::cli
