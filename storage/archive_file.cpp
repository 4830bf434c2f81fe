#include "storage/archive_file.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr std::size_t readPiece = std::size_t{1} << 20;
constexpr std::size_t writePiece = 1024;

bool IsTooLong(std::uint64_t size) {
    return size > static_cast<std::uint64_t>(TextBuffer::largestLength);
}

bool IsTooLongFile(const std::string& path) {
    std::optional<OpenedFile> file = OpenedFile::Open(path, FileUse::readWriteOrRead);
    return file && IsTooLong(file->Size().value_or(0));
}

}  // namespace

ArchiveFile::~ArchiveFile() { GiveUp(); }

bool ArchiveFile::Load(const std::string& path) {
    if (IsOpen() && path == openPath) return true;
    GiveUp();
    file = OpenedFile::Open(path, FileUse::readWriteOrRead);
    if (!file) return false;
    if (!ReadWhole()) {
        // Closed at once: what could be read must never be written over the rest.
        Close();
        buffer.Assign({});
        return false;
    }
    openPath = path;
    return true;
}

bool ArchiveFile::Create(const std::string& path) {
    GiveUp();
    file = OpenedFile::Open(path, FileUse::createAnew);
    if (!file) return false;
    openPath = path;
    buffer.Assign(archivePreamble);
    return true;
}

bool ArchiveFile::WriteBack() {
    if (!file) return false;
    const std::string_view bytes = buffer.View();
    for (std::size_t at = 0; at < bytes.size(); at += writePiece) {
        const std::string_view piece = bytes.substr(at, writePiece);
        // Kept: the end of the file is not set after a short piece, so the old tail survives.
        if (file->Write(at, piece) < piece.size()) return false;
    }
    return file->SetEnd(bytes.size());
}

bool ArchiveFile::Close() {
    if (!file) return true;
    // The end of the file is set where it is, whatever was written last.
    const std::optional<std::uint64_t> end = file->Size();
    if (end) file->SetEnd(*end);
    const bool isWhole = file->Close();
    file.reset();
    openPath.clear();
    return isWhole;
}

// Takes the file as long as it is now. One that gets shorter meanwhile is not read.
bool ArchiveFile::ReadWhole() {
    const std::optional<std::uint64_t> size = file->Size();
    if (!size || IsTooLong(*size)) return false;
    const auto length = static_cast<std::size_t>(*size);
    buffer.Resize(static_cast<std::int32_t>(length));
    std::string piece;
    for (std::size_t at = 0; at < length; at += piece.size()) {
        const std::size_t count = std::min(readPiece, length - at);
        if (!file->Read(at, count, piece) || piece.size() < count) return false;
        piece.copy(buffer.data.get() + at, count);
    }
    return true;
}

void ArchiveFile::GiveUp() {
    WriteBack();
    Close();
    buffer.Assign({});
}

void PrepareArchive(const std::string& path) {
    ArchiveFile archive;
    // A second try, since another program may hold the file for a moment.
    if (!archive.Load(path) && !archive.Load(path)) {
        // Only what can't be read is made anew: this one is somebody's sheets.
        if (IsTooLongFile(path)) return;
        archive.Create(path);
    }
    archive.WriteBack();
    archive.Close();
}

}  // namespace orvane
