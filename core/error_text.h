#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "core/function_node.h"

// The forms of every message a run can give. A former replaces the whole error text, so that a
// caller can put its own message in place of a helper's, and gives false, so that a check can end
// with `return former(...)`. `sentence` is the index from zero; messages show it + 1.

namespace orvane {

// Class and code of a message: "E006-" and "05". A check that several families share has no code
// of its own and shows the class alone.
struct ErrorCode {
    std::string_view errorClass;
    std::string_view code;
};

// "%s sentence %2d: %s."
bool SentenceErrorText(ErrorCode code, int sentence, std::string_view message,
                       std::string& errorText);

// "%s sentence %2d: \"%s\"." with the piece of sheet text shortened.
bool QuotedErrorText(ErrorCode code, int sentence, std::string_view piece, std::string& errorText);

// "%s sentence %2d: function \"%s\": %s."
bool FunctionErrorText(ErrorCode code, int sentence, std::string_view functionName,
                       std::string_view message, std::string& errorText);

// The function form for a node with a function name, the sentence form for any other.
bool NodeErrorText(ErrorCode code, int sentence, const FunctionNode& node, std::string_view message,
                   std::string& errorText);

// The function form for a result that is infinite or no number.
bool NonFiniteError(ErrorCode code, int sentence, std::string_view functionName,
                    std::string& errorText);

// Messages of the compile stages quote their own words; this fills one in. Each "%s" and "%d" of
// the form takes the next argument, in order.
std::string FillForm(std::string_view form, std::initializer_list<std::string_view> arguments);

// A sentence's or a line's number as messages show it: the index from zero, plus one.
std::string NumberOf(int index);

}  // namespace orvane
