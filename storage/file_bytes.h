#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

// The one place that opens, reads and writes files. Everything is bytes.

namespace orvane {

// Larger sheets are refused: positions in a text are 32-bit numbers.
inline constexpr std::size_t largestFile = std::size_t{1} << 30;

// The whole file. Nothing, with the reason, when it can't be read or is larger than `largestFile`.
std::optional<std::string> ReadFile(const std::string& path, std::string& reason);

// The same from an open stream, such as the standard input.
std::optional<std::string> ReadStream(std::FILE* stream, std::string& reason);

// Gives the next piece of a file that is being written; an empty piece ends it.
using NextPiece = std::function<std::string()>;

// Writes a file anew, piece by piece, so that a large one is never in memory as a whole. False,
// with the reason, when it can't be written; what got there stays.
bool WriteFile(const std::string& path, const NextPiece& nextPiece, std::string& reason);

// Makes a folder, with those above it, if it is not there. False, with the reason, if it can't be
// made.
bool MakeFolder(const std::string& path, std::string& reason);

// Writes all bytes to an open stream and hands them on to the system. False, with the reason, when
// they did not all get there.
bool WriteStream(std::FILE* stream, std::string_view bytes, std::string& reason);

}  // namespace orvane
