#include "cli/time_limit.h"

#include <algorithm>

namespace orvane::cli {

TimeLimit::TimeLimit(double seconds) {
    if (!(seconds > 0.0)) return;
    constexpr double longest = 4e9;  // over a century, which a clock's count still holds
    const std::chrono::duration<double> allowed(std::min(seconds, longest));
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(allowed);
    watcher = std::thread([this, deadline] { WaitUntil(deadline); });
}

TimeLimit::~TimeLimit() {
    if (!watcher.joinable()) return;
    {
        const std::lock_guard lock(mutex);
        isOver = true;
    }
    wake.notify_one();
    watcher.join();
}

void TimeLimit::WaitUntil(Clock::time_point deadline) {
    std::unique_lock lock(mutex);
    if (!wake.wait_until(lock, deadline, [this] { return isOver; })) stop.Ask();
}

}  // namespace orvane::cli
