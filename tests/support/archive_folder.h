#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "storage/archive.h"

// Archives on disk for tests.

namespace orvane::test {

inline std::string Entry(std::string_view name, std::string_view text) {
    std::string entry(1, nameMark);
    entry += name;
    entry += textMark;
    entry += text;
    return entry;
}

inline std::string Preamble() { return std::string(archivePreamble); }

// An archive with three sheets, each with a text of its own.
inline std::string ThreeSheets() {
    return Preamble() + Entry("first", "1") + Entry("second", "2;2") + Entry("third", "3\n3");
}

// A folder of one test with an archive in it, which is missing at first. Both go with it.
class ArchiveFolder {
public:
    ArchiveFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "orvane_XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) ADD_FAILURE() << "no folder";
        folder = pattern;
        // For the tests that give up their rights: others may enter and look.
        std::filesystem::permissions(folder, std::filesystem::perms(0755));
    }
    ~ArchiveFolder() { std::filesystem::remove_all(folder); }
    ArchiveFolder(const ArchiveFolder&) = delete;
    ArchiveFolder& operator=(const ArchiveFolder&) = delete;

    std::string Folder() const { return folder.string(); }
    std::string Path() const { return (folder / "user.file").string(); }

    void Write(std::string_view bytes) const {
        std::ofstream file(Path(), std::ios::binary | std::ios::trunc);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string Read() const {
        std::ifstream file(Path(), std::ios::binary);
        EXPECT_TRUE(file.is_open()) << Path();
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    // Makes the file look as if it had been written long ago, and tells whether it still does.
    void Age() const { std::filesystem::last_write_time(Path(), LongAgo()); }
    bool IsAged() const { return std::filesystem::last_write_time(Path()) == LongAgo(); }
    void Remove() const { std::filesystem::remove_all(Path()); }
    // A folder in the archive's place: it can be neither opened nor made.
    void Block() const {
        Remove();
        std::filesystem::create_directory(Path());
    }

private:
    static std::filesystem::file_time_type LongAgo() {
        using namespace std::chrono;
        return file_clock::from_sys(sys_seconds(sys_days(year(2000) / January / 1)));
    }

    std::filesystem::path folder;
};

// While it lives, root has no more rights than others have.
class WithoutRights {
public:
    WithoutRights() : user(geteuid()) {
        constexpr uid_t nobody = 65534;
        if (user == 0 && seteuid(nobody) != 0) ADD_FAILURE() << "root keeps its rights";
    }
    ~WithoutRights() {
        if (user == 0 && seteuid(user) != 0) ADD_FAILURE() << "root stays without rights";
    }
    WithoutRights(const WithoutRights&) = delete;
    WithoutRights& operator=(const WithoutRights&) = delete;

private:
    uid_t user;
};

}  // namespace orvane::test
