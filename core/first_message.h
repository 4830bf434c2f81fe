#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include "core/run_stop.h"
#include "core/sentence.h"

namespace orvane {

// Runs checks over all sentences and gives the one message that counts, or an empty text. An
// earlier check has the say before a later one, whatever their sentences, and each check speaks for
// the first sentence that fails it: just as if one check after the other went through the sheet.
// All of them look at a sentence while it is at hand, since a large sheet does not stay in the
// processor's cache. `messageOf(check, index)` gives the message of a sentence, or an empty text.
// What comes out of a run that is asked to stop means nothing.
template <typename Check, typename MessageOf>
std::string FirstMessage(std::span<const Check> checks, const SentenceList& sentences,
                         const RunStop* stop, MessageOf messageOf) {
    std::string message;
    for (int index = 0; index < sentences.Count() && !checks.empty(); ++index) {
        for (std::size_t at = 0; at < checks.size(); ++at) {
            if (IsStopAsked(stop)) return message;
            std::string found = messageOf(checks[at], index);
            if (found.empty()) continue;
            message = std::move(found);
            checks = checks.first(at);  // only an earlier check can still win
        }
    }
    return message;
}

}  // namespace orvane
