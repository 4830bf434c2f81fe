#pragma once

#include <span>

#include "core/sentence.h"

// From the sheet's text to sentences with headers and names. Nothing here reports a failure; the
// checks on what was cut are core/sentence_checks.

namespace orvane {

class RunStop;

// Carriage returns become blanks, and so does everything from `//` to the end of its line, outside
// strings. Every position stays. Behind a string that is never closed nothing counts as comment.
void BlankComments(std::span<char> text);

// One sentence for each piece between semicolons outside strings. An empty piece makes none. The
// sentences look into the text. False when that makes more than `mostSentences`, which take 2 GB,
// or when the run is asked to stop.
inline constexpr int mostSentences = 1 << 22;
bool CutSentences(SentenceList& sentences, std::string_view text, const RunStop* stop = nullptr);

// Moves the word in front of a `:` from the text into the header, once.
void FindHeader(Sentence& sentence);

// Takes the word in front of a `=` as the name and blanks both. Kept: what follows the `=` is not
// looked at, so `a == 1` names `a` and the second `=` fails later.
void FindName(Sentence& sentence);

// Removes the white space in front of the text.
void TrimText(Sentence& sentence);

// All three, for every sentence. Text sentences have no name and keep their white space.
void FindLeadingWords(SentenceList& sentences, const RunStop* stop = nullptr);

// Line feeds become blanks, unless the sentence is a text.
void BlankLineFeeds(Sentence& sentence);

// Tabs outside strings become blanks.
void BlankTabs(EditBuffer& text);

}  // namespace orvane
