#include "cli/archive_access.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/cli_options.h"
#include "storage/archive_file.h"
#include "storage/file_bytes.h"

namespace orvane::cli {

namespace {

// Tells what happened and gives the status, in place of a value.
std::nullopt_t Fail(const std::string& message, int failure, int& status) {
    PrintError(message);
    status = failure;
    return std::nullopt;
}

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

bool StoreIn(ArchiveFile& file, const std::string& path, TextBuffer archive, int& status) {
    file.buffer = std::move(archive);
    const bool isWritten = file.WriteBack();
    file.Close();  // or it would be written once more
    if (!isWritten) Fail("the archive " + Quoted(path) + " can't be written", exitUsage, status);
    return isWritten;
}

}  // namespace

bool ReadArchive(const std::string& path, TextBuffer& archive, int& status) {
    std::error_code error;
    if (std::filesystem::status(path, error).type() == std::filesystem::file_type::not_found) {
        Fail("there is no archive " + Quoted(path), exitRefused, status);
        return false;
    }
    std::string reason;
    const std::optional<std::string> bytes = ReadFile(path, reason);
    if (!bytes) {
        Fail("the archive " + Quoted(path) + " can't be read: " + reason, exitUsage, status);
        return false;
    }
    archive.Assign(*bytes);
    return true;
}

std::optional<std::string> FindName(const TextBuffer& archive, const std::string& path,
                                    std::string_view given, ExchangeForm form, int& status) {
    std::optional<std::string> name = SearchedName(given, form);
    if (name) {
        const std::vector<std::string> names = ListNames(archive);
        if (std::find(names.begin(), names.end(), *name) != names.end()) return name;
    }
    return Fail("there is no sheet " + Quoted(given) + " in " + Quoted(path), exitRefused, status);
}

std::optional<std::string> ReadStoredSheet(const std::string& path, std::string_view name,
                                           ExchangeForm form, int& status) {
    TextBuffer archive;
    if (!ReadArchive(path, archive, status)) return std::nullopt;
    const std::optional<std::string> stored = FindName(archive, path, name, form, status);
    if (!stored) return std::nullopt;
    return ReadSheetText(archive, *stored);
}

bool FitsArchive(const std::string& path, std::size_t length, int& status) {
    if (length <= static_cast<std::size_t>(TextBuffer::largestLength)) return true;
    Fail("the archive " + Quoted(path) + " would be larger than 1 GiB", exitRefused, status);
    return false;
}

bool WriteArchive(const std::string& path, TextBuffer archive, int& status) {
    ArchiveFile file;
    if (file.Load(path)) return StoreIn(file, path, std::move(archive), status);
    Fail("the archive " + Quoted(path) + " can't be opened", exitUsage, status);
    return false;
}

bool MakeArchive(const std::string& path, TextBuffer archive, int& status) {
    ArchiveFile file;
    if (file.Create(path)) return StoreIn(file, path, std::move(archive), status);
    Fail("the archive " + Quoted(path) + " can't be made", exitUsage, status);
    return false;
}

}  // namespace orvane::cli
