#pragma once

#include <atomic>
#include <string>
#include <string_view>

namespace orvane {

// A wish from outside that a run ends before its time. Any thread may have it, at any moment, and
// it is never taken back. Everything in a run that may take long looks at it and, once the wish is
// there, returns at once with whatever it has: what was under way is thrown away as a whole.
class RunStop {
public:
    RunStop() = default;
    // Asked as well when another one is, which may be none.
    explicit RunStop(const RunStop* another) : further(another) {}

    void Ask() { asked.store(true, std::memory_order_relaxed); }
    bool IsAsked() const {
        return asked.load(std::memory_order_relaxed) || (further != nullptr && further->IsAsked());
    }

private:
    std::atomic<bool> asked{false};
    const RunStop* further = nullptr;
};

// What the error text of a stopped run says. It stands in no report.
inline constexpr std::string_view stoppedMessage = "the run was stopped";

// Whether the run has to end; never without a RunStop. Cheap enough for every node of a tree.
inline bool IsStopAsked(const RunStop* stop) { return stop != nullptr && stop->IsAsked(); }

// The same. When the run has to end the error text says so, whatever it held, and evaluation
// unwinds by it.
inline bool TakeStop(const RunStop* stop, std::string& errorText) {
    if (!IsStopAsked(stop)) return false;
    errorText = stoppedMessage;
    return true;
}

}  // namespace orvane
