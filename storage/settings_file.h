#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "storage/file_bytes.h"

// The settings: one small text file of sections and keys, edited in place. A write changes one
// line on disk and leaves every other byte as it is, so keys that this version does not know
// survive. Nothing is kept in memory between two operations. Where the file is not open every
// operation fails and leaves its results alone; nothing is ever reported.
//
//   {SECT_MAIN}        a section, up to its <LIST>
//   <KEY>              no reader looks at it
//   [KEY_SYSBITS]30    a key and its value, which goes to the end of the line
//   <LIST>             the end of the keys; new ones are put in front of it
//
// Two line ends are at work. A section line, and every line that is written, ends with a carriage
// return and a line feed; the lines of keys end with a carriage return, whatever follows it.

namespace orvane {

inline constexpr std::string_view mainSection = "SECT_MAIN";
inline constexpr std::string_view globalSection = "SECT_GLOBLE";

// Longer lines are passed over whole: neither a key nor the end of a section is found in them.
inline constexpr std::size_t longestSettingsLine = std::size_t{1} << 20;

// Offsets in the file: the first byte, and the one behind the last.
struct ByteRange {
    std::uint64_t from = 0;
    std::uint64_t to = 0;
};

inline constexpr std::size_t hexSlotCount = 32;
using HexSlots = std::array<std::uint32_t, hexSlotCount>;

// Where a window stood.
struct WindowPlacement {
    std::uint32_t showState = 0;
    std::uint32_t flags = 0;
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    std::int32_t minimisedX = 0;
    std::int32_t minimisedY = 0;
    std::int32_t maximisedX = 0;
    std::int32_t maximisedY = 0;

    bool operator==(const WindowPlacement&) const = default;
};

class SettingsFile {
public:
    // The file is opened by Open and closed with this object.
    explicit SettingsFile(std::string filePath);

    // Opens the file for reading and writing, only if it exists: settings are never created. One
    // larger than `largestFile` is none of ours and counts as missing.
    bool Open();
    // The same, and appends each of the two sections that is missing.
    bool OpenAndPrepare();
    bool IsOpen() const { return file.has_value(); }

    // Looks for the line "{name}", blanks behind it allowed, from the start of the file up to a NUL
    // byte. Sets the file position behind it; `range` gets the offset of its brace and the offset
    // behind the line. Where it is not found both stay as they were.
    bool FindSection(std::string_view name, ByteRange& range);
    // The line at the file position without its end, a carriage return with or without a line feed.
    // `range` gets the offsets in front of and behind it. False, with `range` left alone, at the
    // end of the file. A line longer than `longestSettingsLine` is passed over and given as an
    // empty one.
    bool ReadLine(std::string& line, ByteRange& range);

    // What stands behind the key; false, with `value` left alone, where there is no such key.
    // Numbers are read as far as they are numbers: a text is 0, and what does not fit loses its
    // high bits. A placement counts as missing unless it is complete.
    bool GetInt(std::string_view section, std::string_view key, std::int32_t& value);
    bool GetUnsigned(std::string_view section, std::string_view key, std::uint32_t& value);
    bool GetText(std::string_view section, std::string_view key, std::string& value);
    // Sets all slots to the defaults first, where the file is open, and then those that are stored.
    bool GetHexBlock(std::string_view section, std::string_view key, HexSlots& slots,
                     const HexSlots& defaults);
    bool GetPlacement(std::string_view section, std::string_view key, WindowPlacement& placement);

    // Replaces the key's line, or adds one in front of the section's end. False where the section
    // is missing, or the key is and it shall not be created. The other two do create it.
    bool SetValue(std::string_view section, std::string_view key, std::string_view text,
                  bool createIfMissing);
    bool SetHexBlock(std::string_view section, std::string_view key, const HexSlots& slots);
    bool SetPlacement(std::string_view section, std::string_view key,
                      const WindowPlacement& placement);

    // Replaces bytes `from` to `to` of the file, `from` not above `to`. A text put at the end of a
    // file starts on a line of its own. True wherever the file is open: what does not get to the
    // disk is missing from the file, and what stood behind it moves up. The file position is at the
    // end then.
    bool ReplaceRange(std::uint64_t from, std::uint64_t to, std::string_view text);

private:
    struct KeyLine;  // how the search for a key ended
    std::optional<KeyLine> FindKey(std::string_view section, std::string_view key);
    std::optional<std::string> FindValue(std::string_view section, std::string_view key);
    void AppendSection(std::string_view name);

    std::string path;
    std::optional<OpenedFile> file;
    std::uint64_t position = 0;  // where the next line is read
};

}  // namespace orvane
