#include "editor/call_hints.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "core/text_scan.h"
#include "functions/keyword_texts.h"

namespace orvane {

namespace {

void AddRun(std::string_view text, Colour colour, std::vector<HintRun>& runs) {
    if (!text.empty()) runs.push_back({std::string(text), colour});
}

// Parameter by parameter: its comma, its type and what else is told of it.
void AddParameters(std::string_view piece, Colour typeColour, std::vector<HintRun>& runs) {
    std::size_t at = 0;
    while (at < piece.size()) {
        if (piece[at] == ',') AddRun(piece.substr(at++, 1), hintColours::plain, runs);
        const std::size_t typeEnd = std::min(piece.find_first_of(" ,", at), piece.size());
        const std::size_t end = std::min(piece.find(',', typeEnd), piece.size());
        AddRun(piece.substr(at, typeEnd - at), typeColour, runs);
        AddRun(piece.substr(typeEnd, end - typeEnd), hintColours::plain, runs);
        at = end;
    }
}

// How many more brackets open than close from a position to the end of a text. A string is jumped
// over and a comment ends the count, so what counts depends on where the reading starts; going
// leftward, one pass over the text answers for all positions.
class BracketCount {
public:
    explicit BracketCount(std::string_view countedText) : text(countedText), at(text.size()) {}

    // From each position asked for to the next one `start` must not rise.
    std::int64_t From(std::size_t start) {
        while (at > start) StepLeft();
        return count;
    }

private:
    void StepLeft() {
        --at;
        if (text.substr(at, 2) == "//") {
            count = 0;
        } else if (text[at] == '(') {
            ++count;
        } else if (text[at] == ')') {
            --count;
        } else if (text[at] == '"') {
            count = std::exchange(countBehindQuote, count);
        }
    }

    std::string_view text;
    std::size_t at;
    std::int64_t count = 0;
    std::int64_t countBehindQuote = 0;  // from behind the nearest quote to the right, if any
};

}  // namespace

std::vector<HintRun> CallHint::HeadRuns() const {
    std::vector<HintRun> runs;
    AddRun(prefix, hintColours::returnText, runs);
    AddRun(name, hintColours::plain, runs);
    return runs;
}

std::vector<HintRun> CallHint::RowRuns(std::size_t row) const {
    std::vector<HintRun> runs;
    AddRun(" ( ", hintColours::plain, runs);
    AddParameters(parameterRows[row], hintColours::mainType, runs);
    AddParameters(optionalRows[row], hintColours::optionalType, runs);
    AddRun(" )", hintColours::plain, runs);
    return runs;
}

CallHint HintFor(const KeywordEntry& entry) {
    CallHint hint;
    if (entry.returnText != nullptr) hint.prefix = std::string(entry.returnText) + " ";
    hint.name = entry.name;
    for (Signature& signature : SignaturesOf(entry)) {
        hint.parameterRows.push_back(std::move(signature.mainParams));
        hint.optionalRows.push_back(std::move(signature.optionalParams));
    }
    return hint;
}

std::optional<OpenCall> CallOpenedAt(std::string_view line, std::int32_t caretCol) {
    if (caretCol < 2 || static_cast<std::size_t>(caretCol) > line.size()) return std::nullopt;
    auto nameEnd = static_cast<std::size_t>(caretCol) - 1;
    if (line[nameEnd] != '(') return std::nullopt;
    while (nameEnd > 0 && (line[nameEnd - 1] == ' ' || line[nameEnd - 1] == '\t')) --nameEnd;
    std::size_t start = nameEnd;
    while (start > 0 && IsWordChar(line[start - 1])) --start;
    const KeywordEntry* entry = keywordTable.FindFunction(line.substr(start, nameEnd - start));
    if (entry == nullptr) return std::nullopt;
    return OpenCall{static_cast<std::int32_t>(start), entry};
}

void CallStack::Push(const OpenCall& call, std::int32_t caretLine) {
    if (line != caretLine) calls.clear();
    calls.push_back(call);
    line = caretLine;
}

HintChange CallStack::Update(std::string_view lineText, std::int32_t caretLine,
                             std::int32_t caretCol) {
    const std::size_t before = calls.size();
    if (caretLine != line) calls.clear();
    const std::string_view ahead = lineText.substr(0, static_cast<std::size_t>(caretCol));
    const auto startOf = [](const OpenCall& call) { return static_cast<std::size_t>(call.column); };
    std::erase_if(calls, [&](const OpenCall& call) { return startOf(call) >= ahead.size(); });
    BracketCount brackets(ahead);
    while (!calls.empty() && brackets.From(startOf(calls.back())) <= 0) calls.pop_back();
    if (calls.empty()) return HintChange::hides;
    return calls.size() == before ? HintChange::stays : HintChange::showsNewest;
}

}  // namespace orvane
