#include "tests/cli/tool_checks.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace orvane::test {

void ExpectRefused(const ToolResult& result, std::initializer_list<std::string_view> words) {
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.starts_with("orvane-cli: ")) << result.error;
    EXPECT_TRUE(result.error.ends_with("\n")) << result.error;
    for (const std::string_view word : words) {
        EXPECT_NE(result.error.find(word), std::string::npos)
            << "'" << word << "' is not in: " << result.error;
    }
}

std::string OutputOf(const std::vector<std::string>& arguments, std::string_view sheet,
                     int status) {
    const ToolResult result = RunTool(arguments, sheet);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.error, "");
    return result.output;
}

Json JsonOf(const std::vector<std::string>& arguments, std::string_view sheet, int status) {
    const std::string output = OutputOf(arguments, sheet, status);
    EXPECT_TRUE(output.ends_with("}\n"));
    EXPECT_TRUE(std::all_of(output.begin(), output.end(),
                            [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
    Json json = Json::parse(output, nullptr, false);
    EXPECT_TRUE(json.is_object()) << output.substr(0, 1000);
    return json;
}

std::vector<std::string> KeysOf(const Json& object) {
    std::vector<std::string> keys;
    for (const auto& item : object.items()) keys.push_back(item.key());
    return keys;
}

std::string BytesOf(const Json& text) {
    const std::string utf8 = text.get<std::string>();
    std::string bytes;
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        const auto first = static_cast<unsigned char>(utf8[at]);
        if (first < 0x80) {
            bytes += utf8[at];
            continue;
        }
        EXPECT_TRUE(first == 0xC2 || first == 0xC3) << "not one byte's code point";
        const auto second = static_cast<unsigned char>(utf8[++at]);
        bytes += static_cast<char>(((first & 0x03) << 6) | (second & 0x3F));
    }
    return bytes;
}

}  // namespace orvane::test
