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

// Tells what a failed write has left of the archive.
bool FailToWrite(const std::string& path, std::string_view left, int& status) {
    Fail("the archive " + Quoted(path) + " can't be written; " + std::string(left), exitUsage,
         status);
    return false;
}

}  // namespace

bool ReadArchive(const std::string& path, TextBuffer& archive, int& status) {
    const FileTurn turn(path, FileTurn::Use::read);
    return ReadArchiveInTurn(path, archive, status);
}

bool ReadArchiveInTurn(const std::string& path, TextBuffer& archive, int& status) {
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
    if (!file.Load(path)) {
        Fail("the archive " + Quoted(path) + " can't be opened", exitUsage, status);
        return false;
    }
    const std::string before(file.buffer.View());
    file.buffer = std::move(archive);
    bool isWritten = file.WriteBack();
    if (!isWritten) {
        // The old bytes have their place on the disk still, also where it is full.
        file.buffer.Assign(before);
        file.WriteBack();
    }
    // Closed in any case: or it would be written once more.
    isWritten = file.Close() && isWritten;
    if (isWritten) return true;
    std::string reason;
    return FailToWrite(path,
                       ReadFile(path, reason) == before
                           ? "it is as it was"
                           : "what is in it now may be partly new and partly old",
                       status);
}

bool MakeArchive(const std::string& path, TextBuffer archive, int& status) {
    ArchiveFile file;
    if (!file.Create(path)) {
        Fail("the archive " + Quoted(path) + " can't be made", exitUsage, status);
        return false;
    }
    file.buffer = std::move(archive);
    bool isWritten = file.WriteBack();
    // Closed in any case: or it would be written once more.
    isWritten = file.Close() && isWritten;
    if (isWritten) return true;
    // Half an archive would be taken for a whole one the next time.
    std::error_code error;
    const std::filesystem::path made = std::filesystem::canonical(path, error);
    const bool isGone = !error && std::filesystem::remove(made, error);
    return FailToWrite(path, isGone ? "there is none now" : "what is in it now is not all", status);
}

}  // namespace orvane::cli
