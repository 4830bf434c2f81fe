#pragma once

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/tool_run.h"

// What the tests of the commands ask again and again.

namespace orvane::test {

// Keeps the order of the keys.
using Json = nlohmann::ordered_json;

// Exit status 2, nothing on the standard output, and one message on the standard error that holds
// all of the words.
void ExpectRefused(const ToolResult& result, std::initializer_list<std::string_view> words);

// The standard output of a run that ends with this status and says nothing on its standard error.
std::string OutputOf(const std::vector<std::string>& arguments, std::string_view sheet,
                     int status = 0);

// The same as JSON: one object in ASCII with a line feed behind it.
Json JsonOf(const std::vector<std::string>& arguments, std::string_view sheet, int status = 0);

std::vector<std::string> KeysOf(const Json& object);

// A text of the JSON as bytes; every code point must be one byte's.
std::string BytesOf(const Json& text);

}  // namespace orvane::test
