#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/edit_buffer.h"
#include "core/function_node.h"
#include "core/name_index.h"

// One statement of the sheet, and the ordered list of all of them.

namespace orvane {

// The headers that make a sentence something else than a formula.
inline constexpr std::string_view textHeader = "text";
inline constexpr std::string_view defineHeader = "define";

struct Sentence {
    std::string_view source;  // as it was cut from the sheet; never changed
    std::string error;        // what its own evaluation said; empty if nothing
    std::string_view header;  // the word in front of a ':', or empty; it lies in the source
    std::string_view name;    // the word in front of a '=', or empty; it lies in the source
    EditBuffer text;          // the working text; of a text sentence, what the report prints
    std::unique_ptr<NodePool> nodes;  // what lies below the root; none without a tree
    FunctionNode root;                // `root.evaluated` tells whether the sentence has a value

    explicit Sentence(std::string_view cut) : Sentence(cut, EditBuffer(cut)) {}
    // `working` holds the characters of the cut.
    Sentence(std::string_view cut, EditBuffer working) : source(cut), text(std::move(working)) {}

    // Gives up what lies below the root; its value and its error stay. The pool that held it, if
    // there was one, is handed out for the next tree.
    std::unique_ptr<NodePool> DropTree();

    bool IsText() const { return header == textHeader; }
    bool IsDefine() const { return header == defineHeader; }
    // A formula, with or without an output keyword for a header.
    bool IsCalculation() const { return !IsText() && !IsDefine(); }
};

// Owns the sentences in sheet order. Once the blank ones are gone, a sentence's index never
// changes; its number in every message is that index + 1, and all kinds count.
class SentenceList {
public:
    SentenceList() = default;
    SentenceList(SentenceList&&) = default;
    SentenceList& operator=(SentenceList&&) = default;

    // Keeps the sheet and gives it back, before any sentence is cut from it: sentences look into it
    // for their sources, and as much room again is there for their working texts.
    std::string_view KeepSheet(std::string_view text);
    // The cut must stay where it is as long as the sentence lives. Two cuts from the kept sheet
    // have at least one character between them.
    void Add(std::string_view cut);
    // Drops the sentences that hold only blanks, tabs and line feeds.
    void RemoveBlank();
    // Drops the sentences from index `count` on.
    void KeepFirst(int count);

    int Count() const { return static_cast<int>(sentences.size()); }
    bool IsEmpty() const { return sentences.empty(); }
    Sentence& operator[](int index) { return *sentences[static_cast<std::size_t>(index)]; }
    const Sentence& operator[](int index) const {
        return *sentences[static_cast<std::size_t>(index)];
    }
    // Over pointers to the sentences.
    auto begin() const { return sentences.begin(); }
    auto end() const { return sentences.end(); }

    // Takes note of the names, so that a lookup does not walk the list. To be called when all
    // names are set, and again if one changes.
    void IndexNames();
    // The first define, or the first formula, of this name; -1 if there is none. Only names noted
    // by IndexNames are known.
    int FirstDefine(std::string_view name) const { return FirstOf(name, &Sentence::IsDefine); }
    int FirstFormula(std::string_view name) const {
        return FirstOf(name, &Sentence::IsCalculation);
    }
    // Whether any sentence with a name is a define.
    bool HasNamedDefines() const { return hasNamedDefines; }
    // The next sentence, of any kind, with the name of this one; -1 if there is none.
    int NextOfSameName(int index) const { return names.Next(index); }

private:
    EditBuffer WorkingText(std::string_view cut);
    std::string_view NameAt(int index) const { return (*this)[index].name; }
    int FirstOf(std::string_view name, bool (Sentence::*isOfKind)() const) const;

    // All of these stay where they are when the list is moved.
    std::vector<char> sheet;
    std::unique_ptr<char[]> texts;              // as long, and a NUL: lent to short sentences
    std::vector<std::vector<Sentence>> blocks;  // the owners; none ever grows
    std::vector<Sentence*> sentences;
    NameIndex names;
    bool hasNamedDefines = false;
};

}  // namespace orvane
