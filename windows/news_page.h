#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QString>
#include <QTimer>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>

// One page of the web. Nothing but the page itself is asked for, nothing is sent but the question,
// and nothing is kept: no cookies, no cache, no passwords.

namespace orvane {

struct PageLimits {
    qint64 bytes = 512 * 1024;
    int answerMilliseconds = 15'000;  // until a server answers, for each address
    int wholeMilliseconds = 60'000;   // until the page is there
    int redirects = 5;
};

struct WebPage {
    QUrl address;  // where it was found in the end
    bool isHtml = false;
    QString text;
};

bool IsWebAddress(const QUrl& address);

// Whether an answer from the first address may send on to the second one. From a safe address only
// to another safe one.
bool MayRedirect(const QUrl& from, const QUrl& to);

// A page with this content type, which may be empty. Nothing when it is not a page of text. The
// text is read by its byte order mark, by the character set that the content type names, by the
// one that the page names, as UTF-8 if it is that, and as Windows-1252 in the end: some text comes
// out in any case.
std::optional<WebPage> ReadPage(const QUrl& address, const QByteArray& contentType,
                                const QByteArray& body);

class PageFetch {
public:
    explicit PageFetch(const PageLimits& chosenLimits);
    ~PageFetch();
    PageFetch(const PageFetch&) = delete;
    PageFetch& operator=(const PageFetch&) = delete;

    // One of the two is called, once, some time after this returns; it may start the next question.
    // `reason` is a sentence.
    void Start(const QUrl& address, std::function<void(const WebPage& page)> arrived,
               std::function<void(const QString& reason)> failed);
    // Neither is called from here on.
    void Stop();
    bool IsUnderWay() const { return reply != nullptr; }

private:
    // An answer must not be destroyed in the middle of what it tells.
    struct LaterDeleter {
        void operator()(QNetworkReply* answer) const;
    };

    void Drop();
    void Ask(const QUrl& address);
    void ReadHead();
    bool ReadBody();  // whether the page is still within the limit
    void Finish();
    void Follow(const QUrl& address);
    void Fail(const QString& reason);

    const PageLimits limits;
    std::function<void(const WebPage&)> onPage;
    std::function<void(const QString&)> onFailure;
    QObject listener;
    QNetworkAccessManager manager;
    std::unique_ptr<QNetworkReply, LaterDeleter> reply;
    QTimer answerTimer, wholeTimer;
    QByteArray body;
    int redirectsLeft = 0;
};

}  // namespace orvane
