#include "windows/rich_text_parser.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {
namespace {

using Kind = LabelItemKind;

std::vector<Kind> KindsOf(std::string_view text) {
    std::vector<Kind> kinds;
    for (const LabelItem& item : ParseRichText(text).items) kinds.push_back(item.kind);
    return kinds;
}

// The font of the last run.
LabelFont FontBehind(std::string_view text) {
    const LabelDocument document = ParseRichText(std::string(text) + "x");
    for (std::size_t at = document.items.size(); at > 0; --at) {
        const LabelItem& item = document.items[at - 1];
        if (item.kind == Kind::run && item.text == "x") return document.fonts[item.font];
    }
    ADD_FAILURE() << text;
    return {};
}

LabelItem FirstItem(std::string_view text) {
    const LabelDocument document = ParseRichText(text);
    return document.items.empty() ? LabelItem{} : document.items.front();
}

TEST(ParseRichText, StartsWithAPlainBlackFontInTheMiddle) {
    const LabelDocument document = ParseRichText("x");
    ASSERT_EQ(document.items.size(), 2U);
    EXPECT_EQ(document.items[0].text, "x");
    const LabelFont& font = document.fonts[document.items[0].font];
    EXPECT_EQ(font.face, "Arial");
    EXPECT_EQ(font.size, 12);
    EXPECT_FALSE(font.bold || font.italic || font.underline || font.strikeThrough);
    EXPECT_EQ(font.colour, 0);
    EXPECT_EQ(font.background, -1);
    EXPECT_EQ(document.items[0].align.horizontal, HorizontalAlign::centre);
    EXPECT_EQ(document.items[0].align.vertical, VerticalAlign::middle);
}

TEST(ParseRichText, MakesItemsOfTextAndTags) {
    struct Row {
        std::string_view text;
        std::vector<Kind> kinds;
    };
    const Row rows[] = {
        {"", {Kind::lineEnd}},
        {"\n", {Kind::lineEnd, Kind::lineEnd}},
        {"a", {Kind::run, Kind::lineEnd}},
        {"a\nb", {Kind::run, Kind::lineEnd, Kind::run, Kind::lineEnd}},
        {"a<br>b", {Kind::run, Kind::lineEnd, Kind::run, Kind::lineEnd}},
        {"a<BR>b", {Kind::run, Kind::lineEnd, Kind::run, Kind::lineEnd}},
        {"a<br />b", {Kind::run, Kind::lineEnd, Kind::run, Kind::lineEnd}},
        {"a<br/>b", {Kind::run, Kind::run, Kind::lineEnd}},
        {"a<p>b", {Kind::run, Kind::lineEnd, Kind::lineEnd, Kind::run, Kind::lineEnd}},
        {"a<p align='left'>", {Kind::run, Kind::lineEnd, Kind::lineEnd, Kind::lineEnd}},
        {"<hr>", {Kind::rule, Kind::lineEnd}},
        {"<img src='#7'>", {Kind::picture, Kind::lineEnd}},
        {"<img src='7'>", {Kind::lineEnd}},
        {"<img src='#'>", {Kind::lineEnd}},
        {"<img src='#7a'>", {Kind::lineEnd}},
        {"<img src='flower.bmp'>", {Kind::lineEnd}},
        {"<img>", {Kind::lineEnd}},
        {"<img src='#7'><img>", {Kind::picture, Kind::lineEnd}},
        {"<vspace size='3'>", {Kind::verticalSpace, Kind::lineEnd}},
        {"<vspace>", {Kind::lineEnd}},
        {"<vspace size=3>", {Kind::lineEnd}},
        {"<hspace size='3'>", {Kind::horizontalSpace, Kind::lineEnd}},
        {"<hspace size='3' size=\"4\">",
         {Kind::horizontalSpace, Kind::horizontalSpace, Kind::lineEnd}},
        {"<hspace Size='3'>", {Kind::horizontalSpace, Kind::lineEnd}},
        {"<hspace width='3'>", {Kind::lineEnd}},
        {"<blink>a</blink>", {Kind::run, Kind::lineEnd}},
        {"<>a", {Kind::run, Kind::lineEnd}},
        {"a > b", {Kind::run, Kind::lineEnd}},
        {"a<b<br>c", {Kind::run, Kind::run, Kind::lineEnd}},
        // A tag that is never closed swallows the end of the last line.
        {"a<br", {Kind::run}},
        {"a<vspace size='3'", {Kind::run, Kind::verticalSpace}},
        {"a<vspace size='3", {Kind::run}},
        {"<font face='a\nb'>x", {Kind::run, Kind::lineEnd}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(KindsOf(row.text), row.kinds);
    }
}

TEST(ParseRichText, ReadsAttributes) {
    struct Row {
        std::string_view text;
        std::int32_t amount;
    };
    const Row rows[] = {
        {"<hspace size='30'>", 30},
        {"<hspace size=\"30\">", 30},
        {"<HSPACE SIZE='30'>", 30},
        {"<hspace size='30'", 30},
        {"<hspace   size='30'>", 30},
        {"< hspace size='30'>", 30},
        {"<hspace size ='30'>", 30},
        {"<hspace x='1'size='30'>", 30},
        {"<hspace x=5 size='30'>", 30},
        {"<hspace size='3\"0'>", 30},
        {"<hspace size=\"3'0\">", 30},
        {"<hspace size=' 30 '>", 30},
        {"<hspace size='-30'>", -30},
        {"<hspace size='+30'>", 30},
        {"<hspace size='30px'>", 30},
        {"<hspace size=''>", 0},
        {"<hspace size='px'>", 0},
        {"<hspace size='99999999999999999999'>", 2147483647},
        {"<hspace size='-99999999999999999999'>", -2147483647},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const LabelItem item = FirstItem(row.text);
        EXPECT_EQ(item.kind, Kind::horizontalSpace);
        EXPECT_EQ(item.amount, row.amount);
    }
    for (const char* text :
         {"<hspace size= '30'>", "<hspace size = '30'>", "<hspace size'30'>", "<hspace size=3'0'>",
          "<hspace\nsize='30'>", "<hspace ='30'>", "<hspace size x='30'>", "<hspace size='30>"}) {
        SCOPED_TRACE(text);
        EXPECT_NE(FirstItem(text).kind, Kind::horizontalSpace);
    }
}

TEST(ParseRichText, EndsATagInsideAQuotedValue) {
    const LabelDocument document = ParseRichText("<font face='a>b' size='30'>c");
    ASSERT_EQ(document.items.size(), 2U);
    EXPECT_EQ(document.items[0].text, "b' size='30'>c");
    EXPECT_EQ(document.fonts[document.items[0].font], LabelFont{});
}

TEST(ParseRichText, ChangesFontSizes) {
    struct Row {
        std::string_view value;
        std::int32_t size;
    };
    const Row rows[] = {{"1", 1},   {"26", 26}, {"1999", 1999}, {"0", 12},         {"2000", 12},
                        {"-5", 12}, {"", 12},   {"large", 12},  {"4294967297", 12}};
    for (const auto& [value, size] : rows) {
        SCOPED_TRACE(value);
        EXPECT_EQ(FontBehind("<font size='" + std::string(value) + "'>").size, size);
    }
}

TEST(ParseRichText, TakesTheStartOfALongFace) {
    const std::string face(259, 'f');
    EXPECT_EQ(FontBehind("<font face='Old Style'>").face, "Old Style");
    EXPECT_EQ(FontBehind("<font face='" + face + "'>").face, face);
    EXPECT_EQ(FontBehind("<font face='" + face + "gh'>").face, face);
}

TEST(ParseRichText, SwitchesStyles) {
    struct Row {
        std::string_view value;
        bool bold, italic, underline, strikeThrough;  // from a font that has none of them
        bool stillBold, stillItalic, stillUnderline, stillStrikeThrough;  // that has them all
    };
    constexpr Row rows[] = {
        {"", 0, 0, 0, 0, 1, 1, 1, 1},     {"b", 1, 0, 0, 0, 1, 1, 1, 1},
        {"B", 1, 0, 0, 0, 1, 1, 1, 1},    {"i", 0, 1, 0, 0, 1, 1, 1, 1},
        {"I", 0, 1, 0, 0, 1, 1, 1, 1},    {"u", 0, 0, 1, 0, 1, 1, 1, 1},
        {"U", 0, 0, 1, 0, 1, 1, 1, 1},    {"s", 0, 0, 0, 1, 1, 1, 1, 1},
        {"S", 0, 0, 0, 1, 1, 1, 1, 1},    {"bius", 1, 1, 1, 1, 1, 1, 1, 1},
        {"-b", 0, 0, 0, 0, 0, 1, 1, 1},   {"-B", 0, 0, 0, 0, 0, 1, 1, 1},
        {"-i", 0, 0, 0, 0, 1, 0, 1, 1},   {"-U", 0, 0, 0, 0, 1, 1, 0, 1},
        {"-s", 0, 0, 0, 0, 1, 1, 1, 0},   {"-b-i-u-s", 0, 0, 0, 0, 0, 0, 0, 0},
        {"b-b", 0, 0, 0, 0, 0, 1, 1, 1},  {"-bb", 0, 0, 0, 0, 0, 1, 1, 1},
        {"b-iu", 1, 0, 1, 0, 1, 0, 1, 1}, {"- b", 1, 0, 0, 0, 1, 1, 1, 1},
        {"xyz", 0, 0, 0, 0, 1, 1, 1, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        const std::string tag = "<font style='" + std::string(row.value) + "'>";
        const LabelFont plain = FontBehind(tag);
        EXPECT_EQ(plain.bold, row.bold);
        EXPECT_EQ(plain.italic, row.italic);
        EXPECT_EQ(plain.underline, row.underline);
        EXPECT_EQ(plain.strikeThrough, row.strikeThrough);
        const LabelFont full = FontBehind("<font style='bius'>" + tag);
        EXPECT_EQ(full.bold, row.stillBold);
        EXPECT_EQ(full.italic, row.stillItalic);
        EXPECT_EQ(full.underline, row.stillUnderline);
        EXPECT_EQ(full.strikeThrough, row.stillStrikeThrough);
    }
}

TEST(ParseRichText, ReadsColours) {
    constexpr LabelColour before = 1 | 2 << 8 | 3 << 16;
    struct Row {
        std::string_view value;
        LabelColour colour;
    };
    const Row rows[] = {
        {"255,204,51", 255 | 204 << 8 | 51 << 16},
        {"0,0,0", 0},
        {"255,255,255", 0xFFFFFF},
        {" 7, 8 ,9", 7 | 8 << 8 | 9 << 16},
        {"256,257,511", 0 | 1 << 8 | 255 << 16},
        {"-1,-2,-256", 255 | 254 << 8},
        {"4294967297,18446744073709551618,3", 1 | 2 << 8 | 3 << 16},
        {",,", 0},
        {"4,5,6,7", 4 | 5 << 8 | 6 << 16},
        {"red,green,blue", 0},
        {"none", -1},
        {"transparant", -1},
        {"", before},
        {"9", before},
        {"9,9", before},
        {"transparent", before},
        {"None", before},
    };
    for (const auto& [value, colour] : rows) {
        SCOPED_TRACE(value);
        std::string quoted = "'";
        quoted += value;
        quoted += '\'';
        const LabelFont text = FontBehind("<font color='1,2,3'><font color=" + quoted + ">");
        EXPECT_EQ(text.colour, colour);
        EXPECT_EQ(text.background, noColour);
        const LabelFont ground =
            FontBehind("<font background='1,2,3'><font background=" + quoted + ">");
        EXPECT_EQ(ground.background, colour);
        EXPECT_EQ(ground.colour, 0);
    }
}

TEST(ParseRichText, Aligns) {
    using Horizontal = HorizontalAlign;
    using Vertical = VerticalAlign;
    struct Row {
        std::string_view tags;
        Horizontal horizontal;
        Vertical vertical;
    };
    const Row rows[] = {
        {"<font align='left'>", Horizontal::left, Vertical::middle},
        {"<font align='RIGHT'>", Horizontal::right, Vertical::middle},
        {"<font align='left'><font align='Center'>", Horizontal::centre, Vertical::middle},
        {"<font align='left'><font align='centre'>", Horizontal::left, Vertical::middle},
        {"<font align='left'><font align=''>", Horizontal::left, Vertical::middle},
        {"<font align='top'>", Horizontal::centre, Vertical::middle},
        {"<font valign='top'>", Horizontal::centre, Vertical::top},
        {"<font valign='Bottom'>", Horizontal::centre, Vertical::bottom},
        {"<font valign='top'><font valign='middle'>", Horizontal::centre, Vertical::middle},
        {"<font valign='top'><font valign='left'>", Horizontal::centre, Vertical::top},
        {"<font align='left' valign='top'><font>", Horizontal::left, Vertical::top},
        {"<font align='left' valign='top'></font>", Horizontal::centre, Vertical::middle},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.tags);
        const LabelItem item = FirstItem(std::string(row.tags) + "x");
        EXPECT_EQ(item.align.horizontal, row.horizontal);
        EXPECT_EQ(item.align.vertical, row.vertical);
    }
}

TEST(ParseRichText, PutsFontsOnOneAnother) {
    EXPECT_EQ(FontBehind("</font></font>"), LabelFont{});
    EXPECT_EQ(FontBehind("<font size='30'></font></font>"), LabelFont{});
    EXPECT_EQ(FontBehind("</font><font size='30'>").size, 30);
    const LabelFont inner = FontBehind("<font size='30' style='b'><font face='Mono' style='i'>");
    EXPECT_EQ(inner.size, 30);
    EXPECT_TRUE(inner.bold && inner.italic);
    EXPECT_EQ(inner.face, "Mono");
    const LabelFont outer = FontBehind("<font size='30'><font size='40'></font>");
    EXPECT_EQ(outer.size, 30);
    EXPECT_EQ(FontBehind("<font size='30'><font></font>").size, 30);
    EXPECT_EQ(FontBehind("<font size='30'><font></font></font>").size, 12);
}

TEST(ParseRichText, GivesRulesTheirDefaults) {
    struct Row {
        std::string_view text;
        std::int32_t width;
        bool fromArea;
        std::int32_t height;
        LabelColour colour;
        HorizontalAlign align;
    };
    constexpr auto centre = HorizontalAlign::centre;
    const Row rows[] = {
        {"<hr>", 100, true, 2, buttonShadowColour, centre},
        {"<hr >", 100, true, 2, buttonShadowColour, centre},
        {"<hr size=5>", 100, true, 2, buttonShadowColour, centre},
        {"<hr size='5'>", 10, true, 5, buttonShadowColour, centre},
        {"<hr color='1,0,0'>", 10, true, 2, 1, centre},
        {"<hr color='none'>", 10, true, 2, noColour, centre},
        {"<hr color='1,0'>", 10, true, 2, buttonShadowColour, centre},
        {"<hr width='70'>", 70, false, 2, buttonShadowColour, centre},
        {"<hr align='left'>", 10, true, 2, buttonShadowColour, HorizontalAlign::left},
        {"<hr align='RIGHT'>", 10, true, 2, buttonShadowColour, HorizontalAlign::right},
        {"<hr align='left' align='x'>", 10, true, 2, buttonShadowColour, centre},
        {"<hr size='5' size=", 10, true, 5, buttonShadowColour, centre},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const LabelDocument document = ParseRichText(row.text);
        if (row.text.back() != '>') {
            EXPECT_TRUE(document.items.empty());
            continue;
        }
        ASSERT_FALSE(document.items.empty());
        const LabelItem& item = document.items[0];
        EXPECT_EQ(item.kind, Kind::rule);
        EXPECT_EQ(item.width, row.width);
        EXPECT_EQ(item.fromArea, row.fromArea);
        EXPECT_EQ(item.height, row.height);
        EXPECT_EQ(item.colour, row.colour);
        EXPECT_EQ(item.ruleAlign, row.align);
    }
    const LabelDocument two = ParseRichText("<hr size='5' width='9'><hr>");
    EXPECT_EQ(two.items[1].height, 2);
    EXPECT_EQ(two.items[1].width, 100);
}

TEST(ParseRichText, LinksRunsAndPictures) {
    const LabelDocument document = ParseRichText(
        "a<a href='http://x.org'>b<img src='#4'></a>c<a href=\"#t#0\">d<a href=''>e<a>f");
    ASSERT_EQ(document.items.size(), 8U);
    EXPECT_EQ(document.targets, (std::vector<std::string>{"http://x.org", "#t#0"}));
    const std::size_t links[] = {noLink, 0, 0, noLink, 1, noLink, noLink, noLink};
    for (std::size_t at = 0; at < std::size(links); ++at) {
        SCOPED_TRACE(at);
        EXPECT_EQ(document.items[at].link, links[at]);
    }
}

TEST(ParseRichText, GivesLinksASecondLook) {
    const LabelDocument document = ParseRichText(
        "<font size='20' color='1,1,1'><a href='t' color='9,0,0' style='u-b' background='8,0,0' "
        "face='Mono' size='0'>b<font style='bi' size='30'>c</font></a>d<a href='t'>e<a "
        "size='40'>f");
    std::vector<LabelItem> runs;
    for (const LabelItem& item : document.items) {
        if (item.kind == Kind::run) runs.push_back(item);
    }
    ASSERT_EQ(runs.size(), 5U);
    const LabelFont plain = document.fonts[runs[0].font];
    EXPECT_EQ(plain.size, 20);
    EXPECT_EQ(plain.colour, 1 | 1 << 8 | 1 << 16);
    LabelFont hot = plain;
    hot.colour = 9;
    hot.background = 8;
    hot.underline = true;
    hot.face = "Mono";
    EXPECT_EQ(document.fonts[runs[0].hotFont], hot);
    hot.size = 30;
    hot.italic = true;
    EXPECT_EQ(document.fonts[runs[1].hotFont], hot);
    EXPECT_EQ(runs[2].hotFont, runs[2].font);
    EXPECT_EQ(document.fonts[runs[3].hotFont], plain);
    EXPECT_EQ(runs[4].link, runs[3].link);
    EXPECT_EQ(document.fonts[runs[4].hotFont].size, 40);
    EXPECT_EQ(document.fonts[runs[4].font].size, 20);
}

TEST(ParseRichText, ReadsPictures) {
    const LabelDocument document = ParseRichText(
        "<img src='#150'><img src='#3' src='x' color='5,0,0' border='0'><img src='#1'>");
    ASSERT_EQ(document.items.size(), 4U);
    EXPECT_EQ(document.items[0].amount, 150);
    EXPECT_EQ(document.items[0].border, 2);
    EXPECT_EQ(document.items[0].colour, noColour);
    EXPECT_EQ(document.items[1].amount, 3);
    EXPECT_EQ(document.items[1].border, 0);
    EXPECT_EQ(document.items[1].colour, 5);
    EXPECT_EQ(document.items[2].border, 2);
    EXPECT_EQ(document.items[2].colour, noColour);
}

TEST(ParseRichText, KeepsEveryByteOfText) {
    const std::string text("a\0\r\t\xFF\x80> \"'", 10);
    EXPECT_EQ(FirstItem(text).text, text);
    const std::string tag("<b\0r>x<font face='a\0b'>y", 24);
    const LabelDocument document = ParseRichText(tag);
    ASSERT_EQ(document.items.size(), 3U);
    EXPECT_EQ(document.fonts[document.items[1].font].face, std::string("a\0b", 3));
}

// Everything that is read must be used up in one walk; a repeated piece of mark-up that costs more
// with each repetition would not come to an end here.
TEST(ParseRichText, ReadsLongHostileTexts) {
    const std::string pieces[] = {"<",
                                  ">",
                                  "<font>",
                                  "<font size='3'>",
                                  "</font>",
                                  "<br>",
                                  "\n",
                                  "<a href='",
                                  "<a href='x'>y",
                                  "=",
                                  "='",
                                  "<a ='",
                                  " ",
                                  "< ",
                                  std::string(1, '\0'),
                                  "<x='\0",
                                  "<hspace size='1'>",
                                  "<hspace size='1' ",
                                  "x<font face='" + std::string(300, 'f') + "'>",
                                  "<a color='1,1,1'>x",
                                  "<img src='#1'>"};
    for (const std::string& piece : pieces) {
        SCOPED_TRACE(piece);
        std::string text = "<a href='t' face='" + std::string(300, 'h') + "'>";
        while (text.size() < 1'000'000) text += piece;
        const LabelDocument document = ParseRichText(text);
        EXPECT_LE(document.items.size(), text.size() + 1);
        EXPECT_LE(document.fonts.size(), text.size() / 4);
    }
    const LabelDocument document =
        ParseRichText("<a href='" + std::string(500'000, 't') + "'>" + [] {
            std::string runs;
            for (int count = 0; count < 100'000; ++count) runs += "x<br>";
            return runs;
        }());
    EXPECT_EQ(document.targets.size(), 1U);
    EXPECT_EQ(document.items.size(), 200'001U);
}

TEST(ParseRichText, TakesAnyText) {
    constexpr std::string_view pieces[] = {
        "<",     ">",       "'",      "\"",     "=",           " ",      "\n",      "/",
        "font",  "hr",      "a",      "img",    "br",          "p",      "vspace",  "hspace",
        "size=", "face=",   "style=", "color=", "background=", "align=", "valign=", "href=",
        "src=",  "border=", "width=", "#12",    "1,2,3",       "-b",     "none",    "99999999999"};
    std::mt19937 random(8101);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (std::uint32_t left = random() % 60; left > 0; --left) {
            const std::uint32_t choice = random() % (std::size(pieces) + 4);
            if (choice < std::size(pieces)) {
                text += pieces[choice];
            } else {
                text += static_cast<char>(random() % 256);
            }
        }
        const LabelDocument document = ParseRichText(text);
        for (const LabelItem& item : document.items) {
            ASSERT_LT(item.font, document.fonts.size());
            ASSERT_LT(item.hotFont, document.fonts.size());
            ASSERT_TRUE(item.link == noLink || item.link < document.targets.size());
            ASSERT_EQ(item.text.empty(), item.kind != Kind::run);
            ASSERT_EQ(item.text.find('\n'), std::string::npos);
        }
        for (const LabelFont& font : document.fonts) {
            ASSERT_TRUE(font.size >= 1 && font.size <= 1999);
        }
    }
}

}  // namespace
}  // namespace orvane
