#include "tests/support/watched_process.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace orvane::test {

#if defined(__x86_64__)

namespace {

using SyscallInfo = __ptrace_syscall_info;

// What the system shows of a call in front of it.
struct Call {
    std::uint64_t number = 0;
    const std::uint64_t* arguments = nullptr;
};

// The calls that have to do with files, and where each says which file it means.
struct FileCall {
    enum class Does { looks, opens, writes, changes, makes, closes };
    long number;
    Does does;
    int argument;
    bool isPath;
};
using Does = FileCall::Does;
constexpr FileCall fileCalls[] = {
    {SYS_open, Does::opens, 0, true},         {SYS_openat, Does::opens, 1, true},
    {SYS_creat, Does::makes, 0, true},        {SYS_read, Does::looks, 0, false},
    {SYS_pread64, Does::looks, 0, false},     {SYS_lseek, Does::looks, 0, false},
    {SYS_stat, Does::looks, 0, true},         {SYS_newfstatat, Does::looks, 1, true},
    {SYS_statx, Does::looks, 1, true},        {SYS_fstat, Does::looks, 0, false},
    {SYS_write, Does::writes, 0, false},      {SYS_pwrite64, Does::writes, 0, false},
    {SYS_writev, Does::changes, 0, false},    {SYS_ftruncate, Does::changes, 0, false},
    {SYS_truncate, Does::changes, 0, true},   {SYS_fsync, Does::changes, 0, false},
    {SYS_fdatasync, Does::changes, 0, false}, {SYS_rename, Does::changes, 0, true},
    {SYS_renameat, Does::changes, 1, true},   {SYS_renameat2, Does::changes, 1, true},
    {SYS_unlink, Does::changes, 0, true},     {SYS_unlinkat, Does::changes, 1, true},
    {SYS_mkdir, Does::makes, 0, true},        {SYS_mkdirat, Does::makes, 1, true},
    {SYS_close, Does::closes, 0, false},      {SYS_flock, Does::looks, 0, false},
};

constexpr int bytesArgument = 2;  // of a call that writes

// The text at an address of the process.
std::string TextAt(pid_t process, std::uint64_t address) {
    std::string text;
    while (text.size() < PATH_MAX) {
        errno = 0;
        const long word = ptrace(PTRACE_PEEKDATA, process, address + text.size(), nullptr);
        if (errno != 0) break;
        char bytes[sizeof word];
        std::memcpy(bytes, &word, sizeof word);
        const char* const end = std::find(std::begin(bytes), std::end(bytes), '\0');
        text.append(bytes, static_cast<std::size_t>(end - bytes));
        if (end != std::end(bytes)) break;
    }
    return text;
}

std::string DescriptorEntry(pid_t process, std::string_view list, std::uint64_t descriptor) {
    std::string path = "/proc/" + std::to_string(process) + "/";
    return path.append(list).append("/").append(std::to_string(descriptor));
}

// A file that was removed keeps its path here, with a remark behind it.
std::string PathOfDescriptor(pid_t process, std::uint64_t descriptor) {
    std::error_code error;
    return std::filesystem::read_symlink(DescriptorEntry(process, "fd", descriptor), error)
        .string();
}

bool IsOpenForWriting(pid_t process, std::uint64_t descriptor) {
    std::ifstream lines(DescriptorEntry(process, "fdinfo", descriptor));
    std::string key;
    std::string value;
    while (lines >> key >> value) {
        if (key == "flags:") return (std::stoi(value, nullptr, 8) & O_ACCMODE) != O_RDONLY;
    }
    return false;
}

bool IsIn(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

// What the call does to a file in the folder; nothing where it has to do with another one.
std::optional<Does> DoneInFolder(pid_t process, const Call& call, const std::string& folder) {
    const auto found = std::find_if(
        std::begin(fileCalls), std::end(fileCalls),
        [&](const FileCall& row) { return row.number == static_cast<long>(call.number); });
    if (found == std::end(fileCalls)) return std::nullopt;
    const std::uint64_t place = call.arguments[found->argument];
    if (!IsIn(found->isPath ? TextAt(process, place) : PathOfDescriptor(process, place), folder)) {
        return std::nullopt;
    }
    if (found->does == Does::opens) {
        const bool makes = (call.arguments[found->argument + 1] & (O_CREAT | O_TRUNC)) != 0;
        return makes ? Does::makes : Does::looks;
    }
    if (found->does == Does::closes && !IsOpenForWriting(process, place)) return Does::looks;
    return found->does;
}

bool Counts(Does does, Fault::Calls calls) {
    switch (calls) {
        case Fault::Calls::changing:
            return does != Does::looks;
        case Fault::Calls::takingRoom:
            return does == Does::writes || does == Does::makes;
        case Fault::Calls::closing:
            return does == Does::closes;
        case Fault::Calls::touching:
            return true;
    }
    return false;
}

// One watched process, from call to call.
class Watcher {
public:
    Watcher(pid_t watched, const Fault& what) : process(watched), fault(what) {}

    WatchedEnd Run() {
        int stop = 0;
        if (!WaitFor(stop)) return end;
        ptrace(PTRACE_SETOPTIONS, process, 0,
               PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACEEXEC | PTRACE_O_EXITKILL);
        long signal = 0;  // the stop in which it waits for us is none of its own
        while (ptrace(PTRACE_SYSCALL, process, 0, signal) == 0 && WaitFor(stop)) {
            signal = 0;
            if (WSTOPSIG(stop) == (SIGTRAP | 0x80)) {
                LookAtCall();
            } else if (WSTOPSIG(stop) != SIGTRAP) {
                signal = WSTOPSIG(stop);
            }
        }
        return end;
    }

private:
    // False where the process has ended.
    bool WaitFor(int& stop) {
        while (waitpid(process, &stop, 0) < 0) {
            if (errno != EINTR) return false;
        }
        if (WIFEXITED(stop)) end.status = WEXITSTATUS(stop);
        return WIFSTOPPED(stop);
    }

    void LookAtCall() {
        SyscallInfo info{};
        if (ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof info, &info) <= 0) return;
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY) {
            InFrontOf({info.entry.nr, info.entry.args});
        } else if (info.op == PTRACE_SYSCALL_INFO_EXIT) {
            Behind();
        }
    }

    void InFrontOf(const Call& call) {
        const std::optional<Does> does = DoneInFolder(process, call, fault.folder);
        if (!does) return;
        if (Counts(*does, fault.calls)) {
            ++count;
            if (count == fault.at) end.isReached = true;
            if (count == fault.at || (fault.goesOn && count > fault.at)) Meddle(*does, call);
        }
        if (!end.isReached && *does != Does::looks) end.hadChanged = true;
    }

    void Meddle(Does does, const Call& call) {
        const bool isCut = does == Does::writes && count == fault.at &&
                           (fault.kind == Fault::Kind::killHalfway || fault.isShort);
        switch (fault.kind) {
            case Fault::Kind::killBefore:
                kill(process, SIGKILL);
                return;
            case Fault::Kind::killHalfway:
                killBehind = true;
                if (isCut) CutWrite(call);
                return;
            case Fault::Kind::fail:
                if (isCut) {
                    CutWrite(call);
                } else {
                    SkipCall();
                }
                return;
            case Fault::Kind::meddle:
                fault.meanwhile();
                return;
        }
    }

    void CutWrite(const Call& call) {
        user_regs_struct registers{};
        ptrace(PTRACE_GETREGS, process, 0, &registers);
        registers.rdx = call.arguments[bytesArgument] / 2;
        ptrace(PTRACE_SETREGS, process, 0, &registers);
    }

    // A number that no call has: the system does nothing, and what it gives is put in behind it.
    void SkipCall() {
        user_regs_struct registers{};
        ptrace(PTRACE_GETREGS, process, 0, &registers);
        registers.orig_rax = static_cast<unsigned long long>(-1);
        ptrace(PTRACE_SETREGS, process, 0, &registers);
        failBehind = true;
    }

    void Behind() {
        if (std::exchange(killBehind, false)) kill(process, SIGKILL);
        if (!std::exchange(failBehind, false)) return;
        user_regs_struct registers{};
        ptrace(PTRACE_GETREGS, process, 0, &registers);
        registers.rax = static_cast<unsigned long long>(-static_cast<long long>(fault.error));
        ptrace(PTRACE_SETREGS, process, 0, &registers);
    }

    const pid_t process;
    const Fault& fault;
    WatchedEnd end;
    int count = 0;
    bool killBehind = false;
    bool failBehind = false;
};

}  // namespace

bool BeWatched() { return ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0 && raise(SIGSTOP) == 0; }

WatchedEnd Watch(pid_t process, const Fault& fault) { return Watcher(process, fault).Run(); }

bool CanWatch() {
    Fault fault;
    fault.folder = "/nowhere";
    return RunWatched([] { return 7; }, fault).status == 7;
}

#else

bool BeWatched() { return false; }
WatchedEnd Watch(pid_t, const Fault&) { return {}; }
bool CanWatch() { return false; }

#endif

WatchedEnd RunWatched(const std::function<int()>& work, const Fault& fault) {
    const pid_t process = fork();
    if (process == 0) _exit(BeWatched() ? work() : 127);
    if (process < 0) return {};
    return Watch(process, fault);
}

}  // namespace orvane::test
