#include "core/operator_rewriting.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "core/compile_stages.h"
#include "core/error_text.h"
#include "core/run_stop.h"
#include "core/text_scan.h"

namespace orvane {

using Index = PieceChain::Index;
using Kind = PieceChain::Kind;

// --- the chain

bool PieceChain::Read(std::string_view text, std::size_t most, const RunStop* stop) {
    pieces.assign(1, Piece{});
    openBrackets.clear();
    std::size_t at = 0;
    while (at < text.size()) {
        if (pieces.size() > most || IsStopAsked(stop)) return false;
        const char first = text[at];
        std::size_t end = at + 1;
        if (IsWordChar(first)) {
            end = FindWordEnd(text, end);
            Append(text.substr(at, end - at), Kind::word);
        } else if (first == ' ') {
            end = SkipSpaces(text, end);
            Append(text.substr(at, end - at), Kind::blanks);
        } else if (first == '(' || first == ')') {
            AppendBracket(text.substr(at, 1));
        } else {
            pieces[Append(text.substr(at, 1), Kind::other)].sign = first;
        }
        at = end;
    }
    pieces[End()].previous = static_cast<Index>(pieces.size() - 1);
    return true;
}

Index PieceChain::Append(std::string_view text, Kind kind) {
    const auto index = static_cast<Index>(pieces.size());
    pieces.push_back({text, index - 1, End(), 0, kind});
    pieces[index - 1].next = index;
    return index;
}

void PieceChain::AppendBracket(std::string_view text) {
    if (text.front() == '(') {
        openBrackets.push_back(Append(text, Kind::open));
        return;
    }
    const Index close = Append(text, Kind::close);
    if (openBrackets.empty()) return;
    pieces[close].partner = openBrackets.back();
    pieces[openBrackets.back()].partner = close;
    openBrackets.pop_back();
}

std::string PieceChain::Text() const {
    std::string text(Length(), ' ');
    CopyTo(text.data());
    return text;
}

std::size_t PieceChain::Length() const {
    std::size_t length = 0;
    for (Index at = First(); at != End(); at = pieces[at].next) length += pieces[at].text.size();
    return length;
}

void PieceChain::CopyTo(char* room) const {
    for (Index at = First(); at != End(); at = pieces[at].next) {
        const std::string_view text = pieces[at].text;
        room += text.copy(room, text.size());
    }
}

Index PieceChain::SkipBlanks(Index from) const {
    while (pieces[from].kind == Kind::blanks) from = pieces[from].next;
    return from;
}

Index PieceChain::SkipBlanksBack(Index from) const {
    while (pieces[from].kind == Kind::blanks) from = pieces[from].previous;
    return from;
}

Index PieceChain::Insert(Index before, std::string_view text, Kind kind) {
    const auto index = static_cast<Index>(pieces.size());
    const Index previous = pieces[before].previous;
    pieces.push_back({text, previous, before, 0, kind});
    pieces[previous].next = index;
    pieces[before].previous = index;
    return index;
}

void PieceChain::InsertSign(Index before, std::string_view text) {
    pieces[Insert(before, text, Kind::other)].sign = text.front();
}

void PieceChain::Wrap(Index first, Index last, std::string_view name, std::string_view extra) {
    Insert(first, name, Kind::word);
    const Index open = Insert(first, "(", Kind::open);
    const Index behind = pieces[last].next;
    for (std::size_t at = 0; at < extra.size(); ++at) {
        const std::string_view piece = extra.substr(at, 1);
        if (IsWordChar(extra[at])) {
            Insert(behind, piece, Kind::word);
        } else {
            InsertSign(behind, piece);
        }
    }
    const Index close = Insert(behind, ")", Kind::close);
    pieces[open].partner = close;
    pieces[close].partner = open;
}

void PieceChain::SeparateByComma(Index left, Index right) {
    RemoveBetween(left, right);
    InsertSign(right, ",");
}

void PieceChain::RemoveBetween(Index left, Index right) {
    pieces[left].next = right;
    pieces[right].previous = left;
}

void PieceChain::Blank(Index index) {
    pieces[index].text = " ";
    pieces[index].kind = Kind::blanks;
    pieces[index].sign = '\0';
}

// --- operands

namespace {

struct Operand {
    Index first;
    Index last;
};

std::string OperatorError(std::string_view code, std::string_view operatorText, int sentence) {
    return FillForm("%s: operator \"%s\" is used incorrect in sentence %d.",
                    {code, operatorText, NumberOf(sentence)});
}

// The operand in front of an operator: a word with its points, or a bracket with the function word
// in front of it.
std::optional<Operand> LeftOperand(const PieceChain& chain, Index operatorPiece) {
    const Index last = chain.SkipBlanksBack(chain[operatorPiece].previous);
    if (chain[last].kind == Kind::close) {
        const Index open = chain[last].partner;
        const Index word = chain.SkipBlanksBack(chain[open].previous);
        return Operand{chain[word].kind == Kind::word ? word : open, last};
    }
    if (chain[last].kind != Kind::word) return std::nullopt;
    Index first = last;
    while (chain.IsWordPart(chain[first].previous)) first = chain[first].previous;
    return Operand{first, last};
}

// The operand behind an operator, its sign included.
// Kept: a call behind a sign ends at its word, because only the operand's first character tells
// whether a bracket belongs to it. So `2^-sin(1)` is refused when its tree is built.
std::optional<Operand> RightOperand(const PieceChain& chain, Index operatorPiece) {
    const Index first = chain.SkipBlanks(chain[operatorPiece].next);
    Index last = first;
    while (chain.Is(last, '+') || chain.Is(last, '-') || chain[last].kind == Kind::blanks) {
        last = chain[last].next;
    }
    if (chain[last].kind == Kind::open) return Operand{first, chain[last].partner};
    if (chain[last].kind != Kind::word) return std::nullopt;
    while (chain.IsWordPart(chain[last].next)) last = chain[last].next;
    const Index bracket = chain.SkipBlanks(chain[last].next);
    const bool isCall = IsWordStart(chain[first].text.front()) && chain[bracket].kind == Kind::open;
    return Operand{first, isCall ? chain[bracket].partner : last};
}

}  // namespace

Index RewriteOperation(PieceChain& chain, int sentence, Index position,
                       std::string_view operatorText, std::string_view functionName,
                       std::string_view extraText, std::string& errorText) {
    const std::optional<Operand> left = LeftOperand(chain, position);
    if (!left) {
        errorText = OperatorError("C002-09", operatorText, sentence);
        return PieceChain::End();
    }
    // An operator of two characters is two pieces.
    const Index lastPiece = operatorText.size() > 1 ? chain[position].next : position;
    const std::optional<Operand> right = RightOperand(chain, lastPiece);
    if (!right) {
        errorText = OperatorError("C002-10", operatorText, sentence);
        return PieceChain::End();
    }
    chain.SeparateByComma(left->last, right->first);
    chain.Wrap(left->first, right->last, functionName, extraText);
    return right->first;
}

// --- passes

namespace {

struct BinaryOperator {
    std::string_view text;
    std::string_view function;
    std::string_view extra;
};

constexpr BinaryOperator powerOperators[] = {{"^", "power", ""}};
constexpr BinaryOperator shiftOperators[] = {{"<<", "lsh", ",0"}, {">>", "rsh", ",0"}};
constexpr BinaryOperator productOperators[] = {
    {"*", "times", ""}, {"/", "divide", ""}, {"%", "reminder", ""}};
// Two characters first, so that <= is never read as <.
constexpr BinaryOperator comparisonOperators[] = {
    {">=", "great_equals", ""}, {"<=", "less_equals", ""}, {"==", "equals", ""},
    {"<>", "not_equals", ""},   {">", "great_than", ""},   {"<", "less_than", ""}};
constexpr BinaryOperator signOperators[] = {{"+", "plus", ""}, {"-", "minus", ""}};

struct RewriteContext {
    PieceChain& chain;
    int sentence;
    std::string& errorText;
    const RunStop* stop;
};

bool StandsAt(const PieceChain& chain, Index at, std::string_view operatorText) {
    if (!chain.Is(at, operatorText.front())) return false;
    return operatorText.size() == 1 || chain.Is(chain[at].next, operatorText.back());
}

// The first of the operators that stands there; null when there is none.
const BinaryOperator* OperatorAt(const PieceChain& chain, Index at,
                                 std::span<const BinaryOperator> operators) {
    if (chain[at].kind != Kind::other) return nullptr;
    for (const BinaryOperator& candidate : operators) {
        if (StandsAt(chain, at, candidate.text)) return &candidate;
    }
    return nullptr;
}

bool IsAnywhere(const PieceChain&, Index) { return true; }

// A sign with something in front of it to add to.
bool IsBinarySign(const PieceChain& chain, Index at) {
    const Index before = chain.SkipBlanksBack(chain[at].previous);
    return chain[before].kind == Kind::close || chain[before].kind == Kind::word;
}

// Rewrites the operators of one level from left to right. What stands in front of a replacement
// holds no operator of the level any more, so the walk goes on from the right operand; starting
// again from the front would come to the same place.
void RewriteLevel(RewriteContext& context, std::span<const BinaryOperator> operators,
                  bool (*applies)(const PieceChain&, Index)) {
    PieceChain& chain = context.chain;
    Index at = chain.First();
    while (at != PieceChain::End() && !IsStopAsked(context.stop)) {
        const BinaryOperator* const found = OperatorAt(chain, at, operators);
        if (found == nullptr || !applies(chain, at)) {
            at = chain[at].next;
            continue;
        }
        at = RewriteOperation(chain, context.sentence, at, found->text, found->function,
                              found->extra, context.errorText);
    }
}

void RewriteFactorials(RewriteContext& context) {
    PieceChain& chain = context.chain;
    for (Index at = chain.First(); at != PieceChain::End() && !IsStopAsked(context.stop);
         at = chain[at].next) {
        if (!chain.Is(at, '!')) continue;
        const std::optional<Operand> operand = LeftOperand(chain, at);
        if (!operand) {
            context.errorText = OperatorError("C002-09", "!", context.sentence);
            return;
        }
        chain.RemoveBetween(operand->last, at);
        chain.Wrap(operand->first, operand->last, "factorial", "");
        chain.Blank(at);
    }
}

// A sign with nothing in front of it. A plus has no effect.
void BlankRemainingPlus(RewriteContext& context) {
    PieceChain& chain = context.chain;
    for (Index at = chain.First(); at != PieceChain::End() && !IsStopAsked(context.stop);
         at = chain[at].next) {
        if (chain.Is(at, '+')) chain.Blank(at);
    }
}

void RewriteRemainingMinus(RewriteContext& context) {
    PieceChain& chain = context.chain;
    for (Index at = chain.First(); at != PieceChain::End() && !IsStopAsked(context.stop);
         at = chain[at].next) {
        if (!chain.Is(at, '-')) continue;
        const std::optional<Operand> operand = RightOperand(chain, at);
        if (!operand) {
            context.errorText = OperatorError("C002-10", "-", context.sentence);
            return;
        }
        chain.RemoveBetween(chain[at].previous, operand->first);
        chain.Wrap(operand->first, operand->last, "neg", "");
        at = chain[operand->first].previous;
    }
}

// Which operator signs a text holds, one bit for each.
class SignSet {
public:
    constexpr SignSet() = default;
    constexpr explicit SignSet(std::string_view text) {
        for (const char c : text) bits |= bitOf[static_cast<unsigned char>(c)];
    }
    bool IsEmpty() const { return bits == 0; }
    bool HasAny(SignSet others) const { return (bits & others.bits) != 0; }

private:
    static constexpr auto bitOf = [] {
        std::array<std::uint16_t, 256> table{};
        std::uint16_t bit = 1;
        for (const unsigned char c : std::string_view("|!^<>*/%=+-")) {
            table[c] = bit;
            bit = static_cast<std::uint16_t>(bit << 1);
        }
        return table;
    }();

    std::uint16_t bits = 0;
};

struct RewritePass {
    SignSet signs;  // the pass has nothing to do in a text without any of them
    void (*rewrite)(RewriteContext& context);
};

template <const auto& operators>
void RewriteBinary(RewriteContext& context) {
    RewriteLevel(context, operators, IsAnywhere);
}

// Precedence is the order of the rows. Kept: comparisons bind tighter than plus and minus, and a
// leading minus loosest of all, so -2^2 is -4.
constexpr RewritePass rewritePasses[] = {
    {SignSet("!"), RewriteFactorials},
    {SignSet("^"), RewriteBinary<powerOperators>},
    {SignSet("<>"), RewriteBinary<shiftOperators>},
    {SignSet("*/%"), RewriteBinary<productOperators>},
    {SignSet("<>="), RewriteBinary<comparisonOperators>},
    {SignSet("+-"),
     [](RewriteContext& context) { RewriteLevel(context, signOperators, IsBinarySign); }},
    {SignSet("+"), BlankRemainingPlus},
    {SignSet("-"), RewriteRemainingMinus},
};

// Every pair of bars becomes a call of abs, from the left, without nesting. Between the bars no
// bracket may close that was not opened there. Gives false, with C002-11, when one does and when a
// bar has no partner. It works on the text itself: a word in front of a bar joins the `abs`.
bool RewriteBars(EditBuffer& buffer, int sentence, std::string& errorText) {
    const std::string_view text = buffer.View();
    std::string rewritten;
    std::size_t at = 0;
    for (std::size_t bar = text.find('|'); bar != std::string_view::npos;
         bar = text.find('|', at)) {
        std::ptrdiff_t open = 0;
        std::size_t end = bar + 1;
        while (end < text.size() && text[end] != '|' && open >= 0) {
            if (text[end] == '(') ++open;
            if (text[end] == ')') --open;
            ++end;
        }
        if (open < 0 || end == text.size()) {
            errorText = OperatorError("C002-11", "|", sentence);
            break;
        }
        rewritten.append(text.substr(at, bar - at)).append("abs(");
        rewritten.append(text.substr(bar + 1, end - bar - 1)) += ')';
        at = end + 1;
    }
    if (at > 0) buffer.AssignExactly(rewritten.append(text.substr(at)));
    return errorText.empty();
}

// A text of more pieces is refused: with a call around each operator they would take 4 GB.
constexpr std::size_t mostPieces = std::size_t{1} << 24;

// What one sentence after the other works with.
struct Workroom {
    PieceChain chain;
    std::array<char, 512> shortText;
};

// The text of a chain that looks into the buffer.
void StoreText(Workroom& room, EditBuffer& buffer) {
    const std::size_t length = room.chain.Length();
    if (length <= room.shortText.size()) {
        room.chain.CopyTo(room.shortText.data());
        buffer.AssignExactly({room.shortText.data(), length});
    } else {
        EditBuffer stored = EditBuffer::OfLength(length);
        room.chain.CopyTo(stored.Data());
        buffer = std::move(stored);
    }
}

// Runs the passes over one sentence. What was rewritten until a failure stays.
void RewriteSentence(Workroom& room, EditBuffer& buffer, int sentence, std::string& errorText,
                     const RunStop* stop) {
    PieceChain& chain = room.chain;
    const SignSet signs(buffer.View());
    if (signs.IsEmpty()) return;
    if (signs.HasAny(SignSet("|")) && !RewriteBars(buffer, sentence, errorText)) return;
    if (!chain.Read(buffer.View(), mostPieces, stop)) {
        errorText = FillForm("C002-12: sentence %d is too long.", {NumberOf(sentence)});
        return;
    }
    RewriteContext context{chain, sentence, errorText, stop};
    for (const RewritePass& pass : rewritePasses) {
        if (!signs.HasAny(pass.signs)) continue;
        pass.rewrite(context);
        if (IsStopAsked(stop)) return;
        if (!errorText.empty()) break;
    }
    StoreText(room, buffer);
}

}  // namespace

void RewriteOperators(SentenceList& sentences, std::string& errorText, const RunStop* stop) {
    Workroom room;
    for (int index = 0; index < sentences.Count() && !IsStopAsked(stop); ++index) {
        Sentence& sentence = sentences[index];
        if (!sentence.IsCalculation()) continue;
        RewriteSentence(room, sentence.text, index, errorText, stop);
        if (!errorText.empty()) return;
    }
}

}  // namespace orvane
