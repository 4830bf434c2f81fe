#include "windows/page_markup.h"

#include <QStringView>
#include <algorithm>
#include <iterator>

namespace orvane {

namespace {

constexpr int mostTags = 10'000;
constexpr int deepestTag = 100;
constexpr int deepestTable = 4;  // the time that tables take doubles with each one inside another
constexpr int longestWord = 500;
constexpr int longestEntity = 40;  // letters behind the '&'

constexpr const char* keptAttributes[] = {"align", "bgcolor", "color", "href",
                                          "id",    "name",    "valign"};
// Tags that are not closed, or need not be.
constexpr const char* openEnded[] = {
    "area", "base", "br",     "col", "colgroup", "dd", "dt",    "hr", "img",   "input", "li",
    "link", "meta", "option", "p",   "tbody",    "td", "tfoot", "th", "thead", "tr",    "wbr"};
// Tags with something inside that is not text.
constexpr const char* leftOut[] = {"iframe", "object", "script", "style", "svg", "title"};

template <std::size_t count>
bool IsOneOf(const QString& name, const char* const (&names)[count]) {
    return std::any_of(std::begin(names), std::end(names),
                       [&name](const char* one) { return name == QLatin1String(one); });
}

bool IsNameLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           c == u'-';
}

// In small letters; empty where no letter stands.
QString NameAt(QStringView text, qsizetype at) {
    qsizetype end = at;
    if (at < text.size() && !text[at].isLetter()) return {};
    while (end < text.size() && IsNameLetter(text[end])) ++end;
    return text.mid(at, end - at).toString().toLower();
}

// The '>' that ends a tag; those inside the quotes of a value do not. -1 when there is none.
qsizetype EndOfTag(QStringView text, qsizetype at) {
    QChar quote;
    bool isBehindEquals = false;
    for (; at < text.size(); ++at) {
        const QChar c = text[at];
        if (!quote.isNull()) {
            if (c == quote) quote = QChar();
        } else if (isBehindEquals && (c == u'"' || c == u'\'')) {
            quote = c;
        } else if (c == u'>') {
            return at;
        }
        isBehindEquals = quote.isNull() && (c == u'=' || (isBehindEquals && c.isSpace()));
    }
    return -1;
}

// Copies text and gives places to break to the words that are too long. A word goes on behind a
// tag; an entity is one letter and is not torn.
class WordBreaker {
public:
    void Copy(QStringView text, QString& copy) {
        for (const QChar c : text) {
            const bool isInEntity = entityLeft > 0 && IsOfEntity(c);
            if (letters >= longestWord && !isInEntity && !c.isLowSurrogate()) {
                copy += QChar(0x200B);
                letters = 0;
            }
            // Line separators would make one paragraph of all lines.
            copy += c == QChar::LineSeparator ? QChar(u'\n') : c;
            letters = EndsWord(c) ? 0 : letters + 1;
            if (c == u'&') {
                entityLeft = longestEntity;
            } else {
                entityLeft = isInEntity && c != u';' ? entityLeft - 1 : 0;
            }
        }
    }

private:
    // Other kinds of space hold a line together.
    static bool EndsWord(QChar c) {
        return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    }
    static bool IsOfEntity(QChar c) { return IsNameLetter(c) || c == u'#' || c == u';'; }

    int letters = 0;
    int entityLeft = 0;
};

struct Attribute {
    QString name, value;
};

// The next attribute with a value; `at` moves behind it. Its name is empty at the end of the tag.
Attribute NextAttribute(QStringView tag, qsizetype& at) {
    while (at < tag.size()) {
        while (at < tag.size() && !(IsNameLetter(tag[at]) && tag[at].isLetter())) ++at;
        const QString name = NameAt(tag, at);
        at += name.size();
        while (at < tag.size() && tag[at].isSpace()) ++at;
        if (at >= tag.size() || tag[at] != u'=') continue;
        ++at;
        while (at < tag.size() && tag[at].isSpace()) ++at;
        if (at >= tag.size()) break;
        const QChar quote = tag[at];
        const bool isQuoted = quote == u'"' || quote == u'\'';
        if (isQuoted) ++at;
        const qsizetype start = at;
        while (at < tag.size() && (isQuoted ? tag[at] != quote : !tag[at].isSpace())) ++at;
        return {name, tag.mid(start, at++ - start).toString()};
    }
    return {};
}

class MarkupCopier {
public:
    explicit MarkupCopier(const QString& wholePage) : page(wholePage) {}

    std::optional<QString> CopyAll() {
        for (qsizetype at = 0; at < page.size() && !isTooMuch;) {
            const qsizetype open = page.indexOf(u'<', at);
            breaker.Copy(QStringView(page).mid(at, open < 0 ? -1 : open - at), copy);
            at = open < 0 ? page.size() : CopyTag(open);
        }
        if (isTooMuch) return std::nullopt;
        return copy;
    }

private:
    // Where the text goes on.
    qsizetype CopyTag(qsizetype open) {
        const QStringView rest = QStringView(page).mid(open + 1);
        if (rest.startsWith(u"!--")) return Behind(page.indexOf(QLatin1String("-->"), open), 3);
        const bool isClosing = rest.startsWith(u'/');
        const QString name = NameAt(rest, isClosing ? 1 : 0);
        const bool isDeclaration = rest.startsWith(u'!') || rest.startsWith(u'?');
        if (name.isEmpty() && !isDeclaration && !isClosing) {
            breaker.Copy(u"&lt;", copy);
            return open + 1;
        }
        const qsizetype end = EndOfTag(page, open);
        if (end < 0 || name.isEmpty()) return Behind(end, 1);
        Count(name, isClosing);
        const QStringView inside = QStringView(page).mid(open + 1, end - open - 1);
        if (isClosing) {
            copy += QLatin1String("</") + name + u'>';
        } else if (IsOneOf(name, leftOut)) {
            const qsizetype close =
                page.indexOf(QLatin1String("</") + name, end, Qt::CaseInsensitive);
            return close < 0 ? page.size() : close;
        } else {
            CopyOpening(name, inside);
        }
        return end + 1;
    }

    qsizetype Behind(qsizetype at, qsizetype length) const {
        return at < 0 ? page.size() : at + length;
    }

    void Count(const QString& name, bool isClosing) {
        const int step = isClosing ? -1 : 1;
        if (!IsOneOf(name, openEnded)) depth = std::max(depth + step, 0);
        if (name == QLatin1String("table")) tables = std::max(tables + step, 0);
        isTooMuch = ++tags > mostTags || depth > deepestTag || tables > deepestTable;
    }

    void CopyOpening(const QString& name, QStringView inside) {
        const bool isPicture = name == QLatin1String("img");
        QString attributes, words;
        qsizetype at = name.size();
        for (Attribute next = NextAttribute(inside, at); !next.name.isEmpty();
             next = NextAttribute(inside, at)) {
            next.value.replace(u'"', QLatin1String("&quot;"));
            if (next.name == QLatin1String("alt")) words = next.value;
            if (!IsOneOf(next.name, keptAttributes)) continue;
            attributes += u' ' + next.name + QLatin1String("=\"") + next.value + u'"';
        }
        words.replace(u'<', QLatin1String("&lt;"));
        if (!isPicture) {
            copy += u'<' + name + attributes + u'>';
        } else if (!words.isEmpty()) {
            breaker.Copy(u'[' + words + u']', copy);
        }
    }

    const QString& page;
    QString copy;
    WordBreaker breaker;
    int tags = 0, depth = 0, tables = 0;
    bool isTooMuch = false;
};

}  // namespace

std::optional<QString> ShowableMarkup(const QString& page) { return MarkupCopier(page).CopyAll(); }

QString WithBreaks(const QString& text) {
    QString broken;
    broken.reserve(text.size());
    WordBreaker().Copy(text, broken);
    return broken;
}

}  // namespace orvane
