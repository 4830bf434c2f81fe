#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/edit_buffer.h"

// Stage 2: each call of strlen, strsum and strsumspecial becomes the number that it gives, since
// evaluation knows no strings. The stage itself, StringFunctionPass, is declared in
// core/compile_stages.h.

namespace orvane {

class RunStop;

// Replaces the next call in front of the walk by its number, which is read next: a word character
// behind the call joins it to a word. False when no call is left, and after a failure: E003-01
// for a keyword without a bracket, E003-02 for a call that can't be read. False as well when the
// run is asked to stop. `sentence` counts from zero.
bool ReplaceNextStringCall(ForwardEdit& walk, int sentence, std::string& errorText,
                           const RunStop* stop = nullptr);

// What the string function of this name gives for the text between its brackets. Nothing when
// that text holds anything but strings and the characters "+() ", when it holds no string, or
// when the function can't read what is in them.
std::optional<double> ComputeStringCall(std::string_view name, std::string_view arguments);

}  // namespace orvane
