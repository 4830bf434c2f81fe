#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/calc_parameters.h"
#include "core/sentence.h"

namespace orvane {

// What a watcher sees behind each stage that ran. A stage with an error text was the last one.
struct StageReport {
    int number;  // from 1
    std::string_view name;
    const SentenceList& sentences;
    const std::string& errorText;
};
using StageWatcher = std::function<void(const StageReport& report)>;

// What else a caller wants of a compile.
struct CompileWishes {
    StageWatcher watcher = {};
    bool keepTrees = false;  // below the roots of the sentences, to be looked at afterwards
};

// Reads, checks and evaluates a whole sheet. `sentences` is empty at the start; the text is a
// private, writable copy of the sheet with a NUL behind it, which the stages change in place. The
// first five stages end the compile with their first message in `errorText`; an evaluation error
// stays with its sentence. True when every stage ran and no formula carries an error. When the
// parameters ask to stop, the error text is `stoppedMessage` and only the sentences that were
// finished stay: none before the last stage.
bool CompileSheet(SentenceList& sentences, char* textBegin, char* textEnd,
                  const CalcParameters& parameters, std::string& errorText,
                  const CompileWishes& wishes = {});

}  // namespace orvane
