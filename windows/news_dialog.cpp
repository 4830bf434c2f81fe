#include "windows/news_dialog.h"

#include <QDesktopServices>
#include <QTextDocument>
#include <optional>

#include "storage/qt_bytes.h"
#include "windows/control_ids.h"
#include "windows/look.h"
#include "windows/page_markup.h"
#include "windows/program_facts.h"

namespace orvane {

namespace {

constexpr int textPixels = 13;

QRect Place(int left, int top, int width, int height) {
    return DialogRect(QFontMetrics(InterfaceFont()), left, top, width, height);
}

}  // namespace

PageView::PageView(QWidget* parent)
    : QTextBrowser(parent),
      openAddress([](const QUrl& address) { QDesktopServices::openUrl(address); }) {
    QFont font = InterfaceFont();
    font.setPixelSize(textPixels);
    setFont(font);
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    document()->setDocumentMargin(10);
    connect(this, &QTextBrowser::anchorClicked, this,
            [this](const QUrl& link) { FollowLink(link); });
}

void PageView::ShowPage(const WebPage& page) {
    shownAddress = page.address;
    if (!page.isHtml) return setPlainText(WithBreaks(page.text));
    if (const std::optional<QString> markup = ShowableMarkup(page.text)) {
        setHtml(*markup);
    } else {
        ShowFailure(page.address, QStringLiteral("The page is too complicated."));
    }
}

void PageView::ShowFailure(const QUrl& address, const QString& reason) {
    ShowMessage(QStringLiteral("The news cannot be shown"),
                reason + QLatin1String("\n\n") + address.toDisplayString());
}

void PageView::ShowMessage(const QString& heading, const QString& text) {
    setHtml(QStringLiteral("<h3>%1</h3><p style=\"white-space: pre-wrap\">%2</p>")
                .arg(heading.toHtmlEscaped(), text.toHtmlEscaped()));
}

QVariant PageView::loadResource(int, const QUrl&) { return {}; }

void PageView::FollowLink(const QUrl& link) {
    const QUrl address = shownAddress.resolved(link);
    if (!IsWebAddress(address)) return;
    if (address.hasFragment() && address.matches(shownAddress, QUrl::RemoveFragment)) {
        scrollToAnchor(address.fragment(QUrl::FullyDecoded));
    } else {
        openAddress(address);
    }
}

NewsDialog::NewsDialog(QWidget* owner, const QUrl& address, const PageLimits& limits)
    : QDialog(owner), page(this), closeButton("Close", this), fetch(limits) {
    setFont(InterfaceFont());
    setWindowTitle(QStringLiteral("Software news"));
    setSizeGripEnabled(true);
    setMinimumSize(Place(0, 0, 150, 90).size());
    NameControl(page, ids::newsDialog::page);
    NameControl(closeButton, ids::newsDialog::closeButton);
    closeButton.setDefault(true);
    connect(&closeButton, &QPushButton::clicked, this, &QDialog::reject);
    resize(Place(0, 0, 360, 240).size());
    page.ShowMessage(QStringLiteral("Loading ..."), address.toDisplayString());
    fetch.Start(
        address, [this](const WebPage& arrived) { page.ShowPage(arrived); },
        [this, address](const QString& reason) { page.ShowFailure(address, reason); });
    page.setFocus();
}

void NewsDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    const QRect edge = Place(7, 7, 50, 14);
    const QRect inside = rect().adjusted(edge.left(), edge.top(), -edge.left(), -edge.top());
    closeButton.setGeometry(inside.right() + 1 - edge.width(), inside.bottom() + 1 - edge.height(),
                            edge.width(), edge.height());
    page.setGeometry(inside.left(), inside.top(), inside.width(),
                     closeButton.y() - edge.top() - inside.top());
}

void ShowSoftwareNews(QWidget* owner) {
    const QUrl address(QStringFrom(WebSite()) + QLatin1String("software/orvane/online/"));
    NewsDialog(owner, address).exec();
}

}  // namespace orvane
