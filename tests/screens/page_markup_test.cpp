#include "windows/page_markup.h"

#include <gtest/gtest.h>

#include <string>

namespace orvane {
namespace {

std::string Shown(const std::string& page) {
    return ShowableMarkup(QString::fromStdString(page)).value_or("(nothing)").toStdString();
}
std::string Repeated(const std::string& piece, int times) {
    std::string text;
    for (; times > 0; --times) text += piece;
    return text;
}

TEST(ShowableMarkup, KeepsTextAndHarmlessTags) {
    struct Row {
        const char* page;
        const char* shown;
    };
    const Row rows[] = {
        {"", ""},
        {"a &amp; b &lt;", "a &amp; b &lt;"},
        {"<p>a<br/>b</P >c", "<p>a<br>b</p>c"},
        {"1 < 2 <3 <", "1 &lt; 2 &lt;3 &lt;"},
        {"a<!-- <b> -->c<!-- d", "ac"},
        {"<!DOCTYPE html><?xml?>a", "a"},
        {"a</>b</ >c", "abc"},
        {"a<b", "a"},
        {"<a title='>' href='x>y'>z", "<a href=\"x>y\">z"},
        {"<a href='never closed>z", ""},
        {"<A HREF=x.htm NAME=y>", "<a href=\"x.htm\" name=\"y\">"},
        {"<a href = \"x\" name='y'>", "<a href=\"x\" name=\"y\">"},
        {"<a href='say \"x\"'>", "<a href=\"say &quot;x&quot;\">"},
        {"<h1 1a=b 2 id=c>x", "<h1 id=\"c\">x"},
        {"<a href>b", "<a>b"},
        {"<a href=>b", "<a>b"},
        {"<a href=''>b", "<a href=\"\">b"},
        {"<p style='x' onclick=\"y()\" align=center width=9 class='z'>", "<p align=\"center\">"},
        {"<td colspan='9' bgcolor='#fff'>", "<td bgcolor=\"#fff\">"},
        {"a<img src='x' alt='b < \"c\"'>d<img src='y'>e<img alt=''>", "a[b &lt; &quot;c&quot;]de"},
        {"a<script>if (1 < 2) </b></SCRIPT>c", "a</script>c"},
        {"a<STYLE type='x'>p { }</style>c<title>d</title>", "a</style>c</title>"},
        {"a<script>b", "a"},
        {"<p don't>a'b", "<p>a'b"},
        {"<a href=\"x\"\">b\"c", "<a href=\"x\">b\"c"},
        {"<a href= 'x>y'>b", "<a href=\"x>y\">b"},
        {"a<script/>b", "a"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.page);
        EXPECT_EQ(Shown(row.page), row.shown);
    }
}

TEST(ShowableMarkup, GivesUpWhenThereIsTooMuch) {
    struct Row {
        const char* start;
        const char* end;
        int mostNested;
    };
    constexpr Row rows[] = {{"<table>", "</table>", 4}, {"<div>", "</div>", 100},
                            {"<b>", "", 100},           {"<p>", "</p>", 5000},
                            {"<br>", "", 10'000},       {"<li>", "", 10'000}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.start);
        const auto nested = [&row](int times) {
            return Shown(Repeated(row.start, times) + "x" + Repeated(row.end, times));
        };
        EXPECT_NE(nested(row.mostNested), "(nothing)");
        EXPECT_EQ(nested(row.mostNested + 1), "(nothing)");
    }
    EXPECT_NE(Shown(Repeated("<table></table><div></div>", 2500)), "(nothing)");
    EXPECT_EQ(Shown(Repeated("<table></table><div></div>", 2501)), "(nothing)");
}

// A word goes on behind a tag, and an entity stays in one piece.
TEST(ShowableMarkup, BreaksLongWords) {
    const std::string space = "\xE2\x80\x8B", hard = "\xC2\xA0";
    struct Row {
        std::string page, shown;
    };
    const auto x = [](int count) { return std::string(static_cast<std::size_t>(count), 'x'); };
    const Row rows[] = {
        {x(300) + "<b>" + x(300) + "</b>", x(300) + "<b>" + x(200) + space + x(100) + "</b>"},
        {x(498) + "&amp;y", x(498) + "&amp;" + space + "y"},
        {x(498) + "&amp;&lt;y", x(498) + "&amp;" + space + "&lt;y"},
        {x(498) + "&#8364;&gt", x(498) + "&#8364;" + space + "&gt"},
        {x(499) + "&" + x(50), x(499) + "&" + x(40) + space + x(10)},
        {Repeated("<", 130), Repeated("&lt;", 125) + space + Repeated("&lt;", 5)},
        {"<img alt='a" + x(600) + "'>", "[a" + x(498) + space + x(102) + "]"},
        {x(400) + hard + x(200), x(400) + hard + x(99) + space + x(101)},
        {x(400) + "\t" + x(200) + "\n" + x(400), x(400) + "\t" + x(200) + "\n" + x(400)},
        {"a\xE2\x80\xA8z", "a\nz"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.page);
        EXPECT_EQ(Shown(row.page), row.shown);
    }
}

TEST(WithBreaks, BreaksWordsThatNoLineHolds) {
    const auto broken = [](const std::string& text) {
        return WithBreaks(QString::fromStdString(text)).toStdString();
    };
    const std::string space = "\xE2\x80\x8B";
    EXPECT_EQ(broken(""), "");
    EXPECT_EQ(broken("some words\nhere"), "some words\nhere");
    EXPECT_EQ(broken(std::string(499, 'x')), std::string(499, 'x'));
    EXPECT_EQ(broken(std::string(501, 'x')), std::string(500, 'x') + space + "x");
    EXPECT_EQ(broken(std::string(300, 'x') + " " + std::string(300, 'x')),
              std::string(300, 'x') + " " + std::string(300, 'x'));
    EXPECT_EQ(broken(std::string(1001, 'x')),
              std::string(500, 'x') + space + std::string(500, 'x') + space + "x");
    // A letter of two units is not torn.
    const std::string wide = "\xF0\x9F\x98\x80";
    EXPECT_EQ(broken(std::string(499, 'x') + wide + "y"),
              std::string(499, 'x') + wide + space + "y");
}

}  // namespace
}  // namespace orvane
