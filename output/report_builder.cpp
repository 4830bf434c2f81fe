#include "output/report_builder.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "core/error_text.h"
#include "output/base_text.h"

namespace orvane {

namespace {

constexpr std::string_view hideHeader = "hide";

// A sentence with `hide` that failed, or that was never reached, is shown like any other.
bool IsHidden(const Sentence& sentence) {
    return sentence.header == hideHeader && sentence.error.empty() && sentence.root.evaluated;
}

// Kept: the number is padded to two characters, so two blanks stand behind 1 to 9.
std::string NotCalculatedText(int index) {
    std::string number = NumberOf(index);
    if (number.size() < 2) number += ' ';
    return "sentence " + number + " was not calculated.";
}

// Whether the line shows one number, which takes part in the alignment.
bool ShowsNumber(const Sentence& sentence) {
    return sentence.IsCalculation() && sentence.error.empty() && sentence.root.evaluated &&
           sentence.root.result.IsScalar();
}

// The texts of all number lines in a row, written once, when the lines are measured, and read when
// they are laid out: the lines of a large report, held all at once, would take many times the
// memory of its text. Those behind what fills a report on their own are left out, since the report
// ends before them.
class NumberTexts {
public:
    void Write(const ReportLine& line) {
        if (texts.size() > largestReport) return;
        texts.append(line.value).append(line.note);
        lengths.push_back({line.value.size(), line.note.size()});
    }
    // Into `value` and `note` of the line, in the order of writing.
    void ReadNext(ReportLine& line) {
        const Lengths next = lengths[nextRead++];
        line.value.assign(texts, position, next.value);
        line.note.assign(texts, position + next.value, next.note);
        position += next.value + next.note;
    }
    std::size_t Count() const { return lengths.size(); }

private:
    // 32 bits each, since no number is longer.
    struct Lengths {
        Lengths(std::size_t valueLength, std::size_t noteLength)
            : value(static_cast<std::uint32_t>(valueLength)),
              note(static_cast<std::uint32_t>(noteLength)) {}
        std::uint32_t value;
        std::uint32_t note;
    };

    std::string texts;
    std::vector<Lengths> lengths;
    std::size_t nextRead = 0;
    std::size_t position = 0;
};

// What every sentence of one report shares.
struct ReportFrame {
    const CalcParameters& parameters;
    const NumberLimits& limits;
    NumberTexts numbers = {};
    std::size_t nameWidth = 0;
    DecimalColumns columns = {};
    std::string indent = {};

    // Takes in one more sentence that is shown.
    void Measure(const Sentence& sentence, ReportLine& line) {
        if (!sentence.IsCalculation()) return;
        nameWidth = std::max(nameWidth, sentence.name.size());
        if (!ShowsNumber(sentence)) return;
        line.note.clear();
        FormatWithKeyword(sentence.header, sentence.root.result.At(0, 0), parameters, limits, line);
        columns.Widen(line);
        numbers.Write(line);
    }
};

bool IsShown(const Sentence& sentence) { return !sentence.IsDefine() && !IsHidden(sentence); }

void WriteName(std::string& text, const Sentence& sentence, const ReportFrame& frame) {
    if (sentence.name.empty()) {
        text = frame.indent;
        return;
    }
    text = sentence.name;
    text.resize(frame.nameWidth, ' ');
    text += " = ";
}

// What stands in the line of a formula that shows no number. Nothing where a table's text has more
// than `room` characters.
std::optional<std::string> OtherValue(const Sentence& sentence, int index, const ReportFrame& frame,
                                      std::size_t room) {
    if (!sentence.error.empty()) return sentence.error;
    if (!sentence.root.evaluated) return NotCalculatedText(index);
    return FormatTable(sentence.root.result, frame.parameters, frame.indent, room);
}

// Everything of the line but its layout. False when its value alone takes more than the room.
bool FillLine(ReportLine& line, const Sentence& sentence, int index, ReportFrame& frame,
              std::size_t room) {
    line.body = sentence.text.View();
    line.keyword = sentence.header;
    line.isFormula = !sentence.IsText();
    line.isNumber = ShowsNumber(sentence);
    if (!line.isFormula) {
        line.name = sentence.name;
        line.value = line.body;
        return true;
    }
    WriteName(line.name, sentence, frame);
    if (line.isNumber) {
        frame.numbers.ReadNext(line);
        return true;
    }
    std::optional<std::string> value = OtherValue(sentence, index, frame, room);
    if (value) line.value = std::move(*value);
    return value.has_value();
}

// Aligned, with the blank lines that the options ask for.
void AppendLine(std::string& report, const ReportLine& line, const ReportFrame& frame) {
    if (frame.parameters.breakText && !line.isFormula) report += '\n';
    AppendAligned(report, line, frame.columns);
    report += '\n';
    if (frame.parameters.formulaBreak && line.isFormula) report += '\n';
}

std::string CutText(int index) {
    return FillForm("the report is too long: sentence %d and what follows are not shown.\n",
                    {NumberOf(index)});
}

// What the number lines take at least.
std::size_t ReportRoom(const ReportFrame& frame) {
    const std::size_t fraction = frame.columns.fraction > 0 ? frame.columns.fraction + 1 : 0;
    const std::size_t line = frame.indent.size() + frame.columns.integer + fraction + 3;
    return std::min(frame.numbers.Count() * line, largestReport);
}

}  // namespace

std::string ReportBuilder::Build(const SentenceList& sentences, const CalcParameters& parameters,
                                 const NumberLimits& limits, std::string& positionText) {
    isCut = false;
    if (sentences.IsEmpty()) return {};
    ReportFrame frame{parameters, limits};
    ReportLine line;  // one after the other
    line.isNumber = true;
    for (const Sentence* sentence : sentences) {
        if (IsShown(*sentence)) frame.Measure(*sentence, line);
    }
    frame.indent = NameIndent(frame.nameWidth);
    std::string report;
    report.reserve(ReportRoom(frame));
    for (int index = 0; index < sentences.Count() && !isCut; ++index) {
        if (!IsShown(sentences[index])) continue;
        const std::size_t length = report.size();
        isCut = !FillLine(line, sentences[index], index, frame, largestReport - length);
        if (!isCut) AppendLine(report, line, frame);
        isCut = isCut || report.size() > largestReport;
        if (isCut) report.replace(length, std::string::npos, CutText(index));
    }
    const bool wantsRuler = parameters.positionLine && frame.numbers.Count() > 0;
    positionText = wantsRuler ? FormatPositionLine(frame.nameWidth, frame.columns) : std::string();
    return report;
}

}  // namespace orvane
