#include "windows/rich_text_parser.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "core/text_scan.h"

namespace orvane {

namespace {

constexpr std::size_t longestFace = 259;
constexpr std::int32_t largestFont = 1999;

constexpr char Lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string LoweredText(std::string_view text) {
    std::string lowered(text);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), Lowered);
    return lowered;
}

struct SignedDigits {
    bool negative = false;
    std::string_view digits;
};

// The number that a text starts with; what stands behind it is left alone.
SignedDigits FindNumber(std::string_view text) {
    std::size_t at = SkipWhite(text, 0);
    const bool negative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    std::size_t end = at;
    while (end < text.size() && IsDigit(text[end])) ++end;
    return {negative, text.substr(at, end - at)};
}

// 0 without a number; numbers out of range stop at the ends of the range.
std::int32_t ReadNumber(std::string_view text) {
    const SignedDigits number = FindNumber(text);
    std::int64_t value = 0;
    for (const char digit : number.digits) {
        value = std::min<std::int64_t>(value * 10 + (digit - '0'),
                                       std::numeric_limits<std::int32_t>::max());
    }
    return static_cast<std::int32_t>(number.negative ? -value : value);
}

// The low 8 bits of a number of any length.
LabelColour ReadLowByte(std::string_view text) {
    const SignedDigits number = FindNumber(text);
    std::uint32_t value = 0;
    for (const char digit : number.digits) {
        value = value * 10 + static_cast<std::uint32_t>(digit - '0');
    }
    return static_cast<LabelColour>((number.negative ? 0 - value : value) & 0xFF);
}

// Nothing where the colour is to stay as it is.
std::optional<LabelColour> ReadColour(std::string_view text) {
    // Kept: the second word is spelled so in the texts that are about.
    if (text == "none" || text == "transparant") return noColour;
    const std::size_t first = text.find(',');
    if (first == std::string_view::npos) return std::nullopt;
    const std::size_t second = text.find(',', first + 1);
    if (second == std::string_view::npos) return std::nullopt;
    return ReadLowByte(text.substr(0, first)) |
           ReadLowByte(text.substr(first + 1, second - first - 1)) << 8 |
           ReadLowByte(text.substr(second + 1)) << 16;
}

// Nothing for a text that is not "#" and a number.
std::optional<std::int32_t> ReadBitmapNumber(std::string_view text) {
    if (text.size() < 2 || text.front() != '#') return std::nullopt;
    text.remove_prefix(1);
    if (!std::all_of(text.begin(), text.end(), IsDigit)) return std::nullopt;
    return ReadNumber(text);
}

// What a tag changes in the look; what is not set follows the font below.
struct FontChange {
    std::optional<std::string> face;
    std::optional<std::int32_t> size;
    std::optional<bool> bold, italic, underline, strikeThrough;
    std::optional<LabelColour> colour, background;
};

// One letter of a style text; a letter switched off anywhere is not switched on.
void ChangeStyle(std::optional<bool>& setting, std::string_view style, char letter) {
    bool found = false;
    for (std::size_t at = 0; at < style.size(); ++at) {
        if (Lowered(style[at]) != letter) continue;
        found = true;
        if (at > 0 && style[at - 1] == '-') {
            setting = false;
            return;
        }
    }
    if (found) setting = true;
}

void ChangeFont(FontChange& change, std::string_view name, std::string_view value) {
    if (name == "size") {
        const std::int32_t size = ReadNumber(value);
        if (size >= 1 && size <= largestFont) change.size = size;
    } else if (name == "face") {
        change.face = std::string(value.substr(0, longestFace));
    } else if (name == "style") {
        ChangeStyle(change.bold, value, 'b');
        ChangeStyle(change.italic, value, 'i');
        ChangeStyle(change.underline, value, 'u');
        ChangeStyle(change.strikeThrough, value, 's');
    } else if (name == "color") {
        if (const auto colour = ReadColour(value)) change.colour = colour;
    } else if (name == "background") {
        if (const auto colour = ReadColour(value)) change.background = colour;
    }
}

LabelFont Changed(const LabelFont& font, const FontChange& change) {
    LabelFont changed;
    changed.face = change.face ? *change.face : font.face;
    changed.size = change.size.value_or(font.size);
    changed.bold = change.bold.value_or(font.bold);
    changed.italic = change.italic.value_or(font.italic);
    changed.underline = change.underline.value_or(font.underline);
    changed.strikeThrough = change.strikeThrough.value_or(font.strikeThrough);
    changed.colour = change.colour.value_or(font.colour);
    changed.background = change.background.value_or(font.background);
    return changed;
}

class LabelScanner {
public:
    LabelScanner() { document.fonts.emplace_back(); }
    LabelDocument Scan(std::string_view text);

private:
    struct Tag {
        std::string_view name;
        void (LabelScanner::*atName)();
        void (LabelScanner::*atAttribute)(std::string_view name, std::string_view value);
        void (LabelScanner::*atEnd)();
    };
    static const Tag tags[];

    void ReadText(char c);
    void ReadTag(char c);
    void ReadValue(char c);
    void EndWord();
    void StartValue(char opening);
    void NameTag();
    void EndTag();

    LabelItem& Add(LabelItemKind kind);
    void AddRun();
    void AddLineEnd() { Add(LabelItemKind::lineEnd); }
    std::size_t KeepFont(LabelFont font);
    std::size_t HotFont();

    void StartFont();
    void ChangeFontTag(std::string_view name, std::string_view value);
    void PushFont();
    void PopFont();
    void StartRule();
    void ChangeRule(std::string_view name, std::string_view value);
    void AddRule();
    void StartLink();
    void ChangeLink(std::string_view name, std::string_view value);
    void EndLink() { link = noLink; }
    void StartPicture();
    void ChangePicture(std::string_view name, std::string_view value);
    void AddPicture();
    void AddParagraph();
    void AddVerticalSpace(std::string_view name, std::string_view value);
    void AddHorizontalSpace(std::string_view name, std::string_view value);

    LabelDocument document;
    std::string run;  // pending

    bool inTag = false;
    bool named = false;  // the open tag has its name, known or not
    const Tag* tag = nullptr;
    std::string word;
    std::string attribute;  // the last word behind the tag's name, lowered
    std::string value;
    char quote = 0;  // that opened the value; 0 outside values
    bool hadAttribute = false;

    // The start entries at the bottom are never taken away.
    std::vector<std::size_t> fontStack = {0};
    std::vector<LabelAlign> alignStack = {LabelAlign{}};

    FontChange fontChange;  // of the font tag that is open
    LabelAlign workingAlign;
    LabelItem rule, picture;
    bool pictureChosen = false;
    std::size_t link = noLink;
    FontChange linkChange;
    // The last answer of HotFont and the font that it was made from.
    std::size_t hotFont = 0, hotFontBase = noLink;
};

constexpr LabelScanner::Tag LabelScanner::tags[] = {
    {"font", &LabelScanner::StartFont, &LabelScanner::ChangeFontTag, &LabelScanner::PushFont},
    {"/font", nullptr, nullptr, &LabelScanner::PopFont},
    {"hr", &LabelScanner::StartRule, &LabelScanner::ChangeRule, &LabelScanner::AddRule},
    {"a", &LabelScanner::StartLink, &LabelScanner::ChangeLink, nullptr},
    {"/a", nullptr, nullptr, &LabelScanner::EndLink},
    {"img", &LabelScanner::StartPicture, &LabelScanner::ChangePicture, &LabelScanner::AddPicture},
    {"br", nullptr, nullptr, &LabelScanner::AddLineEnd},
    {"p", nullptr, nullptr, &LabelScanner::AddParagraph},
    {"vspace", nullptr, &LabelScanner::AddVerticalSpace, nullptr},
    {"hspace", nullptr, &LabelScanner::AddHorizontalSpace, nullptr},
};

LabelDocument LabelScanner::Scan(std::string_view text) {
    const auto read = [this](char c) {
        if (quote != 0) {
            ReadValue(c);
        } else if (inTag) {
            ReadTag(c);
        } else {
            ReadText(c);
        }
    };
    for (const char c : text) read(c);
    // So that the last line has an end. Kept: inside a tag that is never closed this is one more
    // character of the tag, and the line stays open.
    read('\n');
    return std::move(document);
}

void LabelScanner::ReadText(char c) {
    if (c == '<') {
        AddRun();
        inTag = true;
    } else if (c == '\n') {
        AddRun();
        AddLineEnd();
    } else {
        run += c;
    }
}

void LabelScanner::ReadTag(char c) {
    if (c == '>') {
        EndTag();
    } else if (c == ' ') {
        EndWord();
    } else if ((c == '"' || c == '\'') && !word.empty() && word.back() == '=') {
        StartValue(c);
    } else {
        word += c;
    }
}

// Kept: a '>' ends the tag here as well, and the value is lost.
void LabelScanner::ReadValue(char c) {
    if (c == '>') {
        EndTag();
    } else if (c == quote) {
        quote = 0;
        hadAttribute = true;
        if (tag != nullptr && tag->atAttribute != nullptr) {
            (this->*tag->atAttribute)(attribute, value);
        }
        attribute.clear();
        value.clear();
    } else if (c != '"' && c != '\'') {
        value += c;
    }
}

void LabelScanner::EndWord() {
    if (word.empty()) return;
    if (named) {
        attribute = LoweredText(word);
        word.clear();
    } else {
        NameTag();
    }
}

// A '=' that stands alone belongs to the word in front of it.
void LabelScanner::StartValue(char opening) {
    word.pop_back();
    if (!word.empty()) attribute = LoweredText(word);
    word.clear();
    quote = opening;
}

void LabelScanner::NameTag() {
    const std::string name = LoweredText(word);
    word.clear();
    named = true;
    const Tag* found = std::find_if(std::begin(tags), std::end(tags),
                                    [&name](const Tag& row) { return row.name == name; });
    if (found == std::end(tags)) return;
    tag = found;
    if (tag->atName != nullptr) (this->*tag->atName)();
}

void LabelScanner::EndTag() {
    if (!named) NameTag();
    if (tag != nullptr && tag->atEnd != nullptr) (this->*tag->atEnd)();
    inTag = named = hadAttribute = false;
    tag = nullptr;
    quote = 0;
    word.clear();
    attribute.clear();
    value.clear();
}

LabelItem& LabelScanner::Add(LabelItemKind kind) {
    LabelItem& item = document.items.emplace_back();
    item.kind = kind;
    item.align = alignStack.back();
    item.font = item.hotFont = fontStack.back();
    return item;
}

void LabelScanner::AddRun() {
    if (run.empty()) return;
    const std::size_t hot = link == noLink ? fontStack.back() : HotFont();
    LabelItem& item = Add(LabelItemKind::run);
    item.text = std::exchange(run, {});
    item.link = link;
    item.hotFont = hot;
}

std::size_t LabelScanner::KeepFont(LabelFont font) {
    if (!(font == document.fonts.back())) document.fonts.push_back(std::move(font));
    return document.fonts.size() - 1;
}

std::size_t LabelScanner::HotFont() {
    if (hotFontBase != fontStack.back()) {
        hotFontBase = fontStack.back();
        hotFont = KeepFont(Changed(document.fonts[hotFontBase], linkChange));
    }
    return hotFont;
}

void LabelScanner::StartFont() {
    fontChange = {};
    workingAlign = alignStack.back();
}

void LabelScanner::ChangeFontTag(std::string_view name, std::string_view value) {
    const std::string lowered = name == "align" || name == "valign" ? LoweredText(value) : "";
    if (name == "align") {
        if (lowered == "left") workingAlign.horizontal = HorizontalAlign::left;
        if (lowered == "center") workingAlign.horizontal = HorizontalAlign::centre;
        if (lowered == "right") workingAlign.horizontal = HorizontalAlign::right;
    } else if (name == "valign") {
        if (lowered == "top") workingAlign.vertical = VerticalAlign::top;
        if (lowered == "middle") workingAlign.vertical = VerticalAlign::middle;
        if (lowered == "bottom") workingAlign.vertical = VerticalAlign::bottom;
    } else {
        ChangeFont(fontChange, name, value);
    }
}

void LabelScanner::PushFont() {
    const std::size_t base = fontStack.back();
    LabelFont font = Changed(document.fonts[base], fontChange);
    fontStack.push_back(font == document.fonts[base] ? base : KeepFont(std::move(font)));
    alignStack.push_back(workingAlign);
}

void LabelScanner::PopFont() {
    if (fontStack.size() == 1) return;
    fontStack.pop_back();
    alignStack.pop_back();
}

void LabelScanner::StartRule() {
    rule = {};
    rule.width = 10;
    rule.fromArea = true;
    rule.height = 2;
    rule.colour = buttonShadowColour;
}

void LabelScanner::ChangeRule(std::string_view name, std::string_view value) {
    if (name == "color") {
        if (const auto colour = ReadColour(value)) rule.colour = *colour;
    } else if (name == "width") {
        rule.width = ReadNumber(value);
        rule.fromArea = false;
    } else if (name == "size") {
        rule.height = ReadNumber(value);
    } else if (name == "align") {
        const std::string lowered = LoweredText(value);
        rule.ruleAlign = lowered == "left"    ? HorizontalAlign::left
                         : lowered == "right" ? HorizontalAlign::right
                                              : HorizontalAlign::centre;
    }
}

// Kept: a rule without any attribute is shorter than one that only sets its height.
void LabelScanner::AddRule() {
    if (!hadAttribute) rule.width = 100;
    LabelItem& item = Add(LabelItemKind::rule);
    item.width = rule.width;
    item.height = rule.height;
    item.fromArea = rule.fromArea;
    item.colour = rule.colour;
    item.ruleAlign = rule.ruleAlign;
}

void LabelScanner::StartLink() {
    linkChange = {};
    hotFontBase = noLink;
}

void LabelScanner::ChangeLink(std::string_view name, std::string_view value) {
    if (name == "href") {
        link = noLink;
        if (value.empty()) return;
        link = document.targets.size();
        document.targets.emplace_back(value);
    } else {
        ChangeFont(linkChange, name, value);
        hotFontBase = noLink;
    }
}

void LabelScanner::StartPicture() {
    picture = {};
    picture.border = 2;
    pictureChosen = false;
}

void LabelScanner::ChangePicture(std::string_view name, std::string_view value) {
    if (name == "src") {
        if (const auto number = ReadBitmapNumber(value)) {
            picture.amount = *number;
            pictureChosen = true;
        }
    } else if (name == "color") {
        if (const auto colour = ReadColour(value)) picture.colour = *colour;
    } else if (name == "border") {
        picture.border = ReadNumber(value);
    }
}

void LabelScanner::AddPicture() {
    if (!pictureChosen) return;
    LabelItem& item = Add(LabelItemKind::picture);
    item.amount = picture.amount;
    item.border = picture.border;
    item.colour = picture.colour;
    item.link = link;
}

void LabelScanner::AddParagraph() {
    AddLineEnd();
    AddLineEnd();
}

void LabelScanner::AddVerticalSpace(std::string_view name, std::string_view value) {
    if (name == "size") Add(LabelItemKind::verticalSpace).amount = ReadNumber(value);
}

void LabelScanner::AddHorizontalSpace(std::string_view name, std::string_view value) {
    if (name == "size") Add(LabelItemKind::horizontalSpace).amount = ReadNumber(value);
}

}  // namespace

LabelDocument ParseRichText(std::string_view text) { return LabelScanner().Scan(text); }

}  // namespace orvane
