#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "app/calculation.h"
#include "cli/piecewise_text.h"

// A run as JSON. Texts are 8-bit: every byte becomes the code point of the same number. Numbers
// read back as the same double; those that are not finite are the strings "inf", "-inf", "nan".

namespace orvane::cli {

using Json = nlohmann::ordered_json;

Json TextJson(std::string_view text);
Json NumberJson(double number);

// One line of ASCII with a line feed behind it.
std::string Print(const Json& json);

// The whole run in the same way. Neither the object nor its text stand in memory as a whole.
void PrintRun(const FinishedRun& run, PiecewiseText& output);

}  // namespace orvane::cli
