#include "output/report_builder.h"

#include <algorithm>

#include "core/error_text.h"
#include "output/base_text.h"

namespace orvane {

namespace {

constexpr std::string_view hideHeader = "hide";

// A sentence with `hide` that failed, or that was never reached, is shown like any other.
bool IsHidden(const Sentence& sentence) {
    return sentence.header == hideHeader && sentence.error.empty() && sentence.root.evaluated;
}

std::size_t FindNameWidth(const SentenceList& sentences) {
    std::size_t width = 0;
    for (const auto& sentence : sentences) {
        if (!sentence->IsCalculation() || IsHidden(*sentence)) continue;
        width = std::max(width, sentence->name.size());
    }
    return width;
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

// Everything of the line but its layout.
ReportLine MakeLine(const Sentence& sentence, int index, const ReportFrame& frame) {
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
        line.value = FormatTable(result, frame.parameters, frame.indent);
    } else {
        line.isNumber = true;
        FormatWithKeyword(line.keyword, result.At(0, 0), frame.parameters, frame.limits, line);
    }
    return line;
}

// Aligns each line and gives it to the report; a line is not needed behind that.
std::string JoinLines(std::vector<ReportLine>& lines, const DecimalColumns& columns,
                      const CalcParameters& parameters) {
    std::string report;
    for (ReportLine& line : lines) {
        AlignLine(line, columns);
        if (parameters.breakText && !line.isFormula) report += '\n';
        report += line.line;
        report += '\n';
        if (parameters.formulaBreak && line.isFormula) report += '\n';
        line.line = std::string();
    }
    return report;
}

}  // namespace

std::string ReportBuilder::Build(const SentenceList& sentences, const CalcParameters& parameters,
                                 const NumberLimits& limits, std::string& positionText) {
    if (sentences.IsEmpty()) return {};
    const std::size_t nameWidth = FindNameWidth(sentences);
    const ReportFrame frame{parameters, limits, nameWidth, NameIndent(nameWidth)};
    lines.reserve(static_cast<std::size_t>(sentences.Count()));
    for (int index = 0; index < sentences.Count(); ++index) {
        const Sentence& sentence = sentences[index];
        if (sentence.IsDefine() || IsHidden(sentence)) continue;
        lines.push_back(MakeLine(sentence, index, frame));
    }

    const DecimalColumns columns = FindDecimalColumns(lines);
    std::string report = JoinLines(lines, columns, parameters);
    const bool anyNumber = std::any_of(lines.begin(), lines.end(),
                                       [](const ReportLine& line) { return line.isNumber; });
    positionText = parameters.positionLine && anyNumber ? FormatPositionLine(nameWidth, columns)
                                                        : std::string();
    lines.clear();  // they look into the sentences
    return report;
}

}  // namespace orvane
