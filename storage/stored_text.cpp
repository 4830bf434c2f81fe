#include "storage/stored_text.h"

#include <algorithm>
#include <utility>

#include "storage/code_page.h"

namespace orvane {

namespace {

constexpr std::string_view blanks = " \t\n\v\f\r";

std::string HexText(unsigned number, std::size_t digits) {
    std::string text;
    for (; number > 0 || text.size() < digits; number >>= 4) {
        text.insert(text.begin(), "0123456789ABCDEF"[number & 0xF]);
    }
    return text;
}

// "'☃' (U+2603)"; a malformed piece and a control character show only their number.
std::string FirstOutsideText(const PageText& text) {
    if (!text.firstCodePoint) {
        return "bytes that are no UTF-8 (0x" +
               HexText(static_cast<unsigned char>(text.firstOutside.front()), 2) + ")";
    }
    const std::string number = "U+" + HexText(*text.firstCodePoint, 4);
    return *text.firstCodePoint < 0xA0 ? number : "'" + text.firstOutside + "' (" + number + ")";
}

std::optional<std::string> Outside(std::string_view what, const PageText& text) {
    if (text.outside == 0) return std::nullopt;
    std::string problem = std::string(what) + " holds " + FirstOutsideText(text);
    if (text.outside > 1) problem += " and " + std::to_string(text.outside - 1) + " more";
    return problem + " outside the code page Windows-1252";
}

std::optional<std::string> MarkProblem(std::string_view what, std::string_view stored) {
    constexpr char broken[] = {nameMark, textMark, '\0'};
    const std::size_t found = stored.find_first_of(std::string_view(broken, sizeof broken));
    if (found == stored.npos) return std::nullopt;
    if (stored[found] == '\0') {
        return std::string(what) + " holds a NUL, and nothing behind one is ever found";
    }
    return std::string(what) + " holds the character '" + Utf8FromBytes(stored.substr(found, 1)) +
           "', with which the archive marks its " + (stored[found] == nameMark ? "names" : "texts");
}

std::optional<std::string> ShapeProblem(std::string_view what, std::string_view name) {
    if (name.empty()) return "the name is empty";
    if (blanks.find(name.front()) != blanks.npos || blanks.find(name.back()) != blanks.npos) {
        return std::string(what) + " has blanks at its ends";
    }
    if (name.find_first_of("\n\r") != name.npos) return std::string(what) + " is not one line";
    return std::nullopt;
}

// Without control characters, so that a message stays one line.
std::string OneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; }, '?');
    return line;
}

PageText PageTextOf(std::string_view given, ExchangeForm form) {
    if (form == ExchangeForm::utf8) return BytesFromUtf8(given);
    PageText text;
    text.bytes = given;
    return text;
}

}  // namespace

std::optional<std::string> OutsideProblem(std::string_view what, std::string_view given,
                                          ExchangeForm form) {
    return Outside(what, PageTextOf(given, form));
}

std::optional<std::string> StorageProblem(std::string_view what, std::string_view given,
                                          ExchangeForm form) {
    const PageText text = PageTextOf(given, form);
    std::optional<std::string> problem = Outside(what, text);
    return problem ? problem : MarkProblem(what, text.bytes);
}

std::optional<std::string> NameProblem(std::string_view given, ExchangeForm form) {
    const std::string what = "the name '" + OneLine(given) + "'";
    const PageText name = PageTextOf(given, form);
    std::optional<std::string> problem = Outside(what, name);
    if (!problem) problem = ShapeProblem(what, name.bytes);
    return problem ? problem : MarkProblem(what, name.bytes);
}

std::string StoredBytes(std::string_view given, ExchangeForm form) {
    return PageTextOf(given, form).bytes;
}

std::optional<std::string> SearchedName(std::string_view given, ExchangeForm form) {
    PageText name = PageTextOf(given, form);
    if (name.outside > 0) return std::nullopt;
    return std::move(name.bytes);
}

std::string ShownBytes(std::string_view stored, ExchangeForm form) {
    return form == ExchangeForm::utf8 ? Utf8FromBytes(stored) : std::string(stored);
}

}  // namespace orvane
