#include "windows/news_dialog.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <memory>
#include <string>

#include "tests/support/modal_player.h"
#include "tests/support/web_server.h"
#include "windows/look.h"

namespace orvane {
namespace {

using test::WebServer;

class NewsDialogTest : public testing::Test {
protected:
    NewsDialogTest() {
        server.SayPage("/", "text/html", "<h1>News</h1><p>Version 2 is there.</p>");
    }

    std::string Text() { return dialog->page.toPlainText().toStdString(); }
    bool IsLoading() { return Text().starts_with("Loading ..."); }
    // Opens the dialog and waits until something stands in it.
    void Open(const QUrl& address) {
        dialog = std::make_unique<NewsDialog>(nullptr, address, limits);
        dialog->page.openAddress = [this](const QUrl& opened) { links += opened.toString(); };
        EXPECT_TRUE(IsLoading());
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get(), 20'000));
        ASSERT_TRUE(QTest::qWaitFor([this] { return !IsLoading(); }, 20'000));
    }
    void OpenPage(const QByteArray& body, const QByteArray& type = "text/html") {
        server.SayPage("/", type, body);
        Open(server.Address());
    }
    void Follow(const char* link) { emit dialog->page.anchorClicked(QUrl(link)); }

    WebServer server;
    PageLimits limits;
    QStringList links;
    std::unique_ptr<NewsDialog> dialog;
};

TEST_F(NewsDialogTest, ShowsThePage) {
    Open(server.Address());
    EXPECT_EQ(dialog->windowTitle(), "Software news");
    EXPECT_EQ(Text(), "News\nVersion 2 is there.");
    EXPECT_TRUE(dialog->page.isReadOnly());
    EXPECT_EQ(dialog->findChild<QWidget*>("1051"), &dialog->page);
}

TEST_F(NewsDialogTest, ClosesWithTheButton) {
    Open(server.Address());
    auto* const close = dialog->findChild<QPushButton*>("1027");
    ASSERT_NE(close, nullptr);
    EXPECT_EQ(close->text(), "Close");
    test::Press(close);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(NewsDialogTest, KeepsItsControlsInsideAtEverySize) {
    Open(server.Address());
    auto* const close = dialog->findChild<QPushButton*>("1027");
    for (const QSize& size : {QSize(400, 300), QSize(900, 700), QSize(1, 1)}) {
        dialog->resize(size);
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return dialog->width() == std::max(size.width(), dialog->minimumWidth()); }));
        EXPECT_TRUE(dialog->rect().contains(dialog->page.geometry()));
        EXPECT_TRUE(dialog->rect().contains(close->geometry()));
        EXPECT_FALSE(dialog->page.geometry().intersects(close->geometry()));
        EXPECT_GT(dialog->page.height(), 50);
    }
}

TEST_F(NewsDialogTest, ShowsPlainTextAsItIs) {
    OpenPage("<b>no</b> markup\n  here", "text/plain");
    EXPECT_EQ(Text(), "<b>no</b> markup\n  here");
}

TEST_F(NewsDialogTest, ShowsTheReasonOfAFailure) {
    Open(server.Address("/missing"));
    EXPECT_EQ(Text(), "The news cannot be shown\nThe server answered: 404 Not Found.\n\n" +
                          server.Address("/missing").toString().toStdString());
    limits.answerMilliseconds = 50;
    server.Say("/slow", "", WebServer::Then::wait);
    Open(server.Address("/slow"));
    EXPECT_TRUE(Text().starts_with("The news cannot be shown\nThe server did not answer in time."));
    server.Say("/", "HTTP/1.1 500 <b>Not</b> &amp; well\r\nContent-Length: 0\r\n\r\n");
    Open(server.Address());
    EXPECT_TRUE(Text().starts_with(
        "The news cannot be shown\nThe server answered: 500 <b>Not</b> &amp; well."));
}

// Neither files nor other pages are asked for, and nothing is run.
TEST_F(NewsDialogTest, LoadsNothingBesideThePage) {
    const QByteArray there = server.Address("/x").toEncoded();
    OpenPage(
        "<html><head><link rel=\"stylesheet\" type=\"text/css\" href=\"/style.css\">"
        "<script>document.write('script')</script><style>p { color: red }</style></head>"
        "<body background='/back.png'>one <img src='/a.png' alt='a picture'> two "
        "<img src='" +
        there +
        "'> three <img src='file:///usr/share/pixmaps/debian-logo.png'>"
        "<img src=':/icon/orvane_64.png'><img src='qrc:/icon/orvane_64.png' width='300' "
        "height='300' alt='icon'> four <iframe src='/frame'></iframe><script>more()</script>"
        "</body></html>");
    EXPECT_EQ(server.questions.size(), 1);
    const QString text = dialog->page.toPlainText();
    EXPECT_TRUE(text.contains("[a picture]")) << Text();
    EXPECT_TRUE(text.contains("[icon]")) << Text();
    EXPECT_FALSE(text.contains(QChar::ObjectReplacementCharacter));
    EXPECT_FALSE(text.contains("script"));
    EXPECT_FALSE(text.contains("more()"));
    // Lines of text alone.
    EXPECT_LT(dialog->page.document()->size().height(), 120);
    QTest::qWait(0);
    EXPECT_EQ(server.questions.size(), 1);
}

TEST_F(NewsDialogTest, OpensLinksOutsideAndAnchorsInside) {
    QByteArray body = "<p>top</p>";
    for (int line = 0; line < 200; ++line) body += "<p>line</p>";
    OpenPage(body + "<p><a name='low'>low</a></p>");
    struct Row {
        const char* link;
        const char* opened;  // nothing where it is empty; %1 is the server
    };
    const Row rows[] = {
        {"https://x.org/a?b=c", "https://x.org/a?b=c"},
        {"next/page.htm", "%1next/page.htm"},
        {"/next#part", "%1next#part"},
        {"file:///etc/hostname", ""},
        {"mailto:a@x.org", ""},
        {"javascript:alert(1)", ""},
        {"ftp://x.org/", ""},
        {"qrc:/icon/orvane.png", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.link);
        links.clear();
        Follow(row.link);
        const QString opened = QString(row.opened).replace("%1", server.Address().toString());
        EXPECT_EQ(links, opened.isEmpty() ? QStringList{} : QStringList{opened});
    }
    links.clear();
    EXPECT_EQ(dialog->page.verticalScrollBar()->value(), 0);
    Follow("#low");
    EXPECT_GT(dialog->page.verticalScrollBar()->value(), 0);
    EXPECT_TRUE(links.isEmpty());
    EXPECT_EQ(server.questions.size(), 1);
}

TEST_F(NewsDialogTest, OpensALinkThatIsPressed) {
    OpenPage("<p><a href='https://x.org/'>a link with many letters in it</a></p>");
    QTextCursor cursor(dialog->page.document());
    cursor.movePosition(QTextCursor::NextWord);
    cursor.movePosition(QTextCursor::NextWord);
    QTest::mouseClick(dialog->page.viewport(), Qt::LeftButton, {},
                      dialog->page.cursorRect(cursor).center());
    EXPECT_EQ(links, QStringList{"https://x.org/"});
    EXPECT_EQ(Text(), "a link with many letters in it");
}

TEST_F(NewsDialogTest, EndsTheLoadWhenItCloses) {
    server.Say("/", "HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\nnot all", WebServer::Then::wait);
    test::ModalPlayer player;
    player.Then([this](QWidget& window) {
        ASSERT_TRUE(QTest::qWaitFor([this] { return server.questions.size() == 1; }, 20'000));
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    { NewsDialog(nullptr, server.Address()).exec(); }
    EXPECT_TRUE(QTest::qWaitFor([this] { return server.openConnections == 0; }));
}

// A page must not bring the program down or to a stop, whatever is in it.
TEST_F(NewsDialogTest, ShowsHostilePages) {
    const QByteArray pieces[] = {"<table><tr><td>",
                                 "<div>",
                                 "<ul><li>",
                                 "<b>",
                                 "<p",
                                 "<a \"",
                                 "<!--",
                                 "&#1;",
                                 "<td colspan='1000000000'>",
                                 "<table width='2000000000'><tr><td rowspan='65000'>x</table>",
                                 "<td style='padding: 1000000000px'>x",
                                 "<font size='900'>x",
                                 "<img alt='x'>",
                                 "<style>",
                                 "x",
                                 "<",
                                 "\xC2\xA0",
                                 "\xE2\x80\xA8",
                                 "x&nbsp;",
                                 QByteArray(210, 'x') + "<b></b>",
                                 "x ",
                                 "\xFF"};
    for (const QByteArray& piece : pieces) {
        SCOPED_TRACE(piece.toStdString());
        OpenPage(piece.repeated(200'000 / static_cast<int>(piece.size())));
        EXPECT_FALSE(dialog->grab().isNull());
        OpenPage(piece.repeated(50'000 / static_cast<int>(piece.size())), "text/plain");
        EXPECT_FALSE(dialog->grab().isNull());
    }
    OpenPage(QByteArray("<table><tr><td>").repeated(5));
    EXPECT_TRUE(
        Text().starts_with("The news cannot be shown\nThe page is too complicated.\n\nhttp://"));
}

}  // namespace
}  // namespace orvane
