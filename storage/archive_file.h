#pragma once

#include <optional>
#include <string>

#include "storage/archive.h"
#include "storage/file_bytes.h"

// An archive on disk, loaded whole for one action and written back in place. There is no second
// copy: a write that fails leaves the head of the new content over the old tail. A file that may
// only be read loads like any other, so that its sheets can be seen, and writing it back fails
// without a word.

namespace orvane {

class ArchiveFile {
public:
    ArchiveFile() = default;
    ArchiveFile(const ArchiveFile&) = delete;
    ArchiveFile& operator=(const ArchiveFile&) = delete;
    // Writes the buffer back where a file is still open, so that code which forgets to save saves.
    ~ArchiveFile();

    // Reads the whole file into the buffer and keeps it open. A file that already is open under
    // exactly this path is not read again, and another one is given up as the destructor would do
    // it. False where it can't be opened or read, or is longer than a buffer can be; the buffer is
    // empty then and no file open.
    bool Load(const std::string& path);
    // Makes or empties the file and lets the buffer hold the preamble, which is not written yet. A
    // file that was open before is given up first. False, with an empty buffer, where it can't be
    // made.
    bool Create(const std::string& path);
    // Replaces the file's content by the buffer. False where not all of it got there: the old tail
    // then stays behind what was written.
    bool WriteBack();
    // Closes the file without writing. The buffer stays as it is. False where the system tells
    // only now that what was written back did not all get there.
    bool Close();
    bool IsOpen() const { return file.has_value(); }

    TextBuffer buffer{1000};

private:
    bool ReadWhole();
    // Writes back, closes and empties the buffer.
    void GiveUp();

    std::string openPath;
    std::optional<OpenedFile> file;
};

// Once at each start: makes the archive where it can't be opened or read on the second try either,
// and rewrites it with its own content where it can. An empty file stays empty, and one that is
// only too long for a buffer is left alone. Nothing is reported.
void PrepareArchive(const std::string& path);

}  // namespace orvane
