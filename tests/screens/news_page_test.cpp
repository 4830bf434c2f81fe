#include "windows/news_page.h"

#include <gtest/gtest.h>

#include <QTest>
#include <optional>
#include <string>

#include "tests/support/web_server.h"

namespace orvane {
namespace {

using test::WebServer;

// What came of one question.
struct Outcome {
    std::optional<WebPage> page;
    std::string reason;
    int calls = 0;
};

class PageFetchTest : public testing::Test {
protected:
    PageFetchTest() {
        limits.bytes = 100'000;
        limits.redirects = 3;
    }

    void Start(PageFetch& fetch, const QUrl& address) {
        fetch.Start(
            address,
            [this](const WebPage& page) {
                outcome.page = page;
                ++outcome.calls;
            },
            [this](const QString& reason) {
                outcome.reason = reason.toStdString();
                ++outcome.calls;
            });
    }
    Outcome Fetch(const QUrl& address) {
        outcome = {};
        PageFetch fetch(limits);
        Start(fetch, address);
        EXPECT_EQ(outcome.calls, 0);
        EXPECT_TRUE(fetch.IsUnderWay());
        EXPECT_TRUE(QTest::qWaitFor([this] { return outcome.calls > 0; }, 20'000));
        EXPECT_FALSE(fetch.IsUnderWay());
        QTest::qWait(0);
        EXPECT_EQ(outcome.calls, 1);
        return outcome;
    }
    Outcome Fetch(const char* path = "/") { return Fetch(server.Address(path)); }

    WebServer server;
    PageLimits limits;
    Outcome outcome;
};

TEST_F(PageFetchTest, BringsAPage) {
    server.SayPage("/", "text/html; charset=utf-8",
                   "<p>Gr\xC3\xBC\xC3\x9F"
                   "e</p>");
    const Outcome got = Fetch();
    ASSERT_TRUE(got.page) << got.reason;
    EXPECT_EQ(got.page->text, QString::fromUtf8("<p>Gr\xC3\xBC\xC3\x9F"
                                                "e</p>"));
    EXPECT_TRUE(got.page->isHtml);
    EXPECT_EQ(got.page->address, server.Address());
}

TEST_F(PageFetchTest, SendsNothingButTheQuestion) {
    server.Say("/",
               "HTTP/1.1 302 Found\r\nSet-Cookie: id=1; Path=/\r\nLocation: /next\r\n"
               "Content-Length: 0\r\n\r\n");
    server.SayPage("/next", "text/plain", "here");
    ASSERT_TRUE(Fetch().page);
    ASSERT_TRUE(Fetch().page);
    ASSERT_EQ(server.questions.size(), 4);
    for (const QByteArray& question : server.questions) {
        SCOPED_TRACE(question.toStdString());
        EXPECT_TRUE(question.startsWith("GET "));
        EXPECT_FALSE(question.toLower().contains("\r\ncookie:"));
        EXPECT_FALSE(question.toLower().contains("\r\nauthorization:"));
        EXPECT_FALSE(question.toLower().contains("\r\nreferer:"));
        EXPECT_FALSE(question.toLower().contains("\r\nif-"));
    }
}

TEST_F(PageFetchTest, TellsWhatTheServerAnswered) {
    struct Row {
        const char* head;
        const char* reason;
    };
    const Row rows[] = {
        {"404 Not Found", "The server answered: 404 Not Found."},
        {"401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"x\"",
         "The server answered: 401 Unauthorized."},
        {"407 Proxy Authentication Required",
         "The server answered: 407 Proxy Authentication Required."},
        {"500 ", "The server answered: 500."},
        {"503 Service   Unavailable", "The server answered: 503 Service Unavailable."},
        {"300 Multiple Choices", "The server answered: 300 Multiple Choices."},
        {"304 Not Modified", "The server answered: 304 Not Modified."},
        {"204 No Content", "The server sent an empty page."},
        {"200 OK", "The server sent an empty page."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.head);
        server.Say("/", QByteArray("HTTP/1.1 ") + row.head + "\r\nContent-Length: 0\r\n\r\n");
        const Outcome got = Fetch();
        EXPECT_FALSE(got.page);
        EXPECT_EQ(got.reason, row.reason);
    }
}

TEST_F(PageFetchTest, FollowsRedirectsWithinTheWeb) {
    for (const char* status : {"301 Moved Permanently", "302 Found", "303 See Other",
                               "307 Temporary Redirect", "308 Permanent Redirect"}) {
        SCOPED_TRACE(status);
        server.SendOn("/", "/a/b", status);
        server.SendOn("/a/b", "c?d=1", status);
        server.SendOn("/a/c?d=1", server.Address("/last").toEncoded(), status);
        server.SayPage("/last", "text/plain", "found");
        const Outcome got = Fetch();
        ASSERT_TRUE(got.page) << got.reason;
        EXPECT_EQ(got.page->text, "found");
        EXPECT_EQ(got.page->address, server.Address("/last"));
    }
}

TEST_F(PageFetchTest, FollowsNoRedirectElsewhere) {
    for (const char* target : {"file:///etc/hostname", "ftp://127.0.0.1/x", "data:text/html,x",
                               "javascript:alert(1)", "qrc:/menu/about.png", "http:///nowhere"}) {
        SCOPED_TRACE(target);
        server.SendOn("/", target);
        const Outcome got = Fetch();
        EXPECT_FALSE(got.page);
        EXPECT_TRUE(
            got.reason.starts_with("The server sends on to an address that is not opened: "))
            << got.reason;
    }
}

TEST_F(PageFetchTest, EndsALoopOfRedirects) {
    server.SendOn("/", "/again");
    server.SendOn("/again", "/");
    const Outcome got = Fetch();
    EXPECT_EQ(got.reason, "The server sends on from one address to the next without an end.");
    EXPECT_EQ(server.questions.size(), 4);  // the first and three more
}

TEST_F(PageFetchTest, TakesPagesUpToTheLimitOnly) {
    struct Row {
        qsizetype size;
        bool isTaken;
    };
    for (const Row& row : {Row{99'999, true}, Row{100'000, true}, Row{100'001, false}}) {
        SCOPED_TRACE(row.size);
        const QByteArray body(row.size, 'x');
        server.SayPage("/sized", "text/plain", body);
        server.Say("/unsized", "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\n\r\n" + body);
        for (const char* path : {"/sized", "/unsized"}) {
            SCOPED_TRACE(path);
            const Outcome got = Fetch(path);
            EXPECT_EQ(got.page.has_value(), row.isTaken) << got.reason;
            EXPECT_EQ(got.page ? got.page->text.size() : 0, row.isTaken ? row.size : 0);
            EXPECT_EQ(got.reason, row.isTaken ? "" : "The page is too long.");
        }
    }
}

TEST_F(PageFetchTest, EndsAnEndlessPage) {
    const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n";
    server.Say("/", head + QByteArray(2000, 'x'), WebServer::Then::repeat);
    EXPECT_EQ(Fetch().reason, "The page is too long.");
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.openConnections == 0; }));
    // A head without an end is not read for ever either.
    server.Say("/head", "HTTP/1.1 200 OK\r\nX: " + QByteArray(2000, 'x'), WebServer::Then::repeat);
    limits.answerMilliseconds = 500;
    const Outcome got = Fetch("/head");
    EXPECT_FALSE(got.page);
    EXPECT_FALSE(got.reason.empty());
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.openConnections == 0; }));
}

TEST_F(PageFetchTest, DoesNotWaitForEver) {
    limits.answerMilliseconds = 50;
    server.Say("/", "", WebServer::Then::wait);
    EXPECT_EQ(Fetch().reason, "The server did not answer in time.");
    server.Say("/", "HTTP/1.1 200 OK\r\nContent-", WebServer::Then::wait);
    EXPECT_EQ(Fetch().reason, "The server did not answer in time.");
    limits.answerMilliseconds = 20'000;
    limits.wholeMilliseconds = 100;
    server.Say("/", "HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\nnot all", WebServer::Then::wait);
    EXPECT_EQ(Fetch().reason, "The page did not arrive in time.");
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.openConnections == 0; }));
}

TEST_F(PageFetchTest, TellsWhenTheConnectionIsDropped) {
    const char* const answers[] = {
        "", "HTTP/1.1 200 OK\r\nContent-",
        "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 50\r\n\r\nnot all",
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n50\r\nnot all"};
    for (const char* answer : answers) {
        SCOPED_TRACE(answer);
        server.Say("/", answer);
        const Outcome got = Fetch();
        EXPECT_FALSE(got.page);
        EXPECT_EQ(got.reason, "The connection was closed before the page was complete.");
    }
}

TEST_F(PageFetchTest, TellsWhenNobodyIsThere) {
    server.Leave();
    const QUrl address = WebServer().Address();  // a port that was just given back
    EXPECT_EQ(Fetch(address).reason, "The server refuses the connection.");
    EXPECT_EQ(Fetch(QUrl("http://no-such-name.invalid/")).reason,
              "There is no server of the name \"no-such-name.invalid\", or there is no connection "
              "to the Internet.");
}

TEST_F(PageFetchTest, TellsWhenTheAnswerIsNoPage) {
    for (const char* type : {"image/png", "application/octet-stream", "application/pdf"}) {
        SCOPED_TRACE(type);
        server.SayPage("/", type, "<p>text</p>");
        EXPECT_EQ(Fetch().reason, "The server sent something that is not a page of text.");
    }
    server.Say("/", "this is not the web\r\n\r\n");
    const Outcome got = Fetch();
    EXPECT_FALSE(got.page);
    EXPECT_FALSE(got.reason.empty());
}

TEST_F(PageFetchTest, SaysNothingMoreOnceItIsStopped) {
    server.Say("/", "HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\nnot all", WebServer::Then::wait);
    PageFetch fetch(limits);
    Start(fetch, server.Address());
    ASSERT_TRUE(QTest::qWaitFor([this] { return server.questions.size() == 1; }));
    fetch.Stop();
    EXPECT_FALSE(fetch.IsUnderWay());
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.openConnections == 0; }));
    EXPECT_EQ(outcome.calls, 0);
    {
        PageFetch gone(limits);
        Start(gone, server.Address());
        ASSERT_TRUE(QTest::qWaitFor([this] { return server.questions.size() == 2; }));
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.openConnections == 0; }));
    EXPECT_EQ(outcome.calls, 0);
}

TEST_F(PageFetchTest, AsksAnewAfterAFailure) {
    PageFetch fetch(limits);
    Start(fetch, server.Address("/missing"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return outcome.calls == 1; }));
    server.SayPage("/", "text/plain", "there");
    Start(fetch, server.Address());
    ASSERT_TRUE(QTest::qWaitFor([this] { return outcome.calls == 2; }));
    EXPECT_TRUE(outcome.page);
}

TEST_F(PageFetchTest, MayBeStartedFromWhatItTells) {
    server.SayPage("/", "text/plain", "there");
    PageFetch fetch(limits);
    QStringList told;
    const auto arrived = [&](const WebPage& page) { told += page.text; };
    const auto failed = [&](const QString& reason) {
        fetch.Start(server.Address(), arrived, {});
        told += reason;
    };
    fetch.Start(server.Address(),
                [&](const WebPage& page) {
                    fetch.Start(server.Address("/missing"), {}, failed);
                    told += page.text;
                },
                {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.size() == 3; }));
    EXPECT_EQ(told, (QStringList{"there", "The server answered: 404 Not Found.", "there"}));
    EXPECT_FALSE(fetch.IsUnderWay());
}

// Rules without a server

TEST(IsWebAddress, KnowsTwoSchemes) {
    struct Row {
        const char* address;
        bool isOfWeb;
    };
    constexpr Row rows[] = {{"http://x.org/", true},   {"https://x.org", true},
                            {"HTTP://X.ORG/", true},   {"ftp://x.org/", false},
                            {"file:///x", false},      {"http:///x", false},
                            {"mailto:a@x.org", false}, {"", false},
                            {"x.org", false},          {"http://x.org:99999/", false}};
    for (const auto& [address, isOfWeb] : rows) {
        SCOPED_TRACE(address);
        EXPECT_EQ(IsWebAddress(QUrl(QString::fromLatin1(address))), isOfWeb);
    }
}

TEST(MayRedirect, LeadsToNothingLessSafe) {
    const QUrl plain("http://x.org/"), safe("https://y.org/"), file("file:///x");
    EXPECT_TRUE(MayRedirect(plain, plain));
    EXPECT_TRUE(MayRedirect(plain, safe));
    EXPECT_TRUE(MayRedirect(safe, safe));
    EXPECT_FALSE(MayRedirect(safe, plain));
    EXPECT_FALSE(MayRedirect(plain, file));
    EXPECT_FALSE(MayRedirect(safe, file));
}

TEST(ReadPage, KnowsHtmlAndTextByTheType) {
    struct Row {
        const char* type;
        const char* body;
        std::optional<bool> isHtml;
    };
    const Row rows[] = {
        {"text/html", "x", true},
        {"TEXT/HTML; charset=utf-8", "x", true},
        {" text/html ;x", "x", true},
        {"application/xhtml+xml", "x", true},
        {"text/plain", "<p>x", false},
        {"text/markdown", "x", false},
        {"", "x", false},
        {"", " \r\n<!DOCTYPE html>", true},
        {"application/json", "x", std::nullopt},
        {"image/svg+xml", "<svg/>", std::nullopt},
        {"nonsense", "x", std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type);
        const auto page = ReadPage(QUrl("http://x.org/"), row.type, row.body);
        ASSERT_EQ(page.has_value(), row.isHtml.has_value());
        EXPECT_TRUE(!page || page->isHtml == *row.isHtml);
    }
}

TEST(ReadPage, ReadsTheTextByItsCharacterSet) {
    struct Row {
        const char* type;
        QByteArray body;
        const char* text;  // as UTF-8
    };
    const Row rows[] = {
        {"text/plain; charset=utf-8", "\xC3\xA4", "\xC3\xA4"},
        {"text/plain; charset=\"UTF-8\"", "\xC3\xA4", "\xC3\xA4"},
        {"text/plain; charset=iso-8859-1", "\xE4\x80", "\xC3\xA4\xE2\x82\xAC"},
        {"text/plain; charset=Windows-1252", "\xE4\x80", "\xC3\xA4\xE2\x82\xAC"},
        {"text/plain; charset=utf-16le", QByteArray("\xE4\0a\0", 4),
         "\xC3\xA4"
         "a"},
        // A mark at the start is right whatever else is said.
        {"text/plain; charset=iso-8859-1", "\xEF\xBB\xBF\xC3\xA4", "\xC3\xA4"},
        {"text/plain; charset=utf-8", QByteArray("\xFF\xFE\xE4\0", 4), "\xC3\xA4"},
        // The page says it.
        {"text/html", "<meta charset=\"latin1\">\xE4", "<meta charset=\"latin1\">\xC3\xA4"},
        {"text/html", "<meta content='text/html; charset=utf-8'>\xC3\xA4",
         "<meta content='text/html; charset=utf-8'>\xC3\xA4"},
        {"text/html; charset=utf-8", "<meta charset=latin1>\xC3\xA4",
         "<meta charset=latin1>\xC3\xA4"},
        {"text/html", "<meta charset=utf-16>\xC3\xA4", "<meta charset=utf-16>\xC3\xA4"},
        // Nobody says it, or in a name that nobody knows.
        {"text/plain", "\xC3\xA4", "\xC3\xA4"},
        {"text/plain", "\xE4\xF6", "\xC3\xA4\xC3\xB6"},
        {"text/plain; charset=klingon", "\xC3\xA4", "\xC3\xA4"},
        {"text/plain; charset=", "\xE4", "\xC3\xA4"},
        {"text/plain; charset=system", "\xE4", "\xC3\xA4"},
        // What is broken is marked, and the rest is read.
        {"text/plain; charset=utf-8", "a\xE4z", "a\xEF\xBF\xBDz"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.type) + " " + row.body.toStdString());
        const auto page = ReadPage(QUrl("http://x.org/"), row.type, row.body);
        ASSERT_TRUE(page);
        EXPECT_EQ(page->text.toStdString(), row.text);
    }
}

}  // namespace
}  // namespace orvane
