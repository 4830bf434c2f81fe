#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

// The one place that opens, reads and writes files. Everything is bytes.

namespace orvane {

// Larger sheets are refused: positions in a text are 32-bit numbers.
inline constexpr std::size_t largestFile = std::size_t{1} << 30;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, CloseFile>;

// The whole file. Nothing, with the reason, when it can't be read or is larger than `largestFile`.
// Of a file with more bytes than are `enough` only its start, which has more of them too.
std::optional<std::string> ReadFile(const std::string& path, std::string& reason,
                                    std::size_t enough = largestFile);

// The same from an open stream, such as the standard input, which may have no end.
std::optional<std::string> ReadStream(std::FILE* stream, std::string& reason,
                                      std::size_t enough = largestFile);

// Gives the next piece of a file that is being written; an empty piece ends it.
using NextPiece = std::function<std::string()>;

// Writes a file anew, piece by piece, so that a large one is never in memory as a whole. False,
// with the reason, when it can't be written; what got there stays.
bool WriteFile(const std::string& path, const NextPiece& nextPiece, std::string& reason);

// How a file that stays open is opened.
enum class FileUse {
    readWrite,        // an existing file; fails where it may not be written
    readWriteOrRead,  // the same, but only for reading where it may not be written
    createAnew,       // made where it is missing, emptied where it is there
};

// A file that stays open and is read and changed in place. Others may read and write it at the
// same time. Every write goes to the system at once, so what stands on disk after a failure is
// what was written up to it.
class OpenedFile {
public:
    // Nothing where it can't be opened so, or where `path` is no plain file.
    static std::optional<OpenedFile> Open(const std::string& path, FileUse use);

    // The number of bytes in it now; nothing where the system does not tell.
    std::optional<std::uint64_t> Size();
    // Replaces `bytes` by up to `count` bytes from `offset`, fewer only at the end of the file.
    // False when reading failed; `bytes` then holds what could be read.
    bool Read(std::uint64_t offset, std::size_t count, std::string& bytes);
    // Writes the bytes at `offset` and gives how many got there.
    std::size_t Write(std::uint64_t offset, std::string_view bytes);
    // Cuts or extends the file.
    bool SetEnd(std::uint64_t offset);
    // Closes it; nothing else may be done with it then. False where the system tells only now that
    // not all of what was written got there, as it may for a disk that is far away.
    bool Close();

private:
    explicit OpenedFile(std::FILE* opened) : file(opened) {}

    OwnedFile file;
};

// A turn at a file among the programs that ask for one: waits until those that write have given up
// theirs and, to write, those that read too. It ends with the object. A program that asks for no
// turn is not held up, and where the system can give none everybody goes ahead.
class FileTurn {
public:
    enum class Use {
        read,
        write,
        make,  // to write a file that is made empty where it is missing
    };
    FileTurn(const std::string& path, Use use);

private:
    OwnedFile file;
};

// Makes a folder, with those above it, if it is not there. False, with the reason, if it can't be
// made.
bool MakeFolder(const std::string& path, std::string& reason);

// Writes all bytes to an open stream and hands them on to the system. False, with the reason, when
// they did not all get there.
bool WriteStream(std::FILE* stream, std::string_view bytes, std::string& reason);

}  // namespace orvane
