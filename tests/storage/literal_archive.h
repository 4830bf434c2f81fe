#pragma once

#include <string>
#include <string_view>
#include <vector>

// The operations of an archive once more, step by step on plain strings and byte by byte, to
// compare with. Nothing here is shared with the code it checks.

namespace orvane::test::literal {

struct Archive {
    std::string bytes;

    // Searches end at the first NUL.
    int End() const {
        int end = 0;
        while (end < static_cast<int>(bytes.size()) && bytes[Index(end)] != '\0') ++end;
        return end;
    }

    int Next(unsigned char mark, int from) const {
        for (int at = from; at < End(); ++at) {
            if (static_cast<unsigned char>(bytes[Index(at)]) == mark) return at;
        }
        return -1;
    }

    int NextOrEnd(unsigned char mark, int from) const {
        const int found = Next(mark, from);
        return found < 0 ? End() : found;
    }

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        int at = 0;
        while (true) {
            const int name = Next(0xB6, at);
            if (name < 0) return names;
            at = Next(0xE6, name);
            if (at < 0) return names;
            names.push_back(Cut(name + 1, at));
        }
    }

    static std::string Key(std::string_view name) { return '\xB6' + std::string(name) + '\xE6'; }

    int Find(std::string_view name) const {
        const std::string key = Key(name);
        const int size = static_cast<int>(key.size());
        for (int at = 0; at + size <= End(); ++at) {
            if (Cut(at, at + size) == key) return at;
        }
        return -1;
    }

    std::string Read(std::string_view name) const {
        const int p = Find(name);
        if (p < 0) return "";
        const int text = p + static_cast<int>(Key(name).size());
        return Cut(text, NextOrEnd(0xB6, text));
    }

    void Append(std::string_view name, std::string_view text) {
        bytes = bytes + Key(name) + std::string(text);
    }

    void Replace(std::string_view name, std::string_view text) {
        const int p = Find(name);
        if (p < 0) return;
        const int from = p + static_cast<int>(Key(name).size());
        const int to = NextOrEnd(0xB6, from);
        bytes = Cut(0, from) + std::string(text) + Behind(to);
    }

    void Rename(std::string_view oldName, std::string_view newName) {
        const int p = Find(oldName);
        if (p < 0) return;
        bytes = Cut(0, p) + Key(newName) + Behind(p + static_cast<int>(Key(oldName).size()));
    }

    void Delete(std::string_view name) {
        const int p = Find(name);
        if (p < 0) return;
        bytes = Cut(0, p) + Behind(NextOrEnd(0xB6, p + 1));
    }

    bool MoveUp(std::string_view name) {
        const int p = Find(name);
        if (p <= 0) return false;
        int q = p - 1;
        while (q >= 0 && bytes[Index(q)] != '\xB6') --q;
        if (q < 0) return false;
        const int e = NextOrEnd(0xB6, p + 1);
        const std::string previous = Cut(q, p);
        const std::string own = Cut(p, e);
        bytes = Cut(0, q) + own + previous + Behind(e);
        return true;
    }

    bool MoveDown(std::string_view name) {
        const int p = Find(name);
        if (p < 0) return false;
        const int f = Next(0xB6, p + 1);
        if (f < 0) return false;
        const int e = NextOrEnd(0xB6, f + 1);
        const std::string own = Cut(p, f);
        const std::string following = Cut(f, e);
        bytes = Cut(0, p) + following + own + Behind(e);
        return true;
    }

private:
    static std::size_t Index(int at) { return static_cast<std::size_t>(at); }
    std::string Cut(int from, int to) const { return bytes.substr(Index(from), Index(to - from)); }
    std::string Behind(int from) const { return bytes.substr(Index(from)); }
};

}  // namespace orvane::test::literal
