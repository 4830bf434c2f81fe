#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "fuzz/fuzzed_bytes.h"
#include "storage/file_bytes.h"

namespace orvane::fuzz {

// A file that is never on a disk: a run of a target works on it, many thousand times a second.
class MemoryFile {
public:
    MemoryFile() : descriptor(memfd_create("fuzz", 0)) { Require(descriptor >= 0, "a file"); }
    ~MemoryFile() { close(descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor); }
    void Put(std::string_view bytes) const {
        const bool isCut = ftruncate(descriptor, 0) == 0;
        const auto written = pwrite(descriptor, bytes.data(), bytes.size(), 0);
        Require(isCut && written == static_cast<ssize_t>(bytes.size()), "the file takes its bytes");
    }
    std::string Bytes() const {
        std::string reason;
        const std::optional<std::string> bytes = ReadFile(Path(), reason);
        Require(bytes.has_value(), "the file can be read");
        return *bytes;
    }

private:
    int descriptor;
};

}  // namespace orvane::fuzz
