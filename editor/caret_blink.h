#pragma once

#include <cstdint>

// When the caret shows. It is told of a timer tick every tenth of a second and toggles at every
// fifth; without the focus it neither shows nor blinks.

namespace orvane {

struct CaretBlink {
    static constexpr int tickMilliseconds = 100;
    static constexpr std::int32_t ticksPerToggle = 5;

    bool hasFocus = false;
    bool caretHidden = true;
    std::int32_t blinkTicks = 0;  // since the last toggle, show or hide

    bool IsShown() const { return hasFocus && !caretHidden; }

    // Whether the caret toggled.
    bool Tick() {
        if (!hasFocus || ++blinkTicks < ticksPerToggle) return false;
        Set(!caretHidden);
        return true;
    }
    void Show() { Set(false); }
    void Hide() { Set(true); }

private:
    void Set(bool hidden) {
        caretHidden = hidden;
        blinkTicks = 0;
    }
};

}  // namespace orvane
