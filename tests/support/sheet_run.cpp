#include "tests/support/sheet_run.h"

#include <bit>
#include <cstdint>
#include <limits>

#include "core/compile_sheet.h"

namespace orvane::test {

namespace {

class SilentDisplays : public MessageDisplay, public ProgressDisplay, public ResultDisplay {
public:
    std::string message;

    void ShowMessage(std::string_view text, std::string_view) override { message = text; }
    void Step() override {}
    void Show() override {}
    void Hide() override {}
    void ShowTexts(const ColouredText&, const ColouredText&) override {}
};

}  // namespace

CalcParameters ParametersForBits(int bits) {
    CalcParameters parameters;
    parameters.systemBitsIndex = bits - smallestWordBits;
    parameters.SetWordLimits();
    return parameters;
}

CompiledSheet Compile(std::string_view sheet, const CalcParameters& parameters) {
    CompiledSheet compiled;
    std::string text(sheet);
    compiled.succeeded = CompileSheet(compiled.sentences, text.data(), text.data() + text.size(),
                                      parameters, compiled.errorText, {{}, true});
    return compiled;
}

Rows RowsOf(const Value& value) {
    Rows rows;
    for (std::int32_t row = 0; row < value.RowCount(); ++row) {
        const ConstValueRow cells = value.Row(row);
        rows.emplace_back(cells.begin(), cells.end());
    }
    return rows;
}

Evaluated Evaluate(std::string_view sheet, const CalcParameters& parameters) {
    const CompiledSheet compiled = Compile(sheet, parameters);
    Evaluated evaluated;
    evaluated.error = compiled.errorText;
    if (compiled.sentences.IsEmpty()) return evaluated;
    const Sentence& last = compiled.sentences[compiled.sentences.Count() - 1];
    if (evaluated.error.empty()) evaluated.error = last.error;
    evaluated.evaluated = last.root.evaluated;
    evaluated.rows = RowsOf(last.root.result);
    evaluated.complex = last.root.result.complexMark;
    return evaluated;
}

double NumberFrom(std::string_view sheet, const CalcParameters& parameters) {
    const Evaluated evaluated = Evaluate(sheet, parameters);
    const bool isNumber =
        evaluated.evaluated && evaluated.rows.size() == 1 && evaluated.rows.front().size() == 1;
    return isNumber ? evaluated.rows[0][0] : std::numeric_limits<double>::quiet_NaN();
}

RanSheet Run(std::string_view sheet, CalcParameters parameters) {
    SilentDisplays displays;
    CalculationTexts texts;
    RunCalculation(sheet, parameters, {displays, displays, displays}, texts);
    return {texts.positionText, texts.resultText, displays.message};
}

bool SameBits(double left, double right) {
    return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

}  // namespace orvane::test
