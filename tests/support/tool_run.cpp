#include "tests/support/tool_run.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <optional>

namespace orvane::test {

namespace {

using Clock = std::chrono::steady_clock;

// An open file of this process; never handed on to the tool unless it is put there on purpose.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int opened) : number(opened) {}
    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Number() const { return number; }
    bool IsOpen() const { return number >= 0; }
    void Close() {
        if (IsOpen()) close(std::exchange(number, -1));
    }

private:
    int number = -1;
};

// The two ends of one of the tool's three streams.
struct Channel {
    Descriptor here;
    Descriptor there;
};

Channel InputPipe() {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return {};
    return {Descriptor(ends[1]), Descriptor(ends[0])};
}

Channel OutputPipe() {
    Channel channel = InputPipe();
    std::swap(channel.here, channel.there);
    return channel;
}

// A pseudo-terminal that hands every byte on as it is.
Channel Terminal() {
    Channel channel;
    channel.here = Descriptor(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
    const int here = channel.here.Number();
    if (grantpt(here) != 0 || unlockpt(here) != 0) return {};
    channel.there = Descriptor(open(ptsname(here), O_RDWR | O_NOCTTY | O_CLOEXEC));
    termios mode{};
    if (tcgetattr(channel.there.Number(), &mode) != 0) return {};
    cfmakeraw(&mode);
    tcsetattr(channel.there.Number(), TCSANOW, &mode);
    return channel;
}

struct Streams {
    Channel input, output, error;
};

Streams OpenStreams(const ToolRun& run) {
    Streams streams;
    if (!run.inputClosed) streams.input = InputPipe();
    if (run.output == ToolRun::Output::captured) {
        streams.output = OutputPipe();
    } else if (run.output == ToolRun::Output::fullDevice) {
        streams.output.there = Descriptor(open("/dev/full", O_WRONLY | O_CLOEXEC));
    }
    streams.error = run.error == ToolRun::Error::terminal ? Terminal() : OutputPipe();
    return streams;
}

std::vector<char*> PointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> EnvironmentWith(
    const std::vector<std::pair<std::string, std::string>>& changes) {
    std::vector<std::string> variables;
    for (const auto& [name, value] : changes) variables.push_back(name + "=" + value);
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view text(*variable);
        bool isChanged = false;
        for (const auto& change : changes) isChanged |= text.starts_with(change.first + "=");
        if (!isChanged) variables.emplace_back(text);
    }
    return variables;
}

// In the new process, between fork and exec: nothing here may allocate.
bool GiveUpRights() {
    constexpr id_t nobody = 65534;
    if (geteuid() != 0) return true;
    return setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0;
}

void PutInPlace(const Descriptor& opened, int place) {
    if (opened.IsOpen()) {
        dup2(opened.Number(), place);
    } else {
        close(place);
    }
}

std::optional<pid_t> Start(const ToolRun& run, const Streams& streams) {
    std::vector<std::string> words{ORVANE_CLI};
    words.insert(words.end(), run.arguments.begin(), run.arguments.end());
    const std::vector<char*> arguments = PointersTo(words);
    auto changes = run.environment;
    // Looking for leaks at the end is a kind of watching too, and only one can watch.
    if (run.fault) changes.emplace_back("ASAN_OPTIONS", "detect_leaks=0");
    std::vector<std::string> variables = EnvironmentWith(changes);
    const std::vector<char*> environment = PointersTo(variables);

    // Opened first: another user may not find the way to it.
    const int tool = open(ORVANE_CLI, O_RDONLY | O_CLOEXEC);
    if (tool < 0) return std::nullopt;
    const pid_t process = fork();
    if (process != 0) close(tool);
    if (process < 0) return std::nullopt;
    if (process > 0) return process;
    std::signal(SIGPIPE, SIG_DFL);
    PutInPlace(streams.input.there, STDIN_FILENO);
    PutInPlace(streams.output.there, STDOUT_FILENO);
    PutInPlace(streams.error.there, STDERR_FILENO);
    if (run.folder.empty() || chdir(run.folder.c_str()) == 0) {
        const bool isReady = !run.fault || BeWatched();
        if (isReady && (!run.withoutRights || GiveUpRights())) {
            fexecve(tool, arguments.data(), environment.data());
        }
    }
    _exit(127);
}

// One look at what the tool wrote. Closes our end behind the last byte.
bool ReadSome(Descriptor& from, std::string& bytes) {
    std::array<char, 1 << 16> chunk;
    const ssize_t count = read(from.Number(), chunk.data(), chunk.size());
    if (count > 0) {
        bytes.append(chunk.data(), static_cast<std::size_t>(count));
        return true;
    }
    // A terminal whose other end is closed gives an error for the end.
    if (count == 0 || errno != EINTR) from.Close();
    return false;
}

void WriteSome(Descriptor& to, std::string_view& bytes) {
    const ssize_t count = bytes.empty() ? 0 : write(to.Number(), bytes.data(), bytes.size());
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
    const bool isBroken = count < 0 && errno != EAGAIN && errno != EINTR;
    if (bytes.empty() || isBroken) to.Close();  // a tool that reads no input is none of our trouble
}

// Feeds and reads until the tool has closed its ends. False when the time is over.
bool Exchange(const ToolRun& run, Streams& streams, ToolResult& result) {
    const Clock::time_point start = Clock::now();
    std::string_view input = run.input;
    Descriptor &feeding = streams.input.here, &output = streams.output.here,
               &error = streams.error.here;
    if (feeding.IsOpen()) fcntl(feeding.Number(), F_SETFL, O_NONBLOCK);
    while (feeding.IsOpen() || output.IsOpen() || error.IsOpen()) {
        const auto left = start + run.timeOut - Clock::now();
        if (left <= Clock::duration::zero()) return false;
        std::array<pollfd, 3> waiting{{{feeding.Number(), POLLOUT, 0},
                                       {output.Number(), POLLIN, 0},
                                       {error.Number(), POLLIN, 0}}};
        const auto patience = std::chrono::duration_cast<std::chrono::milliseconds>(left);
        if (poll(waiting.data(), waiting.size(), static_cast<int>(patience.count()) + 1) <= 0) {
            continue;
        }
        if (waiting[0].revents != 0) WriteSome(feeding, input);
        if (waiting[1].revents != 0) ReadSome(output, result.output);
        if (waiting[2].revents == 0) continue;
        const bool isFirst = result.error.empty();
        if (ReadSome(error, result.error) && isFirst) result.untilError = Clock::now() - start;
    }
    return true;
}

// Runs a watched tool to its end: what it reads has to be in its pipe before, and what it writes
// waits there until it has ended.
ToolResult RunWatchedTool(const ToolRun& run, pid_t process, Streams& streams) {
    ToolResult result;
    std::string_view input = run.input;
    while (streams.input.here.IsOpen()) WriteSome(streams.input.here, input);
    result.watched = Watch(process, *run.fault);
    result.status = result.watched.status;
    Exchange(run, streams, result);
    return result;
}

// Runs a tool to its end, or until the time is over.
ToolResult RunFreeTool(const ToolRun& run, pid_t process, Streams& streams) {
    ToolResult result;
    const bool inTime = Exchange(run, streams, result);
    if (!inTime) kill(process, SIGKILL);
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    if (inTime && WIFEXITED(status)) result.status = WEXITSTATUS(status);
    return result;
}

}  // namespace

ToolResult RunTool(const ToolRun& run) {
    ToolResult result;
    Streams streams = OpenStreams(run);
    // A tool that ends without reading must not end the test with it.
    const auto brokenPipe = std::signal(SIGPIPE, SIG_IGN);
    const std::optional<pid_t> process = Start(run, streams);
    streams.input.there.Close();
    streams.output.there.Close();
    streams.error.there.Close();
    if (process) {
        result = run.fault ? RunWatchedTool(run, *process, streams)
                           : RunFreeTool(run, *process, streams);
    }
    std::signal(SIGPIPE, brokenPipe);
    return result;
}

ToolResult RunTool(std::vector<std::string> arguments, std::string_view input) {
    return RunTool(ToolRun{.arguments = std::move(arguments), .input = input});
}

TemporaryFolder::TemporaryFolder() {
    path = std::filesystem::temp_directory_path() / "orvane-cli-XXXXXX";
    if (mkdtemp(path.data()) == nullptr) path.clear();
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    if (!path.empty()) std::filesystem::remove_all(path, ignored);
}

std::string TemporaryFolder::Write(std::string_view name, std::string_view bytes) const {
    const std::string file = path + "/" + std::string(name);
    if (std::FILE* const stream = std::fopen(file.c_str(), "wb")) {
        std::fwrite(bytes.data(), 1, bytes.size(), stream);
        std::fclose(stream);
    }
    return file;
}

std::string ShownOnTerminal(std::string_view bytes) {
    std::string shown;
    std::string line;
    std::size_t column = 0;
    const auto endLine = [&] {
        line.erase(line.find_last_not_of(' ') + 1);
        shown += std::exchange(line, {});
    };
    for (const char c : bytes) {
        if (c == '\r') {
            column = 0;
        } else if (c == '\n') {
            endLine();
            shown += '\n';
            column = 0;
        } else {
            if (line.size() <= column) line.resize(column + 1, ' ');
            line[column++] = c;
        }
    }
    endLine();
    return shown;
}

}  // namespace orvane::test
