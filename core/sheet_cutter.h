#pragma once

#include <span>

#include "core/sentence.h"

// From the sheet's text to sentences with headers and names. Nothing here reports a failure; the
// checks on what was cut are core/sentence_checks.

namespace orvane {

// Carriage returns become blanks, and so does everything from `//` to the end of its line, outside
// strings. Every position stays. Behind a string that is never closed nothing counts as comment.
void BlankComments(std::span<char> text);

// One sentence for each piece between semicolons outside strings. An empty piece makes none.
void CutSentences(SentenceList& sentences, std::string_view text);

// Moves the word in front of a `:` from each text into its header, once.
void FindHeaders(SentenceList& sentences);

// Takes the word in front of a `=` as the name and blanks both, in all but text sentences. Kept:
// what follows the `=` is not looked at, so `a == 1` names `a` and the second `=` fails later.
void FindNames(SentenceList& sentences);

// Removes the white space in front of each text, except in text sentences.
void TrimTexts(SentenceList& sentences);

// Line feeds become blanks in all but text sentences; so do, later, tabs outside strings.
void BlankLineFeeds(SentenceList& sentences);
void BlankTabs(SentenceList& sentences);

}  // namespace orvane
