#include "storage/settings_file.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

namespace orvane {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view keysStart = "<KEY>";
constexpr std::string_view keysEnd = "<LIST>";
constexpr std::size_t hexDigits = 8;
constexpr std::size_t writePiece = 1024;

std::string Enclosed(char open, std::string_view name, char close) {
    return std::string(1, open).append(name).append(1, close);
}

// The line of a section in the text, or nothing.
std::optional<ByteRange> FindSectionLine(std::string_view text, std::string_view name) {
    const std::string wanted = Enclosed('{', name, '}');
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t brace = text.find('{', start);
        if (brace == std::string_view::npos) return std::nullopt;
        const std::size_t end = std::min(text.find(lineEnd, brace), text.size());
        // Kept: a brace alone at the end of its line ends the search.
        if (end == brace + 1) return std::nullopt;
        std::string_view line = text.substr(brace, end - brace);
        line = line.substr(0, line.find_last_not_of(' ') + 1);
        if (line == wanted) return ByteRange{brace, std::min(end + lineEnd.size(), text.size())};
        // Kept: the first two columns behind a line that was rejected are not looked at.
        start = end + lineEnd.size() + 2;
    }
    return std::nullopt;
}

// Lines of a file from an offset on. The file is read in growing pieces, so that one line costs
// little and many cost little more than their bytes.
class LineReader {
public:
    LineReader(OpenedFile& opened, std::uint64_t offset) : file(opened), pieceStart(offset) {}

    bool Next(std::string& line, ByteRange& range) {
        const std::uint64_t from = Position();
        line.clear();
        bool isTooLong = false;
        bool isComplete = false;
        while (!isComplete && HasMore()) {
            const std::size_t end = std::min(piece.find('\r', used), piece.size());
            isTooLong = isTooLong || end - used > longestSettingsLine - line.size();
            if (isTooLong) {
                line.clear();
            } else {
                line.append(piece, used, end - used);
            }
            isComplete = end < piece.size();
            used = end;
        }
        if (isComplete) SkipLineEnd();
        if (Position() == from) return false;
        range = {from, Position()};
        return true;
    }
    // Behind the last line.
    std::uint64_t Position() const { return pieceStart + used; }

private:
    bool HasMore() {
        if (used < piece.size()) return true;
        pieceStart += used;
        used = 0;
        file.Read(pieceStart, pieceSize, piece);
        pieceSize = std::min(pieceSize * 2, largestPiece);
        return !piece.empty();
    }
    // A carriage return, and a line feed if there is one behind it.
    void SkipLineEnd() {
        ++used;
        if (HasMore() && piece[used] == '\n') ++used;
    }

    static constexpr std::size_t largestPiece = std::size_t{1} << 16;

    OpenedFile& file;
    std::uint64_t pieceStart;
    std::size_t pieceSize = 1024;
    std::string piece;
    std::size_t used = 0;
};

bool IsWhiteSpace(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

// Nothing where the byte is no digit of that base.
std::optional<std::uint32_t> DigitOf(char byte, std::uint32_t base) {
    std::uint32_t digit = base;
    if (byte >= '0' && byte <= '9') digit = static_cast<std::uint32_t>(byte - '0');
    if (byte >= 'A' && byte <= 'F') digit = static_cast<std::uint32_t>(byte - 'A' + 10);
    if (byte >= 'a' && byte <= 'f') digit = static_cast<std::uint32_t>(byte - 'a' + 10);
    if (digit >= base) return std::nullopt;
    return digit;
}

// Reads a number as far as it is one: white space, a sign, digits. Nothing readable is 0, and of
// too many digits the low 32 bits stay, so that a bit set survives as a signed number too.
std::uint32_t NumberFrom(std::string_view text, std::uint32_t base) {
    std::size_t at = 0;
    while (at < text.size() && IsWhiteSpace(text[at])) ++at;
    const bool isNegative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    std::uint32_t number = 0;
    for (; at < text.size(); ++at) {
        const std::optional<std::uint32_t> digit = DigitOf(text[at], base);
        if (!digit) break;
        number = number * base + *digit;
    }
    return isNegative ? 0U - number : number;
}

void AppendHex(std::uint32_t number, std::string& text) {
    for (int shift = 28; shift >= 0; shift -= 4) text += "0123456789ABCDEF"[number >> shift & 0xF];
}

// Takes one number and the slash behind it from the front of the text.
template <typename Number>
bool TakeField(std::string_view& text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::size_t length = static_cast<std::size_t>(end - text.data());
    if (error != std::errc() || length == text.size() || *end != '/') return false;
    text.remove_prefix(length + 1);
    return true;
}

std::optional<WindowPlacement> PlacementFrom(std::string_view text) {
    WindowPlacement placement;
    const bool isComplete =
        TakeField(text, placement.showState) && TakeField(text, placement.flags) &&
        TakeField(text, placement.left) && TakeField(text, placement.top) &&
        TakeField(text, placement.right) && TakeField(text, placement.bottom) &&
        TakeField(text, placement.minimisedX) && TakeField(text, placement.minimisedY) &&
        TakeField(text, placement.maximisedX) && TakeField(text, placement.maximisedY);
    if (!isComplete || !text.empty()) return std::nullopt;
    return placement;
}

// Writes text in pieces, up to the first that does not get there, and gives the offset behind what
// was written.
std::uint64_t WritePieces(OpenedFile& file, std::uint64_t offset, std::string_view text) {
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, writePiece);
        const std::size_t written = file.Write(offset, piece);
        offset += written;
        if (written < piece.size()) break;
        text.remove_prefix(written);
    }
    return offset;
}

}  // namespace

struct SettingsFile::KeyLine {
    bool isThere = false;
    ByteRange line;    // the key's line, or else the last one read
    std::string text;  // of that line
};

SettingsFile::SettingsFile(std::string filePath) : path(std::move(filePath)) {}

bool SettingsFile::Open() {
    position = 0;
    file = OpenedFile::Open(path, FileUse::readWrite);
    if (file && file->Size().value_or(largestFile + 1) > largestFile) file.reset();
    return IsOpen();
}

bool SettingsFile::OpenAndPrepare() {
    if (!Open()) return false;
    for (const std::string_view section : {mainSection, globalSection}) {
        ByteRange range;
        if (!FindSection(section, range)) AppendSection(section);
    }
    return true;
}

void SettingsFile::AppendSection(std::string_view name) {
    const std::optional<std::uint64_t> end = file->Size();
    if (!end) return;
    std::string text;
    text.append(lineEnd).append(lineEnd);
    text.append(Enclosed('{', name, '}')).append(lineEnd);
    text.append(keysStart).append(lineEnd);
    text.append(keysEnd).append(lineEnd);
    ReplaceRange(*end, *end, text);
}

bool SettingsFile::FindSection(std::string_view name, ByteRange& range) {
    if (!file) return false;
    std::string bytes;
    if (!file->Read(0, largestFile, bytes)) return false;
    const std::string_view text = std::string_view(bytes).substr(0, bytes.find('\0'));
    const std::optional<ByteRange> line = FindSectionLine(text, name);
    if (!line) return false;
    range = *line;
    position = line->to;
    return true;
}

bool SettingsFile::ReadLine(std::string& line, ByteRange& range) {
    if (!file) return false;
    LineReader lines(*file, position);
    const bool isThere = lines.Next(line, range);
    position = lines.Position();
    return isThere;
}

// Nothing where the section is missing.
std::optional<SettingsFile::KeyLine> SettingsFile::FindKey(std::string_view section,
                                                           std::string_view key) {
    ByteRange sectionLine;
    if (!FindSection(section, sectionLine)) return std::nullopt;
    const std::string wanted = Enclosed('[', key, ']');
    KeyLine found;
    found.line = {position, position};
    LineReader lines(*file, position);
    while (!found.isThere && lines.Next(found.text, found.line)) {
        if (found.text.starts_with(keysEnd)) break;
        found.isThere = found.text.starts_with(wanted);
    }
    position = lines.Position();
    return found;
}

std::optional<std::string> SettingsFile::FindValue(std::string_view section, std::string_view key) {
    const std::optional<KeyLine> found = FindKey(section, key);
    if (!found || !found->isThere) return std::nullopt;
    return found->text.substr(key.size() + 2);
}

bool SettingsFile::GetInt(std::string_view section, std::string_view key, std::int32_t& value) {
    std::uint32_t number = 0;
    if (!GetUnsigned(section, key, number)) return false;
    value = static_cast<std::int32_t>(number);
    return true;
}

bool SettingsFile::GetUnsigned(std::string_view section, std::string_view key,
                               std::uint32_t& value) {
    const std::optional<std::string> text = FindValue(section, key);
    if (text) value = NumberFrom(*text, 10);
    return text.has_value();
}

bool SettingsFile::GetText(std::string_view section, std::string_view key, std::string& value) {
    std::optional<std::string> text = FindValue(section, key);
    if (!text) return false;
    value = std::move(*text);
    return true;
}

bool SettingsFile::GetHexBlock(std::string_view section, std::string_view key, HexSlots& slots,
                               const HexSlots& defaults) {
    if (!file) return false;
    slots = defaults;
    const std::optional<std::string> text = FindValue(section, key);
    if (!text) return false;
    const std::size_t count = std::min(text->size() / hexDigits, slots.size());
    for (std::size_t at = 0; at < count; ++at) {
        slots[at] = NumberFrom(std::string_view(*text).substr(at * hexDigits, hexDigits), 16);
    }
    return true;
}

bool SettingsFile::GetPlacement(std::string_view section, std::string_view key,
                                WindowPlacement& placement) {
    const std::optional<std::string> text = FindValue(section, key);
    const std::optional<WindowPlacement> stored = text ? PlacementFrom(*text) : std::nullopt;
    if (stored) placement = *stored;
    return stored.has_value();
}

bool SettingsFile::SetValue(std::string_view section, std::string_view key, std::string_view text,
                            bool createIfMissing) {
    const std::optional<KeyLine> found = FindKey(section, key);
    if (!found || (!found->isThere && !createIfMissing)) return false;
    const std::string line = Enclosed('[', key, ']').append(text).append(lineEnd);
    // Kept: where a section has no end the new key stands in front of the last line of the file.
    return ReplaceRange(found->line.from, found->isThere ? found->line.to : found->line.from, line);
}

bool SettingsFile::SetHexBlock(std::string_view section, std::string_view key,
                               const HexSlots& slots) {
    std::string text;
    for (const std::uint32_t slot : slots) AppendHex(slot, text);
    return SetValue(section, key, text, true);
}

bool SettingsFile::SetPlacement(std::string_view section, std::string_view key,
                                const WindowPlacement& placement) {
    std::string text = std::to_string(placement.showState) + "/";
    text += std::to_string(placement.flags) + "/";
    for (const std::int32_t field :
         {placement.left, placement.top, placement.right, placement.bottom, placement.minimisedX,
          placement.minimisedY, placement.maximisedX, placement.maximisedY}) {
        text += std::to_string(field) + "/";
    }
    return SetValue(section, key, text, true);
}

bool SettingsFile::ReplaceRange(std::uint64_t from, std::uint64_t to, std::string_view text) {
    if (!file) return false;
    std::string tail;
    if (!file->Read(to, largestFile, tail)) tail.clear();
    if (from == to && from != 0 && file->Size() == from) {
        std::string last;
        if (file->Read(from - 1, 1, last) && last != "\n") from = WritePieces(*file, from, lineEnd);
    }
    // Kept: the tail follows also where the text did not all get to the disk.
    position = WritePieces(*file, WritePieces(*file, from, text), tail);
    file->SetEnd(position);
    return true;
}

}  // namespace orvane
