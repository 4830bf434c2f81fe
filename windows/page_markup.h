#pragma once

#include <QString>
#include <optional>

namespace orvane {

// The mark-up of a page from anywhere as it may be given to a text control: what is shown takes
// time that grows with the length of the page. Of the attributes those stay that name a place,
// lead to one, or set a colour or an alignment; the words that stand for a picture take its place;
// scripts and styles are left out. Nothing where the page has far more or deeper mark-up than a
// page to read.
std::optional<QString> ShowableMarkup(const QString& page);

// Words that no line can hold get places to break that are not seen: the time that a text control
// takes for a word grows with the square of its length.
QString WithBreaks(const QString& text);

}  // namespace orvane
