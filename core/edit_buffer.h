#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace orvane {

// Frees a room that is not lent.
struct RoomOwner {
    bool isLent = false;
    void operator()(char* room) const {
        if (!isLent) std::default_delete<char[]>()(room);
    }
};

// A sentence's working text, with a NUL behind it. When it must grow it takes 4096 characters more
// than it needs, so that a run of small growths costs one move; every pointer and view into it is
// stale then. `Fit` gives much spare room back between stages: a large sheet has many sentences.
// A buffer may start on room that is lent to it, and takes its own with its first growth.
struct EditBuffer {
    std::unique_ptr<char[], RoomOwner> data;
    std::int32_t capacity = 0;  // characters that fit, the NUL not counted
    std::int32_t length = 0;

    static constexpr std::int32_t spareRoom = 4096;

    EditBuffer() = default;
    // Starts with exactly the room that the text needs.
    explicit EditBuffer(std::string_view text);
    // That many characters that are still to be written, and no more room.
    static EditBuffer OfLength(std::size_t size);
    // Starts on the first `size` characters of a room that outlives it, as they are. The room has
    // one character more, which becomes the NUL.
    EditBuffer(char* room, std::size_t size);

    // Never null; the characters end with a NUL.
    char* Data();
    const char* Data() const;
    std::string_view View() const {
        return data ? std::string_view(data.get(), static_cast<std::size_t>(length))
                    : std::string_view();
    }

    void Assign(std::string_view text);
    // The same with no room to spare, unless it is lent. `text` must not lie in this buffer.
    void AssignExactly(std::string_view text);
    // Puts `newText` in place of [from, to). `newText` must not lie in this buffer.
    void Replace(std::size_t from, std::size_t to, std::string_view newText);
    void Remove(std::size_t from, std::size_t to);
    // Puts the number's text in place of [from, to). A value that is not finite changes nothing
    // and gives false.
    bool ReplaceByNumber(std::size_t from, std::size_t to, double value);
    void Fit();
};

// One walk through a buffer that replaces pieces on its way. What it costs follows from what it
// reads and writes, however many replacements there are; a Replace in the buffer itself would move
// the tail each time. What is put in stands in front of the walk and is read next, so the result
// is that of starting again after each replacement wherever the text behind the walk holds
// nothing to replace. The buffer has its new text when the walk is destroyed.
class ForwardEdit {
public:
    explicit ForwardEdit(EditBuffer& buffer);
    ~ForwardEdit();
    ForwardEdit(const ForwardEdit&) = delete;
    ForwardEdit& operator=(const ForwardEdit&) = delete;

    // What is still to be read. Stale after Replace.
    std::string_view Rest() const { return std::string_view(ahead).substr(position); }
    bool AtEnd() const { return position == ahead.size(); }
    void Pass(std::size_t count);
    // Puts `newText` in place of the next `count` characters; it is read next.
    void Replace(std::size_t count, std::string_view newText);
    std::size_t Length() const { return behind.size() + ahead.size() - position; }

private:
    EditBuffer& target;
    std::string behind;
    std::string ahead;  // its first `position` characters are spent
    std::size_t position = 0;
    bool changed = false;
};

}  // namespace orvane
