#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "core/run_stop.h"

namespace orvane::cli {

// Asks a run to stop when the time is over, counted from when the limit is made. Without a limit
// there is no thread either.
class TimeLimit {
public:
    // 0: no limit. More seconds than a long life has are taken as that.
    explicit TimeLimit(double seconds);
    ~TimeLimit();
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

    const RunStop* Stop() const { return &stop; }

private:
    using Clock = std::chrono::steady_clock;

    void WaitUntil(Clock::time_point deadline);

    RunStop stop;
    std::mutex mutex;
    std::condition_variable wake;
    bool isOver = false;  // the run; guarded by the mutex
    std::thread watcher;
};

}  // namespace orvane::cli
