#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The bytes of an archive: sheets as entries of one buffer, in the order in which they are listed.
//
//   preamble      anything up to the first name mark
//   entry         name mark, name, text mark, text up to the next name mark or the end
//
// There is no count, no escaping and no end mark. A NUL byte ends the buffer for every search: what
// stands behind one is kept where it is and never found, and a name that holds one is not found
// either. Nothing here reports an error: what is not found is not changed.

namespace orvane {

inline constexpr char nameMark = '\xB6';
inline constexpr char textMark = '\xE6';
inline constexpr std::string_view archivePreamble = "do not modify the file manually\r\n\r\n";

// A growable byte string with a NUL behind its last byte. A growth that would fill the capacity
// raises it to the new length plus `growthStep`; it is given back only by an assignment of fewer
// bytes that falls below the capacity minus twice that step. What would make the buffer longer than
// `largestLength` changes nothing.
//
// Ranges run from 0 to `length`, and `from` is not behind `to`. Bytes that are put in must not lie
// in the buffer itself. One that was moved from may only be assigned another buffer.
struct TextBuffer {
    static constexpr std::int32_t startCapacity = 100;
    static constexpr std::int32_t largestLength = std::int32_t{1} << 30;

    std::unique_ptr<char[]> data;  // `capacity` bytes, the NUL counted
    std::int32_t length = 0;
    std::int32_t capacity = startCapacity;
    std::int32_t growthStep = 100;

    TextBuffer() : TextBuffer(100) {}
    explicit TextBuffer(std::int32_t step);  // 1 to `largestLength` - 1

    std::string_view View() const { return {data.get(), static_cast<std::size_t>(length)}; }
    // The part that searches see: up to the first NUL byte or the end.
    std::string_view SearchableView() const;

    void Assign(std::string_view bytes);
    void Append(std::string_view bytes);
    void AppendByte(char byte);
    // The bytes beyond the old length are undefined until they are written.
    void Resize(std::int32_t newLength);
    void DeleteRange(std::int32_t from, std::int32_t to);
    void ReplaceRange(std::int32_t from, std::int32_t to, std::string_view bytes);
    // The last position up to and including `from` that holds the byte.
    std::optional<std::int32_t> FindBackwards(char byte, std::int32_t from) const;
};

// The names in file order. Every name mark counts, also one inside a text; one without a text mark
// behind it yields no entry.
std::vector<std::string> ListNames(const TextBuffer& archive);

// Where the name first stands between its two marks: the position of the name mark. It counts
// wherever it stands, also in the name or in the text of another sheet.
std::optional<std::int32_t> FindSheet(const TextBuffer& archive, std::string_view name);

// Empty where there is no such sheet.
std::string ReadSheetText(const TextBuffer& archive, std::string_view name);

// Adds an entry at the very end, also behind a NUL. Names and texts are not checked for marks.
void AppendSheet(TextBuffer& archive, std::string_view name, std::string_view text);
void ReplaceSheetText(TextBuffer& archive, std::string_view name, std::string_view text);
void RenameSheet(TextBuffer& archive, std::string_view oldName, std::string_view newName);
void DeleteSheet(TextBuffer& archive, std::string_view name);

// Swap the entry with its neighbour in the file. False where there is none, or no such sheet.
bool MoveSheetUp(TextBuffer& archive, std::string_view name);
bool MoveSheetDown(TextBuffer& archive, std::string_view name);

}  // namespace orvane
