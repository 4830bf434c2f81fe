#include "storage/archive_index.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace orvane {

namespace {

using Json = nlohmann::json;

constexpr const char* versionKey = "orvane_archive";
constexpr int version = 1;
constexpr const char* formKey = "texts";
constexpr std::string_view rawForm = "raw";
constexpr std::string_view utf8Form = "utf-8";

std::string Quoted(std::string_view text) {
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string EntryLine(const ArchiveIndex::Entry& entry) {
    std::string line = "        {\"file\": " + Quoted(entry.file);
    line += ", \"name\": " + Quoted(entry.name);
    if (entry.isUnusual) line += ", \"unusual\": true";
    return line + "}";
}

// A file in the folder or below it, on every system.
bool IsInside(std::string_view file) {
    if (file.empty() || file.find_first_of(std::string_view("\\:\0", 3)) != file.npos) {
        return false;
    }
    for (std::size_t start = 0; start <= file.size();) {
        const std::size_t end = std::min(file.find('/', start), file.size());
        const std::string_view part = file.substr(start, end - start);
        if (part.empty() || part == "." || part == "..") return false;
        start = end + 1;
    }
    return true;
}

// The text of this key; nothing, with the reason, where there is none.
std::optional<std::string> TextAt(const Json& object, const char* key, std::string& reason) {
    const auto found = object.find(key);
    if (found != object.end() && found->is_string()) return found->get<std::string>();
    reason = std::string("has no text \"") + key + "\" where one is needed";
    return std::nullopt;
}

std::optional<ArchiveIndex::Entry> ReadEntry(const Json& object, std::string& reason) {
    if (!object.is_object()) {
        reason = "has something else than an object among its sheets";
        return std::nullopt;
    }
    const std::optional<std::string> file = TextAt(object, "file", reason);
    if (!file) return std::nullopt;
    const std::optional<std::string> name = TextAt(object, "name", reason);
    if (!name) return std::nullopt;
    if (!IsInside(*file)) {
        reason = "names the file '" + *file + "', which is not in the folder";
        return std::nullopt;
    }
    const auto unusual = object.find("unusual");
    if (unusual != object.end() && !unusual->is_boolean()) {
        reason = "has an \"unusual\" that is neither true nor false";
        return std::nullopt;
    }
    return ArchiveIndex::Entry{*file, *name, unusual != object.end() && unusual->get<bool>()};
}

bool IsOurs(const Json& json, std::string& reason) {
    if (json.is_discarded()) {
        reason = "is damaged: it is no JSON";
        return false;
    }
    const auto found = json.is_object() ? json.find(versionKey) : json.end();
    if (found == json.end()) {
        reason = "is no index of an archive";
        return false;
    }
    if (*found == version) return true;
    reason = "is the index of another version's archive";
    return false;
}

bool ReadTexts(const Json& json, ArchiveIndex& index, std::string& reason) {
    const std::optional<std::string> form = TextAt(json, formKey, reason);
    if (!form) return false;
    if (*form != rawForm && *form != utf8Form) {
        reason = "has texts in a form that is unknown, '" + *form + "'";
        return false;
    }
    index.isRaw = *form == rawForm;
    const std::optional<std::string> preamble = TextAt(json, "preamble", reason);
    if (!preamble) return false;
    index.preamble = *preamble;
    const std::optional<std::string> rest = TextAt(json, "rest", reason);
    if (!rest) return false;
    index.rest = *rest;
    return true;
}

}  // namespace

std::string IndexText(const ArchiveIndex& index) {
    std::string text = "{\n    \"";
    text.append(versionKey).append("\": ").append(std::to_string(version)).append(",\n    \"");
    text.append(formKey).append("\": ").append(Quoted(index.isRaw ? rawForm : utf8Form));
    text += ",\n    \"preamble\": " + Quoted(index.preamble);
    text += ",\n    \"sheets\": [";
    const char* separator = "\n";
    for (const ArchiveIndex::Entry& entry : index.sheets) {
        text += separator + EntryLine(entry);
        separator = ",\n";
    }
    if (!index.sheets.empty()) text += "\n    ";
    return text + "],\n    \"rest\": " + Quoted(index.rest) + "\n}\n";
}

std::optional<ArchiveIndex> ReadIndex(std::string_view json, std::string& reason) {
    const Json parsed = Json::parse(json, nullptr, false);
    ArchiveIndex index;
    if (!IsOurs(parsed, reason) || !ReadTexts(parsed, index, reason)) return std::nullopt;
    const auto sheets = parsed.find("sheets");
    if (sheets == parsed.end() || !sheets->is_array()) {
        reason = "has no list \"sheets\"";
        return std::nullopt;
    }
    for (const Json& sheet : *sheets) {
        std::optional<ArchiveIndex::Entry> entry = ReadEntry(sheet, reason);
        if (!entry) return std::nullopt;
        index.sheets.push_back(std::move(*entry));
    }
    return index;
}

}  // namespace orvane
