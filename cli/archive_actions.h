#pragma once

#include <optional>
#include <string>

#include "storage/stored_text.h"

// What the commands for archives do. Each gives the exit status. All checks come before the first
// byte is written, and an archive that would not change is not written.

namespace orvane::cli {

// The words of a command; those that it needs are there.
struct ArchiveOptions {
    std::optional<std::string> archive;
    std::optional<std::string> name;
    std::optional<std::string> newName;
    std::optional<std::string> file;  // the standard input where there is none or it is "-"
    std::optional<std::string> folder;
    bool raw = false;
    bool force = false;

    ExchangeForm Form() const { return raw ? ExchangeForm::raw : ExchangeForm::utf8; }
};

int ListSheets(const ArchiveOptions& options);
int ShowSheet(const ArchiveOptions& options);
int AddSheet(const ArchiveOptions& options);
int ReplaceSheet(const ArchiveOptions& options);
int RenameStoredSheet(const ArchiveOptions& options);
int DeleteStoredSheet(const ArchiveOptions& options);
int MoveUp(const ArchiveOptions& options);
int MoveDown(const ArchiveOptions& options);
int ExportSheets(const ArchiveOptions& options);
int ImportSheets(const ArchiveOptions& options);

}  // namespace orvane::cli
