#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "storage/archive.h"

// Names and texts of sheets on their way into an archive and out of it, and what keeps one from
// being stored as it is.

namespace orvane {

// Whether text goes through the code page (UTF-8 outside) or is passed on byte by byte.
enum class ExchangeForm { utf8, raw };

// Why a text can't be stored as it is, in words for people; nothing when it can. `what` names it in
// the message. It holds characters outside the code page:
std::optional<std::string> OutsideProblem(std::string_view what, std::string_view given,
                                          ExchangeForm form);
// ... or a mark byte or a NUL as well:
std::optional<std::string> StorageProblem(std::string_view what, std::string_view given,
                                          ExchangeForm form);
// ... or it is a name, which besides must be one line with something in it and no blanks at its
// ends: the program trims every name that is typed in.
std::optional<std::string> NameProblem(std::string_view given, ExchangeForm form);

// The bytes to store; characters outside the code page become '?'.
std::string StoredBytes(std::string_view given, ExchangeForm form);
// The bytes of a name that is looked for; nothing where no stored name can be this one.
std::optional<std::string> SearchedName(std::string_view given, ExchangeForm form);
// The other way.
std::string ShownBytes(std::string_view stored, ExchangeForm form);

}  // namespace orvane
