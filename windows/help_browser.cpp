#include "windows/help_browser.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSvgRenderer>
#include <QTextDocument>
#include <QWheelEvent>
#include <algorithm>

#include "windows/look.h"

namespace orvane {

namespace {

constexpr int firstTextSize = 14;
constexpr int leastTextSize = 8;
constexpr int largestTextSize = 40;
constexpr int pageMargin = 16;
constexpr int listIndent = 26;
constexpr int aboveHeading = 8;
constexpr int wheelStep = 120;

// The browser pads the cells of tables but no paragraphs, so each block of fixed text becomes a
// table of one cell of the same class. It also drops the line ends that a block begins with; the
// first of them belongs to the tag, but the others are blank lines of a report.
QString WithPaddedBlocks(QString page) {
    static const QRegularExpression blankLine(QStringLiteral(R"re((<pre[^>]*>\n)\n)re"));
    page.replace(blankLine, QStringLiteral(R"(\1<br/>)"));
    static const QRegularExpression block(
        QStringLiteral(R"re(<pre(?: class="(\w+)")?[^>]*>\n?(.*?)</pre>)re"),
        QRegularExpression::DotMatchesEverythingOption);
    static const QString table = QStringLiteral(
        R"(<table class="\1" width="100%" cellspacing="0" cellpadding="8"><tr><td class="\1">)"
        R"(<pre class="\1">\2</pre></td></tr></table>)");
    return page.replace(block, table);
}

// A picture of lines with as many pixels as the screen has for it, so that it is sharp at every
// scale.
QImage Drawn(const QByteArray& svg, qreal scale) {
    QSvgRenderer renderer(svg);
    QImage picture((renderer.viewBoxF().size() * scale).toSize(),
                   QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull()) return picture;
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    renderer.render(&painter);
    painter.end();
    picture.setDevicePixelRatio(scale);
    return picture;
}

QPalette PagePalette(QPalette palette) {
    // What was found stays in view while the find box has the focus.
    for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText}) {
        palette.setColor(QPalette::Inactive, role, palette.color(QPalette::Active, role));
    }
    return palette;
}

}  // namespace

HelpBrowser::HelpBrowser(const QString& pages, QWidget* parent)
    : QTextBrowser(parent), folder(QFileInfo(pages).canonicalFilePath()), textSize(firstTextSize) {
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, &HelpBrowser::FollowLink);
    setPalette(PagePalette(palette()));
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(pageMargin);
    document()->setIndentWidth(listIndent);
    document()->setDefaultStyleSheet(
        QStringLiteral("pre, code { font-family: '%1'; }").arg(FixedFont().family()));
    SetTextSize(firstTextSize);
}

bool HelpBrowser::HasPage(const QString& topic) const { return !PathOf(UrlOf(topic)).isEmpty(); }

void HelpBrowser::ShowTopic(const QString& topic) {
    setSource(UrlOf(topic), QTextDocument::HtmlResource);
}

QString HelpBrowser::ShownTopic() const {
    const QString path = PathOf(source());
    if (path.isEmpty()) return {};
    const QString page = path.mid(folder.size() + 1);
    return source().hasFragment() ? page + '#' + source().fragment() : page;
}

void HelpBrowser::ReturnToPlace() {
    if (!source().hasFragment()) return;
    scrollToAnchor(source().fragment());
    QScrollBar& bar = *verticalScrollBar();
    if (bar.value() < bar.maximum()) bar.setValue(bar.value() - aboveHeading);
}

void HelpBrowser::doSetSource(const QUrl& url, QTextDocument::ResourceType type) {
    QTextBrowser::doSetSource(url, type);
    ReturnToPlace();
}

bool HelpBrowser::Find(const QString& text, bool backward) {
    QTextDocument::FindFlags flags;
    flags.setFlag(QTextDocument::FindBackward, backward);
    QTextCursor found = document()->find(text, textCursor(), flags);
    if (found.isNull()) {
        QTextCursor otherEnd(document());
        if (backward) otherEnd.movePosition(QTextCursor::End);
        found = document()->find(text, otherEnd, flags);
    }
    if (found.isNull()) return false;
    setTextCursor(found);
    return true;
}

void HelpBrowser::Zoom(int steps) {
    const int size = steps == 0 ? firstTextSize : textSize + steps;
    SetTextSize(std::clamp(size, leastTextSize, largestTextSize));
}

void HelpBrowser::SetTextSize(int pixels) {
    textSize = pixels;
    QFont size = font();
    size.setPixelSize(pixels);
    setFont(size);
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
    QFile file(PathOf(source().resolved(name)));
    if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly)) return {};
    const QByteArray bytes = file.readAll();
    if (file.fileName().endsWith(QStringLiteral(".svg"))) return Drawn(bytes, devicePixelRatioF());
    if (type != QTextDocument::HtmlResource) return bytes;
    return WithPaddedBlocks(QString::fromUtf8(bytes));
}

void HelpBrowser::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        return QTextBrowser::wheelEvent(event);
    }
    const int steps = event->angleDelta().y() / wheelStep;
    if (steps != 0) Zoom(steps);
    event->accept();
}

QUrl HelpBrowser::UrlOf(const QString& topic) const {
    const qsizetype mark = topic.indexOf('#');
    QUrl url = QUrl::fromLocalFile(folder + '/' + topic.left(mark));
    if (mark >= 0) url.setFragment(topic.mid(mark + 1));
    return url;
}

QString HelpBrowser::PathOf(const QUrl& url) const {
    if (folder.isEmpty() || !url.isLocalFile()) return {};
    const QFileInfo file(url.toLocalFile());
    const QString path = file.canonicalFilePath();
    return file.isFile() && path.startsWith(folder + '/') ? path : QString();
}

void HelpBrowser::FollowLink(const QUrl& link) {
    const QUrl url = source().resolved(link);
    if (url.scheme() == QStringLiteral("http") || url.scheme() == QStringLiteral("https")) {
        QDesktopServices::openUrl(url);
    } else if (!PathOf(url).isEmpty()) {
        setSource(url, QTextDocument::HtmlResource);
    }
}

}  // namespace orvane
