#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// The settings file as a string in memory, worked on one character at a time: what the real one is
// compared with after any sequence of operations on any bytes.

namespace orvane::test {

struct ModelRange {
    std::size_t from = 0;
    std::size_t to = 0;
};

class SettingsModel {
public:
    std::string bytes;
    std::size_t position = 0;

    void Open() { position = 0; }
    void OpenAndPrepare();
    std::optional<ModelRange> FindSection(std::string_view name);
    bool ReadLine(std::string& line, ModelRange& range);
    std::optional<std::string> Value(std::string_view section, std::string_view key);
    bool SetValue(std::string_view section, std::string_view key, std::string_view text,
                  bool createIfMissing);
    void ReplaceRange(std::size_t from, std::size_t to, std::string_view text);

private:
    bool HasLineEndAt(std::size_t at) const;
    std::size_t SearchEnd() const;
};

}  // namespace orvane::test
