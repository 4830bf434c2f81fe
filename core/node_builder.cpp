#include "core/node_builder.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

#include "core/error_text.h"
#include "core/number_literal.h"
#include "core/run_stop.h"
#include "core/substitution.h"
#include "core/text_scan.h"
#include "functions/keyword_table.h"

namespace orvane {

namespace {

constexpr std::int32_t none = -1;

// So many elements, not set, which take memory of their own only when there are more than `few`:
// most formulas are short.
template <typename Element, std::size_t few>
class ScratchArray {
public:
    explicit ScratchArray(std::size_t count)
        : many(count > few ? std::make_unique_for_overwrite<Element[]>(count) : nullptr),
          first(many ? many.get() : own.data()) {}
    ScratchArray(const ScratchArray&) = delete;
    ScratchArray& operator=(const ScratchArray&) = delete;

    Element& operator[](std::size_t index) { return first[index]; }
    const Element& operator[](std::size_t index) const { return first[index]; }

private:
    std::array<Element, few> own;
    std::unique_ptr<Element[]> many;
    Element* first;
};

// Where the brackets of a text close and how their commas follow each other, read in one walk, so
// that a list nested in lists is not scanned once for each of them.
class BracketLinks {
public:
    explicit BracketLinks(std::string_view wholeText) : text(wholeText), links(text.size()) {
        static constexpr CharacterSet marks("(,)");
        for (std::size_t at = marks.Find(text, 0); at < text.size();
             at = marks.Find(text, at + 1)) {
            const auto mark = static_cast<std::int32_t>(at);
            links[at] = {none, none};
            if (text[at] == '(') {
                links[at].closing = lastMark;
                lastMark = mark;
            } else if (lastMark != none) {
                LinkAt(lastMark).following = mark;
                if (text[at] == ',') {
                    links[at].closing = ListOf(lastMark);
                    lastMark = mark;
                } else {
                    CloseList(mark);
                }
            }
        }
        while (lastMark != none) CloseList(none);
    }

    // The `)` of the `(` at a position, or none.
    std::int32_t Closing(std::size_t bracket) const { return links[bracket].closing; }
    // The next comma of the list that the `(` or `,` at a position belongs to, or its `)`.
    std::int32_t Following(std::size_t mark) const { return links[mark].following; }

private:
    // While a list is open, `closing` of its bracket is the last mark of the list around it, which
    // goes on there, and `closing` of a comma is the bracket of its list.
    struct Link {
        std::int32_t closing;
        std::int32_t following;
    };

    Link& LinkAt(std::int32_t mark) { return links[static_cast<std::size_t>(mark)]; }
    // The bracket of the open list that a bracket or a comma belongs to.
    std::int32_t ListOf(std::int32_t mark) {
        return text[static_cast<std::size_t>(mark)] == '(' ? mark : LinkAt(mark).closing;
    }
    void CloseList(std::int32_t close) {
        Link& bracket = LinkAt(ListOf(lastMark));
        lastMark = bracket.closing;
        bracket.closing = close;
    }

    std::string_view text;
    ScratchArray<Link, 128> links;  // of other characters than brackets and commas not set
    std::int32_t lastMark = none;   // of the innermost open list
};

constexpr ErrorCode wrongForm = {"E002-", "01"};
constexpr ErrorCode noList = {"E002-", "02"};
constexpr ErrorCode notClosed = {"E002-", "03"};
constexpr ErrorCode wrongList = {"E002-", "04"};
constexpr ErrorCode tooManyCells = {"E002-", "05"};
constexpr ErrorCode tooManyNodes = {"E002-", "06"};

class TreeBuilder {
public:
    TreeBuilder(SentenceList& list, int sentence, std::string_view wholeText,
                const RunStop* runStop, std::string& error)
        : sentences(list),
          sentenceIndex(sentence),
          pool(PoolOf(list[sentence])),
          text(wholeText),
          links(wholeText),
          stop(runStop),
          errorText(error) {}

    // Parents before children, children in order, each with all that is under it before the next.
    // `cursor` of a node under way is the mark in front of the parameter that comes next.
    void Build(FunctionNode& root) {
        root.text = text;
        const auto count = static_cast<std::size_t>(
            std::count_if(text.begin(), text.end(), [](char c) { return c == '(' || c == ','; }));
        if (count > largestTree) {
            SentenceErrorText(tooManyNodes, sentenceIndex, "formula is too long", errorText);
            return;
        }
        pool.Reserve(count);
        FunctionNode* node = Start(root) ? &root : nullptr;
        while (node != nullptr && errorText.empty() && !TakeStop(stop, errorText)) {
            FunctionNode* child = NextParameter(*node);
            if (child == nullptr) {
                node = node == &root ? nullptr : node->parent;
            } else if (Start(*child)) {
                node = child;
            }
        }
    }

private:
    static NodePool& PoolOf(Sentence& sentence) {
        if (!sentence.nodes) sentence.nodes = std::make_unique<NodePool>();
        return *sentence.nodes;
    }

    std::size_t PositionOf(std::string_view piece) const {
        return static_cast<std::size_t>(piece.data() - text.data());
    }
    char CharacterAt(std::size_t position, std::size_t end) const {
        return position < end ? text[position] : '\0';
    }

    // Finds out what the node is. True when it has a list of parameters to build.
    bool Start(FunctionNode& node) {
        const std::size_t end = PositionOf(node.text) + node.text.size();
        const std::size_t start = std::min(SkipSpaces(text, PositionOf(node.text)), end);
        const char first = CharacterAt(start, end);
        if (IsDigit(first)) return BuildNumber(node);
        if (IsWordStart(first)) return BuildWord(node, start, end);
        if (first == '(') {
            node.kind = NodeKind::brace;
            return StartList(node, start, end);
        }
        return SentenceErrorText(wrongForm, sentenceIndex, "param format error", errorText);
    }

    bool BuildNumber(FunctionNode& node) {
        node.kind = NodeKind::number;
        const std::optional<double> number = ParseNumberLiteral(node.text);
        if (!number) {
            return SentenceErrorText(wrongForm, sentenceIndex, "number format error", errorText);
        }
        node.result.SetReal(*number);
        node.evaluated = true;
        return false;
    }

    bool BuildWord(FunctionNode& node, std::size_t start, std::size_t end) {
        const std::size_t wordEnd = std::min(FindWordEnd(text, start), end);
        const std::string_view word = text.substr(start, wordEnd - start);
        const std::size_t behind = SkipSpaces(text, wordEnd);
        if (CharacterAt(behind, end) == '(') {
            node.kind = NodeKind::function;
            node.functionName = word;
            node.keyword = keywordTable.FindFunction(word);
            return StartList(node, behind, end);
        }
        const int formula = FindFormula(sentences, word, sentenceIndex);
        if (formula < 0) {
            node.kind = NodeKind::variable;
            node.variableName = word;
        } else {
            BuildReference(node, sentences[formula].root, word);
        }
        return false;
    }

    // The formula in front is finished, so its value can be copied now.
    void BuildReference(FunctionNode& node, const FunctionNode& formula, std::string_view word) {
        node.kind = NodeKind::formulaReference;
        copiedCells += static_cast<std::int64_t>(formula.result.AllCells().size());
        if (copiedCells > largestTable) {
            SentenceErrorText(tooManyCells, sentenceIndex, "values of formula names are too large",
                              errorText);
            return;
        }
        node.result.CopyFrom(formula.result);
        node.evaluated = formula.evaluated;
        if (node.evaluated) return;
        // Kept: the number in this one message counts from zero.
        errorText = FillForm("sentence %d was not calculated because it uses formula name \"%s\"",
                             {std::to_string(sentenceIndex), word});
    }

    bool StartList(FunctionNode& node, std::size_t open, std::size_t end) {
        const auto fail = [&](ErrorCode code, std::string_view message) {
            return FunctionErrorText(code, sentenceIndex, node.functionName, message, errorText);
        };
        if (CharacterAt(open, end) != '(') return fail(noList, "left brace");
        const std::int32_t close = links.Closing(open);
        if (close == none || static_cast<std::size_t>(close) >= end) {
            return fail(notClosed, "right brace");
        }
        if (SkipSpaces(text, static_cast<std::size_t>(close) + 1) < end) {
            return fail(wrongList, "right brace");
        }
        std::size_t count = 0;
        for (std::int32_t at = static_cast<std::int32_t>(open); at != close; ++count) {
            at = links.Following(static_cast<std::size_t>(at));
        }
        // The list grows into this room parameter by parameter.
        node.children = pool.Take(count).first(0);
        node.cursor = static_cast<std::int32_t>(open);
        return true;
    }

    // The next parameter of a list as a new child; null at the end of the list and after an error.
    FunctionNode* NextParameter(FunctionNode& node) {
        const auto mark = static_cast<std::size_t>(node.cursor);
        if (text[mark] == ')') return nullptr;
        const std::size_t start = SkipSpaces(text, mark + 1);
        if (text[start] == ')') return nullptr;
        const auto end = static_cast<std::size_t>(links.Following(mark));
        if (start == end) {
            NodeErrorText(wrongList, sentenceIndex, node, "parameter coma is incorrect", errorText);
            return nullptr;
        }
        node.cursor = static_cast<std::int32_t>(end);
        node.children = {node.children.data(), node.children.size() + 1};
        FunctionNode& child = node.children.back();
        child.parent = &node;
        child.text = text.substr(start, end - start);
        return &child;
    }

    SentenceList& sentences;
    int sentenceIndex;
    NodePool& pool;
    std::string_view text;
    BracketLinks links;
    const RunStop* stop;
    std::int64_t copiedCells = 0;  // of all formulas that the sentence refers to
    std::string& errorText;
};

// The last character in front of `position` that is no blank.
std::size_t LastBefore(std::string_view text, std::size_t position) {
    return text.find_last_not_of(' ', position - 1);
}

// Whether a bracket opens directly behind another one, blanks apart.
bool HasBracketInBracket(std::string_view text) {
    for (std::size_t open = text.find('('); open != std::string_view::npos;
         open = text.find('(', open + 1)) {
        const std::size_t behind = SkipSpaces(text, open + 1);
        if (behind < text.size() && text[behind] == '(') return true;
    }
    return false;
}

}  // namespace

void RemoveDoubledBrackets(EditBuffer& buffer) {
    const std::string_view text = buffer.View();
    if (!HasBracketInBracket(text)) return;
    const BracketLinks links(text);
    std::size_t outer = text.find('(');
    while (outer != std::string_view::npos) {
        std::int32_t close = links.Closing(outer);
        std::size_t inner = SkipSpaces(text, outer + 1);
        while (close != none && inner < text.size() && text[inner] == '(' &&
               static_cast<std::int32_t>(LastBefore(text, static_cast<std::size_t>(close))) ==
                   links.Closing(inner)) {
            close = links.Closing(inner);
            buffer.Data()[inner] = ' ';
            buffer.Data()[close] = ' ';
            inner = SkipSpaces(text, inner + 1);
        }
        outer = text.find('(', inner);
    }
}

void BuildNode(FunctionNode& node, SentenceList& sentences, int sentenceIndex,
               const CalcParameters& parameters, std::string_view text, std::string& errorText) {
    TreeBuilder(sentences, sentenceIndex, text, parameters.stop, errorText).Build(node);
}

}  // namespace orvane
