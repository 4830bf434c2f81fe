#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "storage/file_bytes.h"
#include "storage/settings_file.h"

// What tests of settings stand on: a file of their own, and a disk that gets full.

namespace orvane::test {

// A settings file in a folder of its own, gone with the test.
class SettingsOnDisk {
public:
    explicit SettingsOnDisk(std::string_view bytes) {
        folder = (QuickFolder() / "orvane-settings-XXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
        Put(bytes);
    }
    ~SettingsOnDisk() { std::filesystem::remove_all(folder); }
    SettingsOnDisk(const SettingsOnDisk&) = delete;
    SettingsOnDisk& operator=(const SettingsOnDisk&) = delete;

    std::string Folder() const { return folder; }
    std::string Path() const { return folder + "/Orvane.set"; }
    void Put(std::string_view bytes) const {
        const OwnedFile file(std::fopen(Path().c_str(), "wb"));
        std::string reason;
        EXPECT_TRUE(file && WriteStream(file.get(), bytes, reason)) << reason;
    }
    std::string Bytes() const {
        std::string reason;
        return ReadFile(Path(), reason).value_or("unreadable: " + reason);
    }

private:
    // In memory where there is room: the longest tests rewrite their file 100,000 times.
    static std::filesystem::path QuickFolder() {
        constexpr std::uintmax_t enough = std::uintmax_t{1} << 28;
        std::error_code error;
        const std::filesystem::path memory = "/dev/shm";
        const std::filesystem::space_info space = std::filesystem::space(memory, error);
        const bool isThere = !error && space.available >= enough;
        return isThere ? memory : std::filesystem::temp_directory_path();
    }

    std::string folder;
};

// An open settings file with these bytes.
struct OpenedSettings {
    explicit OpenedSettings(std::string_view bytes) : disk(bytes), settings(disk.Path()) {
        EXPECT_TRUE(settings.Open());
    }
    SettingsOnDisk disk;
    SettingsFile settings;
};

// As long as it lives no byte of any file is written from this offset on. With `isLifted` that
// ends with the first write that fails.
class FullDisk {
public:
    explicit FullDisk(std::size_t offset, bool isLifted = false) {
        getrlimit(RLIMIT_FSIZE, &before);
        handlerBefore = std::signal(SIGXFSZ, isLifted ? Lift : SIG_IGN);
        const rlimit limit = {offset, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handlerBefore);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    static void Lift(int) { setrlimit(RLIMIT_FSIZE, &before); }

    static inline rlimit before;
    void (*handlerBefore)(int) = nullptr;
};

}  // namespace orvane::test
