#include "tests/storage/settings_model.h"

namespace orvane::test {

namespace {

std::string Enclosed(char open, std::string_view name, char close) {
    std::string text(1, open);
    text.append(name);
    text.push_back(close);
    return text;
}

}  // namespace

void SettingsModel::OpenAndPrepare() {
    Open();
    for (const std::string name : {"SECT_MAIN", "SECT_GLOBLE"}) {
        if (FindSection(name)) continue;
        if (!bytes.empty() && bytes.back() != '\n') bytes += "\r\n";
        bytes.append("\r\n\r\n{").append(name).append("}\r\n<KEY>\r\n<LIST>\r\n");
        position = bytes.size();
    }
}

std::size_t SettingsModel::SearchEnd() const {
    std::size_t end = 0;
    while (end < bytes.size() && bytes[end] != '\0') ++end;
    return end;
}

bool SettingsModel::HasLineEndAt(std::size_t at) const {
    return at + 1 < SearchEnd() && bytes[at] == '\r' && bytes[at + 1] == '\n';
}

std::optional<ModelRange> SettingsModel::FindSection(std::string_view name) {
    const std::size_t last = SearchEnd();
    std::size_t at = 0;
    while (true) {
        while (at < last && bytes[at] != '{') ++at;
        if (at >= last) return std::nullopt;
        std::size_t end = at;
        while (end < last && !HasLineEndAt(end)) ++end;
        if (end - at == 1) return std::nullopt;
        std::size_t textEnd = end;
        while (bytes[textEnd - 1] == ' ') --textEnd;
        if (bytes.substr(at, textEnd - at) == Enclosed('{', name, '}')) {
            position = end == last ? last : end + 2;
            return ModelRange{at, position};
        }
        at = end + 4;
    }
}

bool SettingsModel::ReadLine(std::string& line, ModelRange& range) {
    line.clear();
    if (position == bytes.size()) return false;
    range.from = position;
    while (position < bytes.size() && bytes[position] != '\r') line += bytes[position++];
    if (position < bytes.size()) ++position;
    const bool endsHere = position > range.from && bytes[position - 1] == '\r';
    if (endsHere && position < bytes.size() && bytes[position] == '\n') ++position;
    range.to = position;
    return true;
}

std::optional<std::string> SettingsModel::Value(std::string_view section, std::string_view key) {
    if (!FindSection(section)) return std::nullopt;
    const std::string wanted = Enclosed('[', key, ']');
    std::string line;
    ModelRange range;
    while (ReadLine(line, range)) {
        if (line.rfind("<LIST>", 0) == 0) return std::nullopt;
        if (line.rfind(wanted, 0) == 0) return line.substr(wanted.size());
    }
    return std::nullopt;
}

bool SettingsModel::SetValue(std::string_view section, std::string_view key, std::string_view text,
                             bool createIfMissing) {
    if (!FindSection(section)) return false;
    const std::string wanted = Enclosed('[', key, ']');
    const std::string newLine = wanted + std::string(text) + "\r\n";
    std::string line;
    ModelRange range = {position, position};
    while (ReadLine(line, range)) {
        if (line.rfind(wanted, 0) == 0) {
            ReplaceRange(range.from, range.to, newLine);
            return true;
        }
        if (line.rfind("<LIST>", 0) == 0) break;
    }
    if (!createIfMissing) return false;
    ReplaceRange(range.from, range.from, newLine);
    return true;
}

void SettingsModel::ReplaceRange(std::size_t from, std::size_t to, std::string_view text) {
    const std::string tail = bytes.substr(to);
    const bool isAtEnd = from == to && from != 0 && from == bytes.size();
    bytes.resize(from);
    if (isAtEnd && bytes.back() != '\n') bytes += "\r\n";
    bytes += text;
    bytes += tail;
    position = bytes.size();
}

}  // namespace orvane::test
