#include "storage/archive_exchange.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "storage/archive_index.h"
#include "storage/code_page.h"
#include "storage/file_bytes.h"

namespace orvane {

namespace {

using Sheet = ArchiveParts::Sheet;

char SmallLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string SmallLetters(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), SmallLetter);
    return text;
}

// Names that are devices on one system or another, also with an ending behind them.
bool IsDevice(std::string_view smallName) {
    std::string_view stem = smallName.substr(0, smallName.find('.'));
    stem = stem.substr(0, stem.find_last_not_of(' ') + 1);
    for (const std::string_view device : {"con", "prn", "aux", "nul", "conin", "conout"}) {
        if (stem == device) return true;
    }
    const bool isNumbered = stem.starts_with("com") || stem.starts_with("lpt");
    return isNumbered && stem.size() == 4 && stem[3] >= '0' && stem[3] <= '9';
}

std::string SafeStem(std::string_view sheetName) {
    constexpr std::size_t longest = 80;
    constexpr std::string_view marksKept = " ()+,-.=_";
    std::string stem;
    for (const char c : sheetName.substr(0, longest)) {
        const char small = SmallLetter(c);
        const bool isKept = (small >= 'a' && small <= 'z') || (c >= '0' && c <= '9') ||
                            marksKept.find(c) != marksKept.npos;
        stem += isKept ? c : '_';
    }
    // A point in front hides a file, and some systems take blanks and points off the end.
    stem.erase(0, stem.find_first_not_of(" ."));
    stem.erase(stem.find_last_not_of(" .") + 1);
    if (stem.empty()) stem = "sheet";
    return IsDevice(SmallLetters(stem)) ? "_" + stem : stem;
}

std::string IndexPath(const std::string& folder) {
    return folder + "/" + std::string(archiveIndexFile);
}

bool WriteWhole(const std::string& path, std::string bytes, std::string& reason) {
    const auto onePiece = [&bytes] { return std::exchange(bytes, {}); };
    if (WriteFile(path, onePiece, reason)) return true;
    reason = "'" + path + "' can't be written: " + reason;
    return false;
}

// Written beside its place and then moved, so that there is never half an index.
bool WriteIndex(const std::string& folder, const ArchiveIndex& index, std::string& reason) {
    const std::string path = IndexPath(folder);
    const std::string beside = path + ".new";
    std::error_code error;
    bool isWritten = WriteWhole(beside, IndexText(index), reason);
    if (isWritten) {
        std::filesystem::rename(beside, path, error);
        isWritten = !error;
        if (error) reason = "'" + path + "' can't be written: " + error.message();
    }
    if (!isWritten) std::filesystem::remove(beside, error);
    return isWritten;
}

// What stands at a place itself, without following a link.
std::filesystem::file_type TypeAt(const std::string& path) {
    std::error_code error;
    return std::filesystem::symlink_status(path, error).type();
}

// A link would lead out of the folder, and writing to a pipe might never end.
bool IsFreeOrPlain(const std::string& path, std::string& reason) {
    const std::filesystem::file_type type = TypeAt(path);
    if (type == std::filesystem::file_type::not_found ||
        type == std::filesystem::file_type::regular) {
        return true;
    }
    reason = "'" + path + "' is no plain file";
    return false;
}

// The files, in small letters, that the folder's index names; none where it has no index. Nothing,
// with the reason, where there is something else in the index's place.
std::optional<std::set<std::string>> FilesInIndex(const std::string& folder, std::string& reason) {
    const std::string path = IndexPath(folder);
    std::set<std::string> files;
    if (!IsFreeOrPlain(path, reason)) return std::nullopt;
    if (TypeAt(path) == std::filesystem::file_type::not_found) return files;
    std::string why;
    const std::optional<std::string> text = ReadFile(path, why);
    const std::optional<ArchiveIndex> index = text ? ReadIndex(*text, why) : std::nullopt;
    if (!index) {
        reason = "'" + path + "' is there already and is no index of an archive";
        return std::nullopt;
    }
    for (const ArchiveIndex::Entry& entry : index->sheets) files.insert(SmallLetters(entry.file));
    return files;
}

// Whether nothing that belongs to somebody else would be written over.
bool MayWrite(const std::string& folder, const ArchiveIndex& index, std::string& reason) {
    const std::optional<std::set<std::string>> ours = FilesInIndex(folder, reason);
    if (!ours || !IsFreeOrPlain(IndexPath(folder) + ".new", reason)) return false;
    for (const ArchiveIndex::Entry& entry : index.sheets) {
        const std::string path = folder + "/" + entry.file;
        if (!IsFreeOrPlain(path, reason)) return false;
        if (ours->contains(SmallLetters(entry.file)) ||
            TypeAt(path) == std::filesystem::file_type::not_found) {
            continue;
        }
        reason = "'" + path + "' is there already, and no " + std::string(archiveIndexFile) +
                 " names it";
        return false;
    }
    return true;
}

ArchiveIndex IndexOf(const ArchiveParts& parts, ExchangeForm form) {
    ArchiveIndex index;
    index.isRaw = form == ExchangeForm::raw;
    index.preamble = Utf8FromBytes(parts.preamble);
    index.rest = Utf8FromBytes(parts.rest);
    SheetFileNames files;
    for (const Sheet& sheet : parts.sheets) {
        const bool isUnusual = NameProblem(sheet.name, ExchangeForm::raw) ||
                               StorageProblem("", sheet.text, ExchangeForm::raw);
        index.sheets.push_back({files.NameFor(sheet.name), Utf8FromBytes(sheet.name), isUnusual});
    }
    return index;
}

// What a folder is read with.
struct FolderReading {
    const std::string& folder;
    ExchangeForm form;
    bool force;
    std::string& reason;

    bool Fail(std::string why) const {
        reason = std::move(why);
        return false;
    }
};

bool ReadPlainFile(const FolderReading& reading, const std::string& file, std::string& bytes) {
    const std::string path = reading.folder + "/" + file;
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    // Reading a pipe might never end.
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return reading.Fail("'" + path + "' is no plain file");
    }
    std::string why;
    std::optional<std::string> read = ReadFile(path, why);
    if (!read) return reading.Fail("'" + path + "' can't be read: " + why);
    bytes = std::move(*read);
    return true;
}

// Fails where there is a problem with what a file of the folder holds.
bool Accept(const FolderReading& reading, std::string_view file,
            const std::optional<std::string>& problem) {
    if (!problem || reading.force) return true;
    return reading.Fail("'" + reading.folder + "/" + std::string(file) + "': " + *problem);
}

bool ReadIndexText(const FolderReading& reading, std::string_view what, std::string_view given,
                   std::string& stored) {
    stored = StoredBytes(given, ExchangeForm::utf8);
    return Accept(reading, archiveIndexFile, OutsideProblem(what, given, ExchangeForm::utf8));
}

bool ReadFolderSheet(const FolderReading& reading, const ArchiveIndex::Entry& entry, Sheet& sheet) {
    constexpr std::string_view what = "the text";
    std::string given;
    if (!Accept(reading, archiveIndexFile,
                entry.isUnusual ? OutsideProblem("a name", entry.name, ExchangeForm::utf8)
                                : NameProblem(entry.name, ExchangeForm::utf8)) ||
        !ReadPlainFile(reading, entry.file, given) ||
        !Accept(reading, entry.file,
                entry.isUnusual ? OutsideProblem(what, given, reading.form)
                                : StorageProblem(what, given, reading.form))) {
        return false;
    }
    sheet = {StoredBytes(entry.name, ExchangeForm::utf8), StoredBytes(given, reading.form)};
    return true;
}

bool ReadFolderIndex(const FolderReading& reading, ArchiveIndex& index) {
    std::error_code error;
    if (!std::filesystem::is_directory(reading.folder, error)) {
        return reading.Fail("there is no folder '" + reading.folder + "'");
    }
    std::string text;
    if (!ReadPlainFile(reading, std::string(archiveIndexFile), text)) return false;
    const std::string path = IndexPath(reading.folder);
    std::string why;
    std::optional<ArchiveIndex> read = ReadIndex(text, why);
    if (!read) return reading.Fail("'" + path + "' " + why);
    index = std::move(*read);
    if (index.isRaw == (reading.form == ExchangeForm::raw)) return true;
    return reading.Fail("'" + path + "' says that its texts are " +
                        (index.isRaw ? "raw bytes and not UTF-8" : "UTF-8 and not raw bytes"));
}

}  // namespace

std::string SheetFileNames::NameFor(std::string_view sheetName) {
    const std::string stem = SafeStem(sheetName);
    int& number = uses[SmallLetters(stem)];
    std::string name;
    do {
        ++number;
        name = number > 1 ? stem + "_" + std::to_string(number) : stem;
    } while (!taken.insert(SmallLetters(name)).second);
    return name + ".txt";
}

bool ExportArchive(const ArchiveParts& parts, const std::string& folder, ExchangeForm form,
                   std::string& reason) {
    const ArchiveIndex index = IndexOf(parts, form);
    if (!MakeFolder(folder, reason)) {
        reason = "the folder '" + folder + "' can't be made: " + reason;
        return false;
    }
    if (!MayWrite(folder, index, reason)) return false;
    // The index goes first: with it a folder whose writing failed can be written again.
    if (!WriteIndex(folder, index, reason)) return false;
    for (std::size_t at = 0; at < parts.sheets.size(); ++at) {
        const std::string path = folder + "/" + index.sheets[at].file;
        if (!WriteWhole(path, ShownBytes(parts.sheets[at].text, form), reason)) return false;
    }
    return true;
}

std::optional<ArchiveParts> ImportFolder(const std::string& folder, ExchangeForm form, bool force,
                                         std::string& reason) {
    const FolderReading reading{folder, form, force, reason};
    ArchiveIndex index;
    ArchiveParts parts;
    if (!ReadFolderIndex(reading, index) ||
        !ReadIndexText(reading, "the preamble", index.preamble, parts.preamble) ||
        !ReadIndexText(reading, "the rest", index.rest, parts.rest)) {
        return std::nullopt;
    }
    std::size_t length = parts.preamble.size() + parts.rest.size();
    for (const ArchiveIndex::Entry& entry : index.sheets) {
        Sheet sheet;
        if (!ReadFolderSheet(reading, entry, sheet)) return std::nullopt;
        length += sheet.name.size() + sheet.text.size() + 2;
        if (length > static_cast<std::size_t>(TextBuffer::largestLength)) {
            reason = "'" + folder + "' holds more than an archive can";
            return std::nullopt;
        }
        parts.sheets.push_back(std::move(sheet));
    }
    // The index may have been changed by hand, or a sheet that is marked in it.
    if (!force && CutArchive(JoinArchive(parts)) != parts) {
        reason = "'" + folder + "' would not be read back as it is: there are marks or a NUL " +
                 "where they end a text";
        return std::nullopt;
    }
    return parts;
}

}  // namespace orvane
