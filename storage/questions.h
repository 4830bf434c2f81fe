#pragma once

#include <string_view>

// How a model talks to the user. Every box has the same caption and stays until it is answered; a
// test hands prepared answers. Texts may have line feeds.

namespace orvane {

inline constexpr std::string_view questionCaption = "Message";

enum class Answer { yes, no, cancel };

class Questions {
public:
    virtual ~Questions() = default;

    // A message with OK.
    virtual void ShowMessage(std::string_view message) = 0;
    // Yes or No, where No leaves everything as it is.
    virtual bool Confirm(std::string_view question) = 0;
    // Yes or No, where both go on and either may lose something: nothing but one of the two buttons
    // answers it.
    virtual bool AskYesNo(std::string_view question) = 0;
    virtual Answer AskYesNoCancel(std::string_view question) = 0;
};

}  // namespace orvane
