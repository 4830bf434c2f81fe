#include "storage/file_bytes.h"

#ifdef _WIN32
#include <io.h>
#else
#include <sys/file.h>
#include <unistd.h>
#endif

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <memory>
#include <system_error>

namespace orvane {

namespace {

std::string SystemReason(int error) { return std::generic_category().message(error); }

// The steps in which the systems differ: offsets beyond 2 GiB, the end of an open file and turns.
#ifdef _WIN32
bool SeekTo(std::FILE* file, std::uint64_t offset, int origin) {
    return _fseeki64(file, static_cast<long long>(offset), origin) == 0;
}
std::int64_t PositionIn(std::FILE* file) { return _ftelli64(file); }
bool CutAt(std::FILE* file, std::uint64_t offset) {
    return _chsize_s(_fileno(file), static_cast<long long>(offset)) == 0;
}
// Here a lock would keep this program's own second handle out as well.
void TakeTurn(std::FILE*, bool) {}
#else
bool SeekTo(std::FILE* file, std::uint64_t offset, int origin) {
    return fseeko(file, static_cast<off_t>(offset), origin) == 0;
}
std::int64_t PositionIn(std::FILE* file) { return ftello(file); }
bool CutAt(std::FILE* file, std::uint64_t offset) {
    int result = 0;
    do {
        result = ftruncate(fileno(file), static_cast<off_t>(offset));
    } while (result != 0 && errno == EINTR);
    return result == 0;
}
void TakeTurn(std::FILE* file, bool isShared) {
    while (flock(fileno(file), isShared ? LOCK_SH : LOCK_EX) != 0 && errno == EINTR) {
    }
}
#endif

// Opening a folder, a pipe or a device may succeed, and could then hang a reader.
bool IsPlainOrMissing(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    return !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
}

constexpr std::uint64_t largestOffset = std::numeric_limits<std::int64_t>::max();

}  // namespace

std::optional<std::string> ReadFile(const std::string& path, std::string& reason,
                                    std::size_t enough) {
    const OwnedFile file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        reason = SystemReason(errno);
        return std::nullopt;
    }
    return ReadStream(file.get(), reason, enough);
}

std::optional<std::string> ReadStream(std::FILE* stream, std::string& reason, std::size_t enough) {
    constexpr std::size_t chunk = std::size_t{1} << 16;
    std::string bytes;
    while (true) {
        const std::size_t before = bytes.size();
        bytes.resize(before + chunk);
        const std::size_t count = std::fread(bytes.data() + before, 1, chunk, stream);
        bytes.resize(before + count);
        if (bytes.size() > largestFile) {
            reason = "it is larger than 1 GiB";
            return std::nullopt;
        }
        if (count == chunk && bytes.size() <= enough) continue;
        if (std::ferror(stream) == 0) return bytes;
        reason = SystemReason(errno);
        return std::nullopt;
    }
}

bool WriteFile(const std::string& path, const NextPiece& nextPiece, std::string& reason) {
    OwnedFile file(std::fopen(path.c_str(), "wb"));
    bool written = file != nullptr;
    for (std::string piece; written && !(piece = nextPiece()).empty();) {
        written = std::fwrite(piece.data(), 1, piece.size(), file.get()) == piece.size();
    }
    // Closing writes what is still on its way.
    if (written && std::fclose(file.release()) == 0) return true;
    reason = SystemReason(errno);
    return false;
}

std::optional<OpenedFile> OpenedFile::Open(const std::string& path, FileUse use) {
    if (!IsPlainOrMissing(path)) return std::nullopt;
    std::FILE* file = std::fopen(path.c_str(), use == FileUse::createAnew ? "w+b" : "r+b");
    if (file == nullptr && use == FileUse::readWriteOrRead) file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) return std::nullopt;
    std::setvbuf(file, nullptr, _IONBF, 0);
    return OpenedFile(file);
}

std::optional<std::uint64_t> OpenedFile::Size() {
    if (!SeekTo(file.get(), 0, SEEK_END)) return std::nullopt;
    const std::int64_t size = PositionIn(file.get());
    if (size < 0) return std::nullopt;
    return static_cast<std::uint64_t>(size);
}

bool OpenedFile::Read(std::uint64_t offset, std::size_t count, std::string& bytes) {
    bytes.clear();
    const std::optional<std::uint64_t> size = Size();
    if (!size) return false;
    if (offset >= *size || count == 0) return true;
    bytes.resize(std::min<std::uint64_t>(count, *size - offset));
    if (!SeekTo(file.get(), offset, SEEK_SET)) {
        bytes.clear();
        return false;
    }
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    const bool isRead = std::ferror(file.get()) == 0;
    std::clearerr(file.get());
    return isRead;
}

std::size_t OpenedFile::Write(std::uint64_t offset, std::string_view bytes) {
    if (offset > largestOffset) return 0;
    std::size_t written = 0;
    bool goesOn = true;
    while (goesOn && written < bytes.size() && SeekTo(file.get(), offset + written, SEEK_SET)) {
        const std::size_t left = bytes.size() - written;
        errno = 0;
        const std::size_t count = std::fwrite(bytes.data() + written, 1, left, file.get());
        // A signal that came in between is no reason to leave a file half written.
        goesOn = count < left && errno == EINTR;
        written += count;
        std::clearerr(file.get());
    }
    return written;
}

bool OpenedFile::SetEnd(std::uint64_t offset) {
    return offset <= largestOffset && CutAt(file.get(), offset);
}

bool OpenedFile::Close() { return std::fclose(file.release()) == 0; }

FileTurn::FileTurn(const std::string& path, Use use) {
    if (!IsPlainOrMissing(path)) return;
    // Some systems give a turn to write only where the file is open for writing.
    if (use == Use::make) file.reset(std::fopen(path.c_str(), "ab"));
    if (use == Use::write) file.reset(std::fopen(path.c_str(), "r+b"));
    if (!file) file.reset(std::fopen(path.c_str(), "rb"));
    if (file) TakeTurn(file.get(), use == Use::read);
}

bool MakeFolder(const std::string& path, std::string& reason) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (!error) return true;
    reason = error.message();
    return false;
}

bool WriteStream(std::FILE* stream, std::string_view bytes, std::string& reason) {
    const std::size_t count = std::fwrite(bytes.data(), 1, bytes.size(), stream);
    if (count == bytes.size() && std::fflush(stream) == 0) return true;
    reason = SystemReason(errno);
    return false;
}

}  // namespace orvane
