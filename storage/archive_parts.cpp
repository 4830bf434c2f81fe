#include "storage/archive_parts.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

namespace orvane {

namespace {

using Sheet = ArchiveParts::Sheet;

}  // namespace

ArchiveParts CutArchive(std::string_view bytes) {
    const std::string_view seen = bytes.substr(0, bytes.find('\0'));
    std::size_t at = std::min(seen.find(nameMark), seen.size());
    ArchiveParts parts;
    parts.preamble = seen.substr(0, at);
    while (at < seen.size()) {
        const std::size_t name = at + 1;
        const std::size_t mark = seen.find(textMark, name);
        if (mark == seen.npos) break;
        const std::size_t end = std::min(seen.find(nameMark, mark), seen.size());
        parts.sheets.push_back({std::string(seen.substr(name, mark - name)),
                                std::string(seen.substr(mark + 1, end - mark - 1))});
        at = end;
    }
    parts.rest = bytes.substr(at);
    return parts;
}

std::string JoinArchive(const ArchiveParts& parts) {
    std::string bytes = parts.preamble;
    for (const Sheet& sheet : parts.sheets) {
        bytes += nameMark;
        bytes += sheet.name;
        bytes += textMark;
        bytes += sheet.text;
    }
    return bytes + parts.rest;
}

MergeCount MergeSheets(ArchiveParts& into, const std::vector<Sheet>& from) {
    std::map<std::string, std::size_t, std::less<>> places;  // the first one of a name counts
    for (std::size_t at = 0; at < into.sheets.size(); ++at) {
        places.emplace(into.sheets[at].name, at);
    }
    MergeCount count;
    for (const Sheet& sheet : from) {
        const auto [place, isNew] = places.emplace(sheet.name, into.sheets.size());
        if (isNew) {
            into.sheets.push_back(sheet);
        } else {
            into.sheets[place->second].text = sheet.text;
        }
        ++(isNew ? count.added : count.replaced);
    }
    return count;
}

std::optional<HiddenSheet> FindHidden(const ArchiveParts& archive,
                                      const std::vector<Sheet>& wanted) {
    std::set<std::string_view> open;  // the names that are still looked for
    std::set<std::size_t> lengths;    // of a million name marks in a row only few are compared
    for (const Sheet& sheet : wanted) {
        open.insert(sheet.name);
        lengths.insert(sheet.name.size());
    }
    for (const Sheet& sheet : archive.sheets) {
        const std::string_view name = sheet.name;
        open.erase(name);
        for (std::size_t mark = name.find(nameMark); mark != name.npos;
             mark = name.find(nameMark, mark + 1)) {
            const std::string_view tail = name.substr(mark + 1);
            if (!lengths.contains(tail.size()) || !open.contains(tail)) continue;
            return HiddenSheet{std::string(tail), sheet.name};
        }
    }
    return std::nullopt;
}

}  // namespace orvane
