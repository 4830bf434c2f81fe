#pragma once

#include <sys/types.h>

#include <cerrno>
#include <functional>
#include <string>

// A process whose calls to the system are watched from outside, so that a test can end it, let a
// call fail or change the disk behind its back at exactly one of them. Nothing is put into the
// process: it is the program as it ships, also under a sanitizer.

namespace orvane::test {

// What is done to one of the process's calls on files in a folder. Each kind of fault counts its
// calls from 1, so a test that goes on until a call is not reached has met all of them.
struct Fault {
    enum class Kind {
        killBefore,   // the process is killed in front of the call
        killHalfway,  // after half of its bytes where it writes, else right behind it
        fail,         // the call does nothing and gives `error`
        meddle        // `meanwhile` runs while the process waits in front of the call
    };
    // Which calls count.
    enum class Calls {
        changing,    // all that change a file or a folder, and closing what was open for writing
        takingRoom,  // writing, making files, making folders
        closing,     // closing what was open for writing
        touching     // all that have to do with the folder
    };

    Kind kind = Kind::killBefore;
    Calls calls = Calls::changing;
    int at = 1;
    int error = ENOSPC;
    bool goesOn = false;   // fail: all from there on
    bool isShort = false;  // fail: half of the bytes of the first one are written all the same
    std::function<void()> meanwhile = {};
    std::string folder = {};  // absolute, without links
};

struct WatchedEnd {
    bool isReached = false;   // there was such a call
    bool hadChanged = false;  // a changing call was done in front of it
    int status = -1;          // the exit status; -1 where it was killed
};

// Whether this system lets a process be watched, and how to go into a call is known for it.
bool CanWatch();

// In the new process, ahead of what is watched.
bool BeWatched();

// Runs a new process, which calls BeWatched, to its end. On the thread that made it.
WatchedEnd Watch(pid_t process, const Fault& fault);

// Does the work in a process of its own, with what it gives as the exit status.
WatchedEnd RunWatched(const std::function<int()>& work, const Fault& fault);

}  // namespace orvane::test
