#include "cli/run_json.h"

#include <cmath>

#include "core/number_literal.h"
#include "locus/locus_store.h"

namespace orvane::cli {

namespace {

std::string Dump(const Json& json) { return json.dump(-1, ' ', true); }

std::string_view KindName(const Sentence& sentence) {
    if (sentence.IsText()) return "text";
    return sentence.IsDefine() ? "define" : "calculation";
}

// Everything of a sentence but its rows, of which there may be millions.
Json SentenceJson(const Sentence& sentence, int number) {
    return {
        {"number", number},
        {"kind", KindName(sentence)},
        {"header", TextJson(sentence.header)},
        {"name", TextJson(sentence.name)},
        {"text", TextJson(sentence.text.View())},
        {"evaluated", sentence.root.evaluated},
        {"complex", sentence.root.result.complexMark},
        {"rows", Json::array()},
        {"error", TextJson(sentence.error)},
    };
}

// Everything of a curve but its points, of which there may be millions.
Json CurveJson(const LocusSet& curve) {
    return {
        {"sentence", curve.sentenceIndex + 1},
        {"kind", LocusKindName(curve.kind)},
        {"points", Json::array()},
        {"dropped", curve.droppedCount},
        {"minX", NumberJson(curve.minX)},
        {"maxX", NumberJson(curve.maxX)},
        {"minY", NumberJson(curve.minY)},
        {"maxY", NumberJson(curve.maxY)},
        {"stoppedEarly", curve.stoppedEarly},
        {"lastParameter", NumberJson(curve.lastParameter)},
    };
}

// As NumberJson prints it.
void AppendNumber(std::string& output, double number) {
    std::string text = FormatShortest(number);
    if (!std::isfinite(number)) {
        text = '"' + text + '"';
    } else if (text.find_first_of(".e") == std::string::npos) {
        text += ".0";  // or a reader may take a minus zero for the whole number 0
    }
    output += text;
}

void AppendPoints(PiecewiseText& output, const std::vector<LocusPoint>& points) {
    const char* separator = "[";
    for (const LocusPoint& point : points) {
        std::string& end = output.End();
        end += separator;
        AppendNumber(end, point.x);
        end += ',';
        AppendNumber(end, point.y);
        end += point.penUp ? ",true]" : ",false]";
        separator = ",[";
        output.Offer();
    }
}

void AppendRows(PiecewiseText& output, const Value& value) {
    for (std::int32_t row = 0; row < value.RowCount(); ++row) {
        output.End() += row > 0 ? ",[" : "[";
        const char* separator = "";
        for (const double cell : value.Row(row)) {
            output.End() += separator;
            AppendNumber(output.End(), cell);
            separator = ",";
            output.Offer();
        }
        output.End() += ']';
    }
}

// A long list goes where the object has the empty one: as JSON values its numbers would take many
// times the memory of their text.
template <typename AppendElements>
void AppendAround(PiecewiseText& output, const Json& object, std::string_view name,
                  AppendElements append) {
    const std::string text = Dump(object);
    const std::string empty = '"' + std::string(name) + "\":[]";
    // Behind texts of the sheet, in which every quotation mark has a backslash in front of it.
    const std::size_t inside = text.find(empty) + empty.size() - 1;
    output.End().append(text, 0, inside);
    append();
    output.End().append(text, inside);
    output.Offer();
}

void AppendCurve(PiecewiseText& output, const LocusSet& curve) {
    AppendAround(output, CurveJson(curve), "points", [&] { AppendPoints(output, curve.points); });
}

void AppendSentence(PiecewiseText& output, const Sentence& sentence, int number) {
    AppendAround(output, SentenceJson(sentence, number), "rows",
                 [&] { AppendRows(output, sentence.root.result); });
}

// A member that is a text, in parts: every byte is a character of its own.
void AppendText(PiecewiseText& output, std::string_view name, std::string_view text) {
    constexpr std::size_t partSize = std::size_t{1} << 16;
    output.End().append("\"").append(name).append("\":\"");
    for (std::size_t start = 0; start < text.size(); start += partSize) {
        const std::string part = Dump(TextJson(text.substr(start, partSize)));
        output.End().append(part, 1, part.size() - 2);
        output.Offer();
    }
    output.End() += '"';
}

// A member whose value is a list, one element behind the other.
template <typename AppendElement>
void AppendList(PiecewiseText& output, std::string_view name, int count, AppendElement append) {
    output.End().append(",\"").append(name).append("\":[");
    for (int index = 0; index < count; ++index) {
        if (index > 0) output.End() += ',';
        append(index);
    }
    output.End() += ']';
}

}  // namespace

Json TextJson(std::string_view text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xC0 | (byte >> 6));
            utf8 += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return utf8;
}

Json NumberJson(double number) {
    if (std::isfinite(number)) return number;
    return FormatFixed(number, 0, false);
}

void PrintRun(const FinishedRun& run, PiecewiseText& output) {
    output.End() += '{';
    AppendText(output, "positionText", run.texts.positionText);
    output.End() += ',';
    AppendText(output, "resultText", run.texts.resultText);
    output.End() += ',';
    AppendText(output, "errorText", run.errorText);
    AppendList(output, "sentences", run.sentences.Count(),
               [&](int index) { AppendSentence(output, run.sentences[index], index + 1); });
    AppendList(output, "curves", locusStore.Count(),
               [&](int index) { AppendCurve(output, locusStore[index]); });
    output.End() += "}\n";
    output.HandOn();
}

std::string Print(const Json& json) { return Dump(json) + "\n"; }

}  // namespace orvane::cli
