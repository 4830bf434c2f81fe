#pragma once

#include <QDialog>
#include <QPushButton>
#include <QTextBrowser>
#include <functional>

#include "windows/news_page.h"

namespace orvane {

// Shows one page of text. Pictures and style sheets that a page names are not loaded: each of them
// would be one more question to a server, outside the limits of the page, and the news are text.
// Nothing of a page is run, and files of this computer cannot be reached from it.
class PageView : public QTextBrowser {
public:
    explicit PageView(QWidget* parent);

    void ShowPage(const WebPage& page);
    void ShowFailure(const QUrl& address, const QString& reason);
    void ShowMessage(const QString& heading, const QString& text);

    // Opens a link of the page to another one; the system's browser does.
    std::function<void(const QUrl& address)> openAddress;

protected:
    QVariant loadResource(int type, const QUrl& name) override;

private:
    void FollowLink(const QUrl& link);

    QUrl shownAddress;
};

// The Software news dialog. The page is asked for as soon as the dialog is there.
class NewsDialog : public QDialog {
public:
    NewsDialog(QWidget* owner, const QUrl& address, const PageLimits& limits = {});

    PageView page;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QPushButton closeButton;
    PageFetch fetch;
};

void ShowSoftwareNews(QWidget* owner);

}  // namespace orvane
