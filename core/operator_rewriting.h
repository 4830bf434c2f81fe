#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/edit_buffer.h"

// Infix text to function-call text, operator by operator, without a grammar: a pass finds an
// operator, finds its operands by looking outward from it, and puts a call in their place. The
// order of the passes is the precedence.

namespace orvane {

class RunStop;

// A sentence's text as a chain of pieces, so that a call can be put around its operands without
// moving them. Matching brackets know each other. A piece is a word, a bracket, a run of blanks or
// one other character; the pieces in a row are always exactly the text.
class PieceChain {
public:
    using Index = std::uint32_t;
    enum class Kind : unsigned char { end, word, open, close, blanks, other };

    struct Piece {
        std::string_view text;
        Index previous = 0;
        Index next = 0;
        Index partner = 0;  // of a bracket: its other half
        Kind kind = Kind::end;
        char sign = '\0';  // of a piece of kind `other`: its character
    };

    // A view of the text is kept until the chain reads another one. False for a text of more than
    // `most` pieces, and when the run is asked to stop.
    bool Read(std::string_view text, std::size_t most = std::size_t{1} << 31,
              const RunStop* stop = nullptr);
    std::string Text() const;
    // Of the text.
    std::size_t Length() const;
    // Writes the text to a room of that length.
    void CopyTo(char* room) const;

    // The pieces run from First() to End(), which stands in front of the first one as well.
    Index First() const { return pieces[End()].next; }
    static constexpr Index End() { return 0; }
    const Piece& operator[](Index index) const { return pieces[index]; }
    // Whether the piece is this character, which is no bracket and no blank.
    bool Is(Index index, char sign) const { return pieces[index].sign == sign; }
    bool IsWordPart(Index index) const {
        return pieces[index].kind == Kind::word || Is(index, '.');
    }
    Index SkipBlanks(Index from) const;
    Index SkipBlanksBack(Index from) const;

    // Puts `name(` in front of the piece `first` and `extra)` behind the piece `last`.
    void Wrap(Index first, Index last, std::string_view name, std::string_view extra);
    // Puts one comma in place of all that stands between two pieces.
    void SeparateByComma(Index left, Index right);
    void RemoveBetween(Index left, Index right);
    void Blank(Index index);

private:
    Index Insert(Index before, std::string_view text, Kind kind);
    void InsertSign(Index before, std::string_view text);
    // While the chain is read: a piece behind the last one.
    Index Append(std::string_view text, Kind kind);
    void AppendBracket(std::string_view text);

    std::vector<Piece> pieces;
    std::vector<Index> openBrackets;  // of the reading under way
};

// The common replacement of the binary operators: the operands around the operator at `position`,
// which is `operatorText`, go into a call of `functionName` with `extraText` behind them. Gives
// the first piece of the right operand; End() when an operand is missing, with C002-09 (left) or
// C002-10 (right) in the error text.
PieceChain::Index RewriteOperation(PieceChain& chain, int sentence, PieceChain::Index position,
                                   std::string_view operatorText, std::string_view functionName,
                                   std::string_view extraText, std::string& errorText);

}  // namespace orvane
