#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/calc_parameters.h"
#include "core/compile_sheet.h"
#include "core/sentence.h"

// The run as a whole, from sheet text to the two texts of the result pane. The window, the
// command-line tool and the tests all calculate through here; what they show it on comes in as
// small interfaces.

namespace orvane {

inline constexpr std::string_view messageCaption = "Message";
inline constexpr std::string_view emptySheetMessage = "Please input formulas for calculation.";
inline constexpr std::string_view largeSheetMessage =
    "The sheet is too large. No more than 64 MiB can be calculated.";
inline constexpr std::string_view waitingText = "Now is calculating,please wait...";

// A sheet's passes may make its text more than twenty times as long, and positions in a text are
// 32-bit numbers.
inline constexpr std::size_t largestSheet = std::size_t{64} << 20;

// A message that the user confirms.
class MessageDisplay {
public:
    virtual ~MessageDisplay() = default;
    virtual void ShowMessage(std::string_view message, std::string_view caption) = 0;
};

// The progress indicator: stepped by the run, seen only between Show and Hide.
class ProgressDisplay : public Progress {
public:
    virtual void Show() = 0;
    virtual void Hide() = 0;
};

// Text in one colour, as 0xRRGGBB.
struct ColouredText {
    std::string_view text;
    std::uint32_t colour;
};

// The read-only pane for the result.
class ResultDisplay {
public:
    virtual ~ResultDisplay() = default;
    // Replaces what is shown by the two texts, one behind the other, scrolled to the top, and
    // makes it visible before it returns. The first may be empty.
    virtual void ShowTexts(const ColouredText& position, const ColouredText& result) = 0;
};

struct CalculationDisplays {
    MessageDisplay& message;
    ProgressDisplay& progress;
    ResultDisplay& result;
};

// The texts of the last run.
struct CalculationTexts {
    std::string positionText;
    std::string resultText;
};

// What a caller may look at between the pipeline and the end of the run, when the sentences and
// their trees go. `errorText` is the compile error alone.
struct FinishedRun {
    SentenceList& sentences;
    const std::string& errorText;
    const CalculationTexts& texts;
    bool succeeded;  // no compile error, no formula with an error, not stopped, all is shown
    bool stopped;    // by `parameters.stop`, so that only the finished sentences are there
};

struct RunWatchers {
    CompileWishes wishes = {};
    std::function<void(const FinishedRun&)> finished = {};
};

// Calculates the sheet: shows the waiting text, empties the curves, compiles, and shows the report
// with the run's error text behind it. The caller has set the options in `parameters`; the run
// takes the nearest system bits that there are, limits the precision to 32, sets the word limits
// and borrows the progress display. A NUL ends the sheet. An empty sheet, and one larger than
// `largestSheet`, gives a message, leaves everything as it was and returns false. A run that is
// asked to stop shows the sentences that were finished, and keeps their curves.
bool RunCalculation(std::string_view sheet, CalcParameters& parameters,
                    const CalculationDisplays& displays, CalculationTexts& texts,
                    const RunWatchers& watchers = {});

// Shows the two texts in the colours that the background asks for.
void ShowResult(const CalculationTexts& texts, const CalcParameters& parameters,
                ResultDisplay& display);

}  // namespace orvane
