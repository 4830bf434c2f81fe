#pragma once

#include <cstdint>

// The options and word limits of a run, and the limits of the number format itself.

namespace orvane {

class RunStop;

// The sign of life of a long run. The step loops of the functions step it every 500 rounds.
class Progress {
public:
    virtual ~Progress() = default;
    virtual void Step() = 0;
};

inline constexpr int smallestWordBits = 2;
inline constexpr int largestWordBits = 53;  // whole numbers up to here are exact in a double
inline constexpr int lastWordBitsRow = largestWordBits - smallestWordBits;  // of the list of widths
inline constexpr int largestFloatPrecision = 32;

// The one record of options for the whole process. A run limits the system bits and the precision
// and sets the word limits; everything else is as the user's controls or the command line set it.
struct CalcParameters {
    Progress* progress = nullptr;           // none: nobody watches
    const RunStop* stop = nullptr;          // none: nobody can end a run early
    double wordModulus = 4294967296.0;      // 2 to the power of the system bits
    double wordMaxUnsigned = 4294967295.0;  // modulus - 1
    double wordMaxSigned = 2147483647.0;    // modulus * 0.5 - 1
    double wordMinSigned = -2147483648.0;   // modulus * -0.5
    std::int32_t floatPrecision = 2;        // decimals; at most 32 in a run, no lower limit
    bool positionLine = false;              // a ruler above the report
    bool formulaBreak = false;              // a blank line behind each formula
    bool breakText = true;                  // a blank line ahead of each text sentence
    std::int32_t systemBitsIndex = 30;      // word bits - 2: 0 to 51 in a run
    bool showSign = true;                   // a '+' in front of what is not negative
    std::int32_t locusFine = 0;             // row of the Fine list: 0 (best) to 19
    bool blackOutput = false;               // result pane: black background
    std::int32_t calcHeightCommand = 0;     // split height of the main window
    bool alwaysOnTop = false;
    bool sweepByColumns = true;  // off: every step by the tree; the results are the same

    // The word's width is never stored; it always follows from the list's row. Before a run has
    // limited the row, ask only where it is in its range.
    int SystemBits() const { return systemBitsIndex + smallestWordBits; }
    // Sets the four word limits from the system bits.
    void SetWordLimits();
};

extern CalcParameters calcParameters;

// The bounds of whole numbers in the double format, whatever the system bits are.
struct NumberLimits {
    double largestPower = 0;     // 2^n, the largest n for which 2^n - 1 is still told apart
    double largestInteger = 0;   // 2^n - 1
    double largestHalf = 0;      // 2^n * 0.5 - 1
    double smallestInteger = 0;  // 2^n * -0.5
};

// Searched for, never assumed: n counts down from 200 to the first 2^n greater than 2^n - 1.
NumberLimits FindNumberLimits();

}  // namespace orvane
