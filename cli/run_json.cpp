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

Json RowsJson(const Value& value) {
    Json rows = Json::array();
    for (std::int32_t row = 0; row < value.RowCount(); ++row) {
        Json cells = Json::array();
        for (const double cell : value.Row(row)) cells.push_back(NumberJson(cell));
        rows.push_back(std::move(cells));
    }
    return rows;
}

Json SentenceJson(const Sentence& sentence, int number) {
    return {
        {"number", number},
        {"kind", KindName(sentence)},
        {"header", TextJson(sentence.header)},
        {"name", TextJson(sentence.name)},
        {"text", TextJson(sentence.text.View())},
        {"evaluated", sentence.root.evaluated},
        {"complex", sentence.root.result.complexMark},
        {"rows", RowsJson(sentence.root.result)},
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

void AppendCurve(std::string& output, const LocusSet& curve) {
    const std::string text = Dump(CurveJson(curve));
    const std::size_t points = text.find("[]") + 1;
    output.append(text, 0, points);
    AppendPoints(output, curve.points);
    output.append(text, points);
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
    const Json texts = {{"positionText", TextJson(run.texts.positionText)},
                        {"resultText", TextJson(run.texts.resultText)},
                        {"errorText", TextJson(run.errorText)}};
    std::string output = Dump(texts);
    output.pop_back();  // the object goes on
    AppendList(output, "sentences", run.sentences.Count(),
               [&](int index) { output += Dump(SentenceJson(run.sentences[index], index + 1)); });
    AppendList(output, "curves", locusStore.Count(),
               [&](int index) { AppendCurve(output, locusStore[index]); });
    return output + "}\n";
}

std::string Print(const Json& json) { return Dump(json) + "\n"; }

}  // namespace orvane::cli
