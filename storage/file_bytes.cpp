#include "storage/file_bytes.h"

#include <cerrno>
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

bool WriteStream(std::FILE* stream, std::string_view bytes, std::string& reason) {
    const std::size_t count = std::fwrite(bytes.data(), 1, bytes.size(), stream);
    if (count == bytes.size() && std::fflush(stream) == 0) return true;
    reason = SystemReason(errno);
    return false;
}

}  // namespace orvane
