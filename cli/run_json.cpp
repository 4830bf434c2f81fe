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

void AppendPoints(std::string& output, const std::vector<LocusPoint>& points) {
    const char* separator = "";
    for (const LocusPoint& point : points) {
        output.append(separator) += '[';
        AppendNumber(output, point.x);
        output += ',';
        AppendNumber(output, point.y);
        output += point.penUp ? ",true]" : ",false]";
        separator = ",";
    }
}

void AppendRows(std::string& output, const Value& value) {
    for (std::int32_t row = 0; row < value.RowCount(); ++row) {
        output += row > 0 ? ",[" : "[";
        const char* separator = "";
        for (const double cell : value.Row(row)) {
            output += separator;
            AppendNumber(output, cell);
            separator = ",";
        }
        output += ']';
    }
}

// A long list goes where the object has the empty one: as JSON values its numbers would take many
// times the memory of their text.
template <typename AppendElements>
void AppendAround(std::string& output, const Json& object, std::string_view name,
                  AppendElements append) {
    const std::string text = Dump(object);
    const std::string empty = '"' + std::string(name) + "\":[]";
    // Behind texts of the sheet, in which every quotation mark has a backslash in front of it.
    const std::size_t inside = text.find(empty) + empty.size() - 1;
    output.append(text, 0, inside);
    append();
    output.append(text, inside);
}

void AppendCurve(std::string& output, const LocusSet& curve) {
    AppendAround(output, CurveJson(curve), "points", [&] { AppendPoints(output, curve.points); });
}

void AppendSentence(std::string& output, const Sentence& sentence, int number) {
    AppendAround(output, SentenceJson(sentence, number), "rows",
                 [&] { AppendRows(output, sentence.root.result); });
}

void AppendText(std::string& output, std::string_view name, std::string_view text) {
    output.append("\"").append(name).append("\":").append(Dump(TextJson(text)));
}

// A member whose value is a list, one element behind the other.
template <typename AppendElement>
void AppendList(std::string& output, std::string_view name, int count, AppendElement append) {
    output.append(",\"").append(name).append("\":[");
    for (int index = 0; index < count; ++index) {
        if (index > 0) output += ',';
        append(index);
    }
    output += ']';
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

std::string PrintRun(const FinishedRun& run) {
    std::string output = "{";
    AppendText(output, "positionText", run.texts.positionText);
    AppendText(output += ',', "resultText", run.texts.resultText);
    AppendText(output += ',', "errorText", run.errorText);
    AppendList(output, "sentences", run.sentences.Count(),
               [&](int index) { AppendSentence(output, run.sentences[index], index + 1); });
    AppendList(output, "curves", locusStore.Count(),
               [&](int index) { AppendCurve(output, locusStore[index]); });
    output += "}\n";
    return output;
}

std::string Print(const Json& json) { return Dump(json) + "\n"; }

}  // namespace orvane::cli
