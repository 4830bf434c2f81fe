#include "output/report_builder.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/error_text.h"
#include "output/base_text.h"

namespace orvane {

namespace {

constexpr std::string_view hideHeader = "hide";

// A sentence with `hide` that failed, or that was never reached, is shown like any other.
bool IsHidden(const Sentence& sentence) {
    return sentence.header == hideHeader && sentence.error.empty() && sentence.root.evaluated;
}

std::string PadName(std::string_view name, std::size_t width) {
    std::string padded(name);
    padded.resize(width, ' ');
    return padded + " = ";
}

// Kept: the number is padded to two characters, so two blanks stand behind 1 to 9.
std::string NotCalculatedText(int index) {
    std::string number = NumberOf(index);
    if (number.size() < 2) number += ' ';
    return "sentence " + number + " was not calculated.";
}

// What every sentence of one report shares.
struct ReportFrame {
    const CalcParameters& parameters;
    const NumberLimits& limits;
    std::size_t nameWidth;
    std::string indent;
};

bool IsShown(const Sentence& sentence) { return !sentence.IsDefine() && !IsHidden(sentence); }

// Everything of the line but its layout. Nothing where a table's text has more than `room`
// characters.
std::optional<ReportLine> MakeLine(const Sentence& sentence, int index, const ReportFrame& frame,
                                   std::size_t room) {
    ReportLine line;
    line.body = sentence.text.View();
    line.keyword = sentence.header;
    if (sentence.IsText()) {
        line.name = sentence.name;
        line.value = line.body;
        return line;
    }
    line.isFormula = true;
    line.name = sentence.name.empty() ? frame.indent : PadName(sentence.name, frame.nameWidth);
    const Value& result = sentence.root.result;
    if (!sentence.error.empty()) {
        line.value = sentence.error;
    } else if (!sentence.root.evaluated) {
        line.value = NotCalculatedText(index);
    } else if (!result.IsScalar()) {
        std::optional<std::string> text = FormatTable(result, frame.parameters, frame.indent, room);
        if (!text) return std::nullopt;
        line.value = std::move(*text);
    } else {
        line.isNumber = true;
        FormatWithKeyword(line.keyword, result.At(0, 0), frame.parameters, frame.limits, line);
    }
    return line;
}

// The widths of a whole report.
struct ReportWidths {
    std::size_t name = 0;
    DecimalColumns columns;
    bool anyNumber = false;

    void Widen(const Sentence& sentence, const CalcParameters& parameters,
               const NumberLimits& limits) {
        if (!sentence.IsCalculation()) return;
        name = std::max(name, sentence.name.size());
        const Value& result = sentence.root.result;
        if (!sentence.error.empty() || !sentence.root.evaluated || !result.IsScalar()) return;
        anyNumber = true;
        ReportLine line;
        line.isNumber = true;
        FormatWithKeyword(sentence.header, result.At(0, 0), parameters, limits, line);
        columns.Widen(line);
    }
};

// Aligned, with the blank lines that the options ask for. False when there is no room for it.
bool AppendLine(std::string& report, ReportLine& line, const DecimalColumns& columns,
                const CalcParameters& parameters, std::size_t room) {
    AlignLine(line, columns);
    if (line.line.size() > room) return false;
    if (parameters.breakText && !line.isFormula) report += '\n';
    report += line.line;
    report += '\n';
    if (parameters.formulaBreak && line.isFormula) report += '\n';
    return true;
}

std::string CutText(int index) {
    return FillForm("the report is too long: sentence %d and what follows are not shown.\n",
                    {NumberOf(index)});
}

}  // namespace

// The numbers are written twice, once to measure them: the lines of a large report, held all at
// once, would take many times the memory of its text.
std::string ReportBuilder::Build(const SentenceList& sentences, const CalcParameters& parameters,
                                 const NumberLimits& limits, std::string& positionText) {
    isCut = false;
    if (sentences.IsEmpty()) return {};
    ReportWidths widths;
    for (const auto& sentence : sentences) {
        if (IsShown(*sentence)) widths.Widen(*sentence, parameters, limits);
    }
    const ReportFrame frame{parameters, limits, widths.name, NameIndent(widths.name)};
    std::string report;
    for (int index = 0; index < sentences.Count() && !isCut; ++index) {
        if (!IsShown(sentences[index])) continue;
        const std::size_t room = largestReport - std::min(report.size(), largestReport);
        std::optional<ReportLine> line = MakeLine(sentences[index], index, frame, room);
        isCut = !line || !AppendLine(report, *line, widths.columns, parameters, room);
        if (isCut) report += CutText(index);
    }
    const bool wantsRuler = parameters.positionLine && widths.anyNumber;
    positionText = wantsRuler ? FormatPositionLine(widths.name, widths.columns) : std::string();
    return report;
}

}  // namespace orvane
