#include "core/error_text.h"

#include "core/text_scan.h"

namespace orvane {

namespace {

// "CODE sentence NN: ", the number at least two wide.
std::string Heading(ErrorCode code, int sentence) {
    std::string text(code.errorClass);
    text += code.code;
    text += " sentence ";
    const std::string number = NumberOf(sentence);
    if (number.size() < 2) text += ' ';
    return text + number + ": ";
}

}  // namespace

bool SentenceErrorText(ErrorCode code, int sentence, std::string_view message,
                       std::string& errorText) {
    errorText = Heading(code, sentence).append(message) + '.';
    return false;
}

bool QuotedErrorText(ErrorCode code, int sentence, std::string_view piece, std::string& errorText) {
    return SentenceErrorText(code, sentence, '"' + ShortenForMessage(piece) + '"', errorText);
}

bool FunctionErrorText(ErrorCode code, int sentence, std::string_view functionName,
                       std::string_view message, std::string& errorText) {
    const std::string words =
        std::string("function \"").append(functionName).append("\": ").append(message);
    return SentenceErrorText(code, sentence, words, errorText);
}

bool NodeErrorText(ErrorCode code, int sentence, const FunctionNode& node, std::string_view message,
                   std::string& errorText) {
    if (node.functionName.empty()) return SentenceErrorText(code, sentence, message, errorText);
    return FunctionErrorText(code, sentence, node.functionName, message, errorText);
}

bool NonFiniteError(ErrorCode code, int sentence, std::string_view functionName,
                    std::string& errorText) {
    return FunctionErrorText(code, sentence, functionName,
                             "generates an infinite or unaccepted number", errorText);
}

std::string FillForm(std::string_view form, std::initializer_list<std::string_view> arguments) {
    std::string text;
    const std::string_view* argument = arguments.begin();
    for (std::size_t at = 0; at < form.size(); ++at) {
        const bool slot = form[at] == '%' && at + 1 < form.size() && argument != arguments.end();
        if (slot) {
            text += *argument++;
            ++at;
        } else {
            text += form[at];
        }
    }
    return text;
}

std::string NumberOf(int index) { return std::to_string(index + 1); }

}  // namespace orvane
