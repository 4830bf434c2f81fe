#include "cli/archive_actions.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "cli/archive_access.h"
#include "cli/cli_options.h"
#include "cli/sheet_run.h"
#include "storage/archive_exchange.h"
#include "storage/file_bytes.h"

namespace orvane::cli {

namespace {

int Refuse(const std::string& message) {
    PrintError(message);
    return exitRefused;
}

// Refuses what can't be stored as it is, unless it is stored all the same.
bool MayStore(const ArchiveOptions& options, const std::optional<std::string>& problem) {
    if (options.force || !problem) return true;
    PrintError(*problem + "; with --force it is stored all the same");
    return false;
}

// Changes the archive in memory; where that gives exitFine, and it has changed, it is written back.
// Commands that are run at once do this one behind the other, so that none undoes another one's
// work and no archive is mixed from two.
using Edit = std::function<int(TextBuffer&)>;
int EditArchive(const ArchiveOptions& options, const Edit& edit) {
    int status = exitFine;
    TextBuffer archive;
    const FileTurn turn(*options.archive, FileTurn::Use::write);
    if (!ReadArchiveInTurn(*options.archive, archive, status)) return status;
    const std::string before(archive.View());
    status = edit(archive);
    if (status == exitFine && archive.View() != before) {
        WriteArchive(*options.archive, std::move(archive), status);
    }
    return status;
}

// The same for a sheet that has to be there; `edit` gets its stored name as well.
using SheetEdit = std::function<int(TextBuffer&, const std::string&)>;
int EditSheet(const ArchiveOptions& options, const SheetEdit& edit) {
    return EditArchive(options, [&](TextBuffer& archive) {
        int status = exitFine;
        const std::optional<std::string> name =
            FindName(archive, *options.archive, *options.name, options.Form(), status);
        return name ? edit(archive, *name) : status;
    });
}

// The bytes to store of the text that is read.
std::optional<std::string> ReadText(const ArchiveOptions& options, int& status) {
    const std::optional<std::string> given = ReadInput(options.file.value_or("-"));
    if (!given) {
        status = exitUsage;
        return std::nullopt;
    }
    if (!MayStore(options, StorageProblem("the text", *given, options.Form()))) {
        status = exitRefused;
        return std::nullopt;
    }
    return StoredBytes(*given, options.Form());
}

bool HasSheet(const TextBuffer& archive, std::string_view name) {
    const std::vector<std::string> names = ListNames(archive);
    return std::find(names.begin(), names.end(), name) != names.end();
}

// --force does not help against this: the second of two sheets of one name is never found.
int RefuseSecond(const ArchiveOptions& options, const std::string& name) {
    return Refuse("there is a sheet '" + name + "' in '" + *options.archive + "' already");
}

// Nor against this: where another name ends with this one, searches find that one.
bool IsHidden(const ArchiveOptions& options, const ArchiveParts& parts,
              const std::vector<ArchiveParts::Sheet>& wanted) {
    const std::optional<HiddenSheet> hidden = FindHidden(parts, wanted);
    if (!hidden) return false;
    PrintError("a sheet '" + ShownBytes(hidden->name, options.Form()) + "' in '" +
               *options.archive + "' would not be found behind the sheet '" +
               ShownBytes(hidden->behind, options.Form()) + "'; rename that one first");
    return true;
}

// Moves the sheet unless it is the one at that end of the list.
int MoveSheet(const ArchiveOptions& options, bool up,
              bool (*move)(TextBuffer& archive, std::string_view name)) {
    return EditSheet(options, [&](TextBuffer& archive, const std::string& name) {
        const std::vector<std::string> names = ListNames(archive);
        const auto place = std::find(names.begin(), names.end(), name);
        const auto end = up ? names.begin() : names.end() - 1;
        if (place != end) move(archive, name);
        return static_cast<int>(exitFine);
    });
}

std::string CountText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " sheet" : " sheets");
}

// A name that the folder holds twice would replace its own text.
std::optional<std::string> SecondName(const ArchiveParts& parts) {
    std::set<std::string> names;
    for (const ArchiveParts::Sheet& sheet : parts.sheets) {
        if (!names.insert(sheet.name).second) return sheet.name;
    }
    return std::nullopt;
}

int MakeFromFolder(const ArchiveOptions& options, const ArchiveParts& parts) {
    int status = exitFine;
    TextBuffer archive;
    archive.Assign(JoinArchive(parts));
    if (!MakeArchive(*options.archive, std::move(archive), status)) return status;
    return PrintOutput(*options.archive + ": " + CountText(parts.sheets.size()) + "\n", exitFine);
}

int MergeFolder(const ArchiveOptions& options, const ArchiveParts& parts) {
    if (const std::optional<std::string> name = SecondName(parts)) {
        return Refuse("'" + *options.folder + "' holds the name '" +
                      ShownBytes(*name, options.Form()) + "' twice, and '" + *options.archive +
                      "' is there already");
    }
    MergeCount count;
    int status = EditArchive(options, [&](TextBuffer& archive) {
        ArchiveParts merged = CutArchive(archive.View());
        count = MergeSheets(merged, parts.sheets);
        if (IsHidden(options, merged, parts.sheets)) return static_cast<int>(exitRefused);
        const std::string bytes = JoinArchive(merged);
        int fits = exitFine;
        if (FitsArchive(*options.archive, bytes.size(), fits)) archive.Assign(bytes);
        return fits;
    });
    if (status != exitFine) return status;
    return PrintOutput(*options.archive + ": " + CountText(count.added) + " added, " +
                           std::to_string(count.replaced) + " replaced\n",
                       exitFine);
}

}  // namespace

int ListSheets(const ArchiveOptions& options) {
    int status = exitFine;
    TextBuffer archive;
    if (!ReadArchive(*options.archive, archive, status)) return status;
    std::string output;
    for (const std::string& name : ListNames(archive)) {
        output += ShownBytes(name, options.Form()) + "\n";
    }
    return PrintOutput(output, exitFine);
}

int ShowSheet(const ArchiveOptions& options) {
    int status = exitFine;
    const std::optional<std::string> text =
        ReadStoredSheet(*options.archive, *options.name, options.Form(), status);
    return text ? PrintOutput(ShownBytes(*text, options.Form()), exitFine) : status;
}

int AddSheet(const ArchiveOptions& options) {
    if (!MayStore(options, NameProblem(*options.name, options.Form()))) return exitRefused;
    int status = exitFine;
    const std::optional<std::string> text = ReadText(options, status);
    if (!text) return status;
    return EditArchive(options, [&](TextBuffer& archive) {
        const std::string name = StoredBytes(*options.name, options.Form());
        if (HasSheet(archive, name)) return RefuseSecond(options, *options.name);
        int fits = exitFine;
        const std::size_t length = archive.View().size() + name.size() + text->size() + 2;
        if (!FitsArchive(*options.archive, length, fits)) return fits;
        // Behind a NUL, or a name mark without its text, the sheet would not be found.
        ArchiveParts parts = CutArchive(archive.View());
        parts.sheets.push_back({name, *text});
        if (IsHidden(options, parts, {parts.sheets.back()})) return static_cast<int>(exitRefused);
        archive.Assign(JoinArchive(parts));
        return fits;
    });
}

int ReplaceSheet(const ArchiveOptions& options) {
    int status = exitFine;
    const std::optional<std::string> text = ReadText(options, status);
    if (!text) return status;
    return EditSheet(options, [&](TextBuffer& archive, const std::string& name) {
        int fits = exitFine;
        const std::size_t oldSize = ReadSheetText(archive, name).size();
        const std::size_t length = archive.View().size() - oldSize + text->size();
        if (FitsArchive(*options.archive, length, fits)) ReplaceSheetText(archive, name, *text);
        return fits;
    });
}

int RenameStoredSheet(const ArchiveOptions& options) {
    if (!MayStore(options, NameProblem(*options.newName, options.Form()))) return exitRefused;
    return EditSheet(options, [&](TextBuffer& archive, const std::string& name) {
        const std::string newName = StoredBytes(*options.newName, options.Form());
        if (HasSheet(archive, newName)) return RefuseSecond(options, *options.newName);
        int fits = exitFine;
        const std::size_t length = archive.View().size() - name.size() + newName.size();
        if (!FitsArchive(*options.archive, length, fits)) return fits;
        RenameSheet(archive, name, newName);
        const bool isHidden = IsHidden(options, CutArchive(archive.View()), {{newName, {}}});
        return static_cast<int>(isHidden ? exitRefused : exitFine);
    });
}

int DeleteStoredSheet(const ArchiveOptions& options) {
    return EditSheet(options, [](TextBuffer& archive, const std::string& name) {
        DeleteSheet(archive, name);
        return static_cast<int>(exitFine);
    });
}

int MoveUp(const ArchiveOptions& options) { return MoveSheet(options, true, MoveSheetUp); }

int MoveDown(const ArchiveOptions& options) { return MoveSheet(options, false, MoveSheetDown); }

int ExportSheets(const ArchiveOptions& options) {
    int status = exitFine;
    TextBuffer archive;
    if (!ReadArchive(*options.archive, archive, status)) return status;
    const ArchiveParts parts = CutArchive(archive.View());
    std::string reason;
    if (!ExportArchive(parts, *options.folder, options.Form(), reason)) {
        PrintError(reason);
        return exitUsage;
    }
    return PrintOutput(*options.folder + ": " + CountText(parts.sheets.size()) + "\n", exitFine);
}

int ImportSheets(const ArchiveOptions& options) {
    std::string reason;
    const std::optional<ArchiveParts> parts =
        ImportFolder(*options.folder, options.Form(), options.force, reason);
    if (!parts) return Refuse(reason);
    std::error_code error;
    const bool isMissing = std::filesystem::status(*options.archive, error).type() ==
                           std::filesystem::file_type::not_found;
    if (isMissing) {
        const FileTurn turn(*options.archive, FileTurn::Use::make);
        // Another command may have made it while this one waited.
        const std::uintmax_t size = std::filesystem::file_size(*options.archive, error);
        if (error || size == 0) return MakeFromFolder(options, *parts);
    }
    return MergeFolder(options, *parts);
}

}  // namespace orvane::cli
