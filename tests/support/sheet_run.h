#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/calculation.h"
#include "core/calc_parameters.h"
#include "core/sentence.h"

// A sheet in one call, for tests.

namespace orvane::test {

// A sheet behind all stages that it passed, with the trees of its sentences.
struct CompiledSheet {
    SentenceList sentences;
    std::string errorText;
    bool succeeded = false;
};

// Options with the word limits that go with the system bits.
CalcParameters ParametersForBits(int bits);

CompiledSheet Compile(std::string_view sheet, const CalcParameters& parameters = {});

using Rows = std::vector<std::vector<double>>;

// The value of a node's result, row by row.
Rows RowsOf(const Value& value);

// What one formula gives. `error` is the compile error or, if there is none, the error of the last
// sentence.
struct Evaluated {
    Rows rows;
    bool evaluated = false;
    bool complex = false;
    std::string error;
};

// Compiles the sheet and takes the value of its last sentence.
Evaluated Evaluate(std::string_view sheet, const CalcParameters& parameters = {});

// The number that the last sentence gives; NaN if it gives none.
double NumberFrom(std::string_view sheet, const CalcParameters& parameters = {});

// Both texts of a whole run, through RunCalculation; the message of an empty sheet in `message`.
struct RanSheet {
    std::string positionText;
    std::string resultText;
    std::string message;
};
RanSheet Run(std::string_view sheet, CalcParameters parameters = {});

// Equal to the last bit: tells 0 from -0, and NaN from everything but the same NaN.
bool SameBits(double left, double right);

}  // namespace orvane::test
