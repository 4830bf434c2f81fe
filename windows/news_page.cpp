#include "windows/news_page.h"

#include <QNetworkRequest>
#include <QStringDecoder>
#include <string_view>
#include <utility>

#include "storage/qt_bytes.h"

namespace orvane {

namespace {

constexpr int longestPhrase = 80;         // of what a server says about its answer
constexpr qsizetype searchedHead = 1024;  // bytes of a page that may name its character set

QString Sentence(const char* text) { return QString::fromLatin1(text); }

QString FromWindows1252(const QByteArray& bytes) {
    return QStringFrom({bytes.data(), static_cast<std::size_t>(bytes.size())});
}

// Nothing where the bytes are not in that encoding.
std::optional<QString> DecodedWhole(const QByteArray& bytes, QStringConverter::Encoding encoding) {
    QStringDecoder decoder(encoding);
    QString text = decoder(bytes + '\n');  // so that a letter that is cut off at the end shows
    if (decoder.hasError()) return std::nullopt;
    text.chop(1);
    return text;
}

// The name behind "charset=", in small letters; empty without one.
QByteArray CharsetIn(const QByteArray& text) {
    const QByteArray lowered = text.toLower();
    qsizetype at = lowered.indexOf("charset=");
    if (at < 0) return {};
    at += 8;
    while (at < lowered.size() &&
           std::string_view(" \"'").find(lowered[at]) != std::string_view::npos)
        ++at;
    qsizetype end = at;
    const auto isOfName = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    };
    while (end < lowered.size() && isOfName(lowered[end])) ++end;
    return lowered.mid(at, end - at);
}

// Nothing for a name that isn't known. As on the web, all names of Latin letters of one byte stand
// for Windows-1252.
std::optional<QString> DecodedByName(const QByteArray& bytes, const QByteArray& name) {
    for (const char* const western :
         {"windows-1252", "cp1252", "iso-8859-1", "iso8859-1", "latin1", "us-ascii", "ascii"}) {
        if (name == western) return FromWindows1252(bytes);
    }
    const auto encoding = QStringConverter::encodingForName(name.constData());
    if (name.isEmpty() || !encoding || *encoding == QStringConverter::System) return std::nullopt;
    return QStringDecoder(*encoding)(bytes);
}

QString Decoded(const QByteArray& contentType, const QByteArray& body) {
    if (const auto encoding = QStringConverter::encodingForData(body)) {
        return QStringDecoder(*encoding)(body);
    }
    if (const auto text = DecodedByName(body, CharsetIn(contentType))) return *text;
    // A page that can name its character set in single bytes is not in one of wider letters.
    const QByteArray name = CharsetIn(body.left(searchedHead));
    if (!name.startsWith("utf-16") && !name.startsWith("utf-32")) {
        if (const auto text = DecodedByName(body, name)) return *text;
    }
    if (const auto text = DecodedWhole(body, QStringConverter::Utf8)) return *text;
    return FromWindows1252(body);
}

// In our words where they are plainer than the toolkit's.
QString ReasonFor(const QNetworkReply& reply) {
    switch (reply.error()) {
        case QNetworkReply::HostNotFoundError:
            return Sentence(
                       "There is no server of the name \"%1\", or there is no connection to "
                       "the Internet.")
                .arg(reply.url().host());
        case QNetworkReply::ConnectionRefusedError:
            return Sentence("The server refuses the connection.");
        case QNetworkReply::RemoteHostClosedError:
            return Sentence("The connection was closed before the page was complete.");
        case QNetworkReply::TimeoutError:
            return Sentence("The server did not answer in time.");
        case QNetworkReply::SslHandshakeFailedError:
            return Sentence("The connection is not safe: %1.").arg(reply.errorString());
        default:
            return Sentence("The connection failed: %1.").arg(reply.errorString());
    }
}

QString ReasonForStatus(const QNetworkReply& reply, int status) {
    const QString phrase = reply.attribute(QNetworkRequest::HttpReasonPhraseAttribute)
                               .toString()
                               .simplified()
                               .left(longestPhrase);
    return Sentence("The server answered: %1.")
        .arg((QString::number(status) + QLatin1Char(' ') + phrase).trimmed());
}

int StatusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

}  // namespace

bool IsWebAddress(const QUrl& address) {
    return address.isValid() && !address.host().isEmpty() &&
           (address.scheme() == QLatin1String("http") ||
            address.scheme() == QLatin1String("https"));
}

bool MayRedirect(const QUrl& from, const QUrl& to) {
    return IsWebAddress(to) &&
           (from.scheme() == QLatin1String("http") || to.scheme() == QLatin1String("https"));
}

std::optional<WebPage> ReadPage(const QUrl& address, const QByteArray& contentType,
                                const QByteArray& body) {
    const QByteArray type = contentType.split(';').front().trimmed().toLower();
    const bool isHtml = type == "text/html" || type == "application/xhtml+xml" ||
                        (type.isEmpty() && body.trimmed().startsWith('<'));
    const bool isText = type.isEmpty() || type.startsWith("text/");
    if (!isHtml && !isText) return std::nullopt;
    return WebPage{address, isHtml, Decoded(contentType, body)};
}

void PageFetch::LaterDeleter::operator()(QNetworkReply* answer) const {
    answer->abort();
    answer->deleteLater();
}

PageFetch::PageFetch(const PageLimits& chosenLimits) : limits(chosenLimits) {
    for (QTimer* const timer : {&answerTimer, &wholeTimer}) timer->setSingleShot(true);
    QObject::connect(&answerTimer, &QTimer::timeout,
                     [this] { Fail(Sentence("The server did not answer in time.")); });
    QObject::connect(&wholeTimer, &QTimer::timeout,
                     [this] { Fail(Sentence("The page did not arrive in time.")); });
}

PageFetch::~PageFetch() { Stop(); }

void PageFetch::Start(const QUrl& address, std::function<void(const WebPage&)> arrived,
                      std::function<void(const QString&)> failed) {
    Stop();
    onPage = std::move(arrived);
    onFailure = std::move(failed);
    redirectsLeft = limits.redirects;
    wholeTimer.start(limits.wholeMilliseconds);
    Ask(address);
}

void PageFetch::Stop() {
    answerTimer.stop();
    wholeTimer.stop();
    Drop();
    body.clear();
}

// What the answer tells while it is ended is not for us.
void PageFetch::Drop() {
    if (reply != nullptr) QObject::disconnect(reply.get(), nullptr, &listener, nullptr);
    reply.reset();
}

void PageFetch::Ask(const QUrl& address) {
    QNetworkRequest request(address);
    using Request = QNetworkRequest;
    request.setAttribute(Request::RedirectPolicyAttribute, Request::ManualRedirectPolicy);
    request.setAttribute(Request::CookieLoadControlAttribute, Request::Manual);
    request.setAttribute(Request::CookieSaveControlAttribute, Request::Manual);
    request.setAttribute(Request::AuthenticationReuseAttribute, Request::Manual);
    request.setAttribute(Request::CacheLoadControlAttribute, Request::AlwaysNetwork);
    request.setAttribute(Request::CacheSaveControlAttribute, false);
    request.setHeader(Request::UserAgentHeader, QStringLiteral("Orvane"));
    request.setRawHeader("Accept", "text/html, text/plain");
    Drop();
    body.clear();
    reply.reset(manager.get(request));
    reply->setReadBufferSize(limits.bytes + 1);
    answerTimer.start(limits.answerMilliseconds);
    QNetworkReply* const asked = reply.get();
    QObject::connect(asked, &QNetworkReply::metaDataChanged, &listener, [this] { ReadHead(); });
    QObject::connect(asked, &QNetworkReply::readyRead, &listener, [this] { ReadBody(); });
    QObject::connect(asked, &QNetworkReply::finished, &listener, [this] { Finish(); });
}

void PageFetch::ReadHead() {
    const int status = StatusOf(*reply);
    if (status == 0) return;
    answerTimer.stop();
    const QVariant next = reply->attribute(QNetworkRequest::RedirectionTargetAttribute);
    if (status >= 300 && status < 400 && next.isValid()) {
        Follow(reply->url().resolved(next.toUrl()));
    } else if (reply->header(QNetworkRequest::ContentLengthHeader).toLongLong() > limits.bytes) {
        Fail(Sentence("The page is too long."));
    }
}

bool PageFetch::ReadBody() {
    body += reply->read(limits.bytes + 1 - body.size());
    const bool isWithin = body.size() <= limits.bytes;
    if (!isWithin) Fail(Sentence("The page is too long."));
    return isWithin;
}

void PageFetch::Finish() {
    if (!ReadBody()) return;
    const int status = StatusOf(*reply);
    if (status != 0 && (status < 200 || status >= 300))
        return Fail(ReasonForStatus(*reply, status));
    if (reply->error() != QNetworkReply::NoError) return Fail(ReasonFor(*reply));
    if (body.isEmpty()) return Fail(Sentence("The server sent an empty page."));
    const QByteArray type = reply->header(QNetworkRequest::ContentTypeHeader).toByteArray();
    const std::optional<WebPage> page = ReadPage(reply->url(), type, body);
    if (!page) return Fail(Sentence("The server sent something that is not a page of text."));
    Stop();
    const auto arrived = std::exchange(onPage, {});
    arrived(*page);
}

void PageFetch::Follow(const QUrl& address) {
    if (!MayRedirect(reply->url(), address)) {
        Fail(Sentence("The server sends on to an address that is not opened: %1")
                 .arg(address.toDisplayString().left(longestPhrase)));
    } else if (redirectsLeft-- == 0) {
        Fail(Sentence("The server sends on from one address to the next without an end."));
    } else {
        Ask(address);
    }
}

void PageFetch::Fail(const QString& reason) {
    Stop();
    const auto failed = std::exchange(onFailure, {});
    failed(reason);
}

}  // namespace orvane
