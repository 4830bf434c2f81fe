#include "cli/run_json.h"

#include <cmath>

#include "core/number_literal.h"
#include "locus/locus_store.h"

namespace orvane::cli {

namespace {

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

Json CurveJson(const LocusSet& curve) {
    Json points = Json::array();
    for (const LocusPoint& point : curve.points) {
        points.push_back({NumberJson(point.x), NumberJson(point.y), point.penUp});
    }
    return {
        {"sentence", curve.sentenceIndex + 1}, {"kind", LocusKindName(curve.kind)},
        {"points", std::move(points)},         {"dropped", curve.droppedCount},
        {"minX", NumberJson(curve.minX)},      {"maxX", NumberJson(curve.maxX)},
        {"minY", NumberJson(curve.minY)},      {"maxY", NumberJson(curve.maxY)},
        {"stoppedEarly", curve.stoppedEarly},  {"lastParameter", NumberJson(curve.lastParameter)},
    };
}

Json CurvesJson() {
    Json curves = Json::array();
    for (int index = 0; index < locusStore.Count(); ++index) {
        curves.push_back(CurveJson(locusStore[index]));
    }
    return curves;
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

Json RunJson(const FinishedRun& run) {
    Json sentences = Json::array();
    for (int index = 0; index < run.sentences.Count(); ++index) {
        sentences.push_back(SentenceJson(run.sentences[index], index + 1));
    }
    return {
        {"positionText", TextJson(run.texts.positionText)},
        {"resultText", TextJson(run.texts.resultText)},
        {"errorText", TextJson(run.errorText)},
        {"sentences", std::move(sentences)},
        {"curves", CurvesJson()},
    };
}

std::string Print(const Json& json) { return json.dump(-1, ' ', true) + "\n"; }

}  // namespace orvane::cli
