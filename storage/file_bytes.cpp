#include "storage/file_bytes.h"

#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>

namespace orvane {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string SystemReason(int error) { return std::generic_category().message(error); }

}  // namespace

std::optional<std::string> ReadFile(const std::string& path, std::string& reason) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        reason = SystemReason(errno);
        return std::nullopt;
    }
    return ReadStream(file.get(), reason);
}

std::optional<std::string> ReadStream(std::FILE* stream, std::string& reason) {
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
        if (count == chunk) continue;
        if (std::ferror(stream) == 0) return bytes;
        reason = SystemReason(errno);
        return std::nullopt;
    }
}

bool WriteFile(const std::string& path, const NextPiece& nextPiece, std::string& reason) {
    std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "wb"));
    bool written = file != nullptr;
    for (std::string piece; written && !(piece = nextPiece()).empty();) {
        written = std::fwrite(piece.data(), 1, piece.size(), file.get()) == piece.size();
    }
    // Closing writes what is still on its way.
    if (written && std::fclose(file.release()) == 0) return true;
    reason = SystemReason(errno);
    return false;
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
