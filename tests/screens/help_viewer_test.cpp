#include "windows/help_viewer.h"

#include <gtest/gtest.h>

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMessageBox>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QWheelEvent>
#include <QWindow>
#include <memory>
#include <optional>

#include "storage/qt_bytes.h"
#include "tests/support/active_window.h"
#include "tests/support/modal_player.h"
#include "windows/control_ids.h"
#include "windows/help_topics.h"

namespace orvane {
namespace {

using Texts = std::vector<std::string>;

// Keeps the titles that help windows take, and whether one could be seen then.
class TitleWatch : public QObject {
public:
    TitleWatch() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* const window = qobject_cast<HelpWindow*>(object);
        if (window != nullptr && event->type() == QEvent::WindowTitleChange) {
            titles.push_back(window->windowTitle().toStdString());
            wasVisible = wasVisible || window->isVisible();
        }
        return false;
    }

    Texts titles;
    bool wasVisible = false;
};

// Keeps the addresses that would open in the system's browser.
class BrowserInPlace : public QObject {
    Q_OBJECT

public:
    BrowserInPlace() { QDesktopServices::setUrlHandler("https", this, "Open"); }
    ~BrowserInPlace() override { QDesktopServices::unsetUrlHandler("https"); }

    Texts opened;

public slots:
    void Open(const QUrl& url) { opened.push_back(url.toString().toStdString()); }
};

class HelpViewerTest : public testing::Test {
protected:
    HelpViewerTest() : pages(folder.path() + "/a folder with blanks/html") {
        AddPage("about/about.htm", "Contents", "<p>All pages.</p>");
        for (const std::string_view topic : openingTopics) {
            AddPage(QStringFrom(topic), QFileInfo(QStringFrom(topic)).baseName(), "<p>Text.</p>");
        }
        AddPage("function/normal.htm", "Normal", LongText());
        main.resize(400, 300);
        main.show();
        EXPECT_TRUE(test::MakeActive(main));
    }

    static QString LongText() {
        QString text = "<p>The <a href=\"bits.htm\">bits</a>, cosine and Cosine.</p>";
        for (const char* const name : {"sin", "cos", "tan"}) {
            text += QString("<h2><a name=\"%1\">%1</a></h2>").arg(name);
            for (int line = 0; line < 80; ++line) text += "<p>A line of text.</p>";
        }
        return text;
    }

    void AddPage(const QString& path, const QString& title, const QString& body) const {
        const QString name = pages + '/' + path;
        QDir().mkpath(QFileInfo(name).path());
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const QString page = "<html><head><title>%1</title></head><body>%2</body></html>";
        file.write(page.arg(title, body).toUtf8());
    }

    HelpWindow& Window() const { return *viewer.Window(); }
    HelpBrowser& Browser() const { return Window().Browser(); }
    template <typename Control = QPushButton>
    Control& ControlOf(int id) const {
        return *Window().findChild<Control*>(QString::number(id));
    }
    QLineEdit& FindBox() const { return ControlOf<QLineEdit>(ids::helpWindow::findBox); }
    bool SaysNotFound() const {
        return ControlOf<QLabel>(ids::helpWindow::notFoundLabel).isVisible();
    }

    // Shows a topic and waits until it can be used.
    void Show(const char* topic) {
        viewer.ShowTopic(&main, topic);
        ASSERT_NE(viewer.Window(), nullptr);
        ASSERT_TRUE(IsUsed());
    }
    // Waits until the window has the keyboard. It also counts as active while the window does that
    // it belongs to.
    bool IsUsed() const {
        return QTest::qWaitFor([&] { return QApplication::activeWindow() == &Window(); });
    }
    std::string Shown() const { return Browser().ShownTopic().toStdString(); }

    // The pixel row of the window at which a place of the page stands.
    int TopOf(const QString& place) const {
        const QTextDocument& page = *Browser().document();
        for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
            if (block.text() != place) continue;
            const QRectF rect = page.documentLayout()->blockBoundingRect(block);
            return qRound(rect.top()) - Browser().verticalScrollBar()->value();
        }
        ADD_FAILURE() << place.toStdString();
        return 0;
    }

    // Clicks where the user sees the control, so that a window that is blocked does not notice.
    void ClickOnScreen(QWidget& control) const {
        const QPoint place = control.mapTo(control.window(), control.rect().center());
        QTest::mouseClick(control.window()->windowHandle(), Qt::LeftButton, {}, place);
    }

    QTemporaryDir folder;
    const QString pages;
    QWidget main;
    HelpViewer viewer{pages};
};

TEST_F(HelpViewerTest, DisplaysTheOpeningTopicsOnceUnseenAndWithoutAWayBack) {
    TitleWatch watch;
    Show("function/normal.htm");
    EXPECT_EQ(watch.titles,
              (Texts{"outputkey - Orvane help", "bits - Orvane help", "locus - Orvane help",
                     "fasthelp - Orvane help", "curve - Orvane help", "textcolor - Orvane help",
                     "Normal - Orvane help"}));
    EXPECT_FALSE(watch.wasVisible);
    EXPECT_EQ(Shown(), "function/normal.htm");
    EXPECT_FALSE(Browser().isBackwardAvailable());
    EXPECT_FALSE(ControlOf(ids::helpWindow::backButton).isEnabled());

    watch.titles.clear();
    Show("about/about.htm");
    EXPECT_EQ(watch.titles, Texts{"Contents - Orvane help"});
    Window().close();
    watch.titles.clear();
    Show("function/bits.htm");
    EXPECT_EQ(watch.titles, Texts{"bits - Orvane help"});
}

TEST_F(HelpViewerTest, DoesNotNeedTheOpeningTopics) {
    for (const std::string_view topic : openingTopics) {
        QFile::remove(pages + '/' + QStringFrom(topic));
    }
    TitleWatch watch;
    Show("function/normal.htm");
    EXPECT_EQ(watch.titles, Texts{"Normal - Orvane help"});
}

TEST_F(HelpViewerTest, ShowsNothingForAMissingPage) {
    for (const char* const topic :
         {"function/none.htm", "Function/normal.htm", "", "#sin", "function", "../html"}) {
        SCOPED_TRACE(topic);
        viewer.ShowTopic(&main, topic);
        EXPECT_FALSE(viewer.Window() != nullptr && Window().isVisible());
    }
    Show("function/normal.htm#cos");
    const int scrolled = Browser().verticalScrollBar()->value();
    for (const char* const topic : {"function/none.htm", "", "../../outside.htm"}) {
        viewer.ShowTopic(&main, topic);
        EXPECT_EQ(Shown(), "function/normal.htm#cos");
        EXPECT_EQ(Browser().verticalScrollBar()->value(), scrolled);
    }
}

TEST_F(HelpViewerTest, ShowsNothingWithoutTheFolder) {
    for (const QString& missing : {pages + "/none", QString()}) {
        HelpViewer other(missing);
        other.ShowTopic(&main, "about/about.htm");
        EXPECT_FALSE(other.Window() != nullptr && other.Window()->isVisible());
    }
}

TEST_F(HelpViewerTest, OpensAtThePlaceBehindTheMark) {
    Show("function/normal.htm#cos");
    EXPECT_NEAR(TopOf("cos"), 0, 40);
    QTest::qWait(50);  // whatever the window manager makes of the window
    EXPECT_NEAR(TopOf("cos"), 0, 40);
    Show("function/normal.htm#tan");
    EXPECT_NEAR(TopOf("tan"), 0, 40);
    Show("function/normal.htm#none");
    EXPECT_EQ(Window().windowTitle(), "Normal - Orvane help");
}

TEST_F(HelpViewerTest, IsOneWindowThatComesUpAgain) {
    Show("function/normal.htm");
    HelpWindow* const first = &Window();
    main.activateWindow();
    ASSERT_TRUE(test::MakeActive(main));
    Show("function/bits.htm");
    EXPECT_EQ(&Window(), first);
    Window().showMinimized();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Window().isMinimized(); }));
    Show("about/about.htm");
    EXPECT_FALSE(Window().isMinimized());
}

TEST_F(HelpViewerTest, FitsTheScreenOfItsOwner) {
    Show("about/about.htm");
    EXPECT_TRUE(main.screen()->availableGeometry().contains(Window().geometry()));
    EXPECT_GE(Window().width(), 600);
}

TEST_F(HelpViewerTest, GoesBackAndForwardAndToTheContents) {
    QPushButton& back = (Show("function/normal.htm"), ControlOf(ids::helpWindow::backButton));
    QPushButton& forward = ControlOf(ids::helpWindow::forwardButton);
    EXPECT_FALSE(back.isEnabled());
    EXPECT_FALSE(forward.isEnabled());
    ClickOnScreen(ControlOf(ids::helpWindow::contentsButton));
    EXPECT_EQ(Shown(), "about/about.htm");
    ClickOnScreen(back);
    EXPECT_EQ(Shown(), "function/normal.htm");
    EXPECT_FALSE(back.isEnabled());
    QTest::keyClick(Window().windowHandle(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Shown(), "about/about.htm");
    EXPECT_FALSE(forward.isEnabled());
    QTest::keyClick(Window().windowHandle(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Shown(), "function/normal.htm");
    EXPECT_EQ(Window().windowTitle(), "Normal - Orvane help");
    QTest::keyClick(Window().windowHandle(), Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(Shown(), "about/about.htm");
}

TEST_F(HelpViewerTest, FollowsLinksWithinItsFolderAndLeavesTheWebToTheSystem) {
    BrowserInPlace browser;
    QFile outside(folder.path() + "/outside.htm");
    ASSERT_TRUE(outside.open(QIODevice::WriteOnly));
    outside.close();
    Show("function/normal.htm#sin");
    emit Browser().anchorClicked(QUrl("bits.htm"));
    EXPECT_EQ(Shown(), "function/bits.htm");
    for (const QString& link :
         {QString("none.htm"), QString("../../../outside.htm"), QString("file:///etc/passwd"),
          QString("ftp://example.org/"), "file://" + folder.path() + "/outside.htm"}) {
        emit Browser().anchorClicked(QUrl(link));
        EXPECT_EQ(Shown(), "function/bits.htm") << link.toStdString();
        EXPECT_FALSE(Browser().loadResource(QTextDocument::ImageResource, QUrl(link)).isValid());
    }
    EXPECT_EQ(browser.opened, Texts{});
    emit Browser().anchorClicked(QUrl("https://example.org/a"));
    EXPECT_EQ(browser.opened, Texts{"https://example.org/a"});
    EXPECT_EQ(Shown(), "function/bits.htm");
}

TEST_F(HelpViewerTest, DrawsPicturesOfLinesInThePixelsOfTheScreen) {
    AddPage("about/picture.htm", "Picture",
            "<p><img src=\"../lines.svg\" width=\"40\" height=\"30\"/></p>");
    const auto write = [this](const QByteArray& bytes) {
        QFile file(pages + "/lines.svg");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    write(R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 40 30" width="2in">
             <rect x="0" y="0" width="20" height="30" fill="#ff0000"/></svg>)");
    Show("about/picture.htm");
    const auto load = [this] {
        return Browser().loadResource(QTextDocument::ImageResource, QUrl("../lines.svg"));
    };
    const QImage picture = load().value<QImage>();
    const qreal scale = Browser().devicePixelRatioF();
    EXPECT_EQ(picture.devicePixelRatio(), scale);
    EXPECT_EQ(picture.size(), (QSizeF(40, 30) * scale).toSize());
    EXPECT_EQ(picture.pixelColor(picture.width() / 4, 1), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(picture.width() * 3 / 4, 1).alpha(), 0);
    write("no picture");
    EXPECT_TRUE(load().value<QImage>().isNull());
}

TEST_F(HelpViewerTest, KeepsTheBlankLinesOfReportsButNotTheLineEndOfTheirTag) {
    AddPage("about/report.htm", "Report",
            "<p>Ahead.</p>"
            "<pre class=\"sheet\">\ntext:a  b;</pre>"
            "<pre class=\"report\">\n\na  b\n\nc</pre>"
            "<pre>\n\n\nd</pre><p>Behind.</p>");
    Show("about/report.htm");
    QStringList lines = Browser().toPlainText().split('\n');
    const qsizetype sheet = lines.indexOf("text:a  b;");
    const qsizetype report = lines.indexOf("a  b");
    const qsizetype last = lines.indexOf("d");
    ASSERT_GE(sheet, 0);
    ASSERT_GE(last, 0);
    EXPECT_EQ(lines.mid(sheet, report - sheet), QStringList({"text:a  b;", "", ""}))
        << "the end of the table, and one blank line";
    EXPECT_EQ(lines.mid(report, last - report), QStringList({"a  b", "", "c", "", "", ""}));
}

TEST_F(HelpViewerTest, FindsTheNextPlaceAndGoesOnAtTheTop) {
    Show("function/normal.htm");
    QTest::keyClick(Window().windowHandle(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(FindBox().hasFocus());
    QTest::keyClicks(&FindBox(), "cosine");
    EXPECT_FALSE(Browser().textCursor().hasSelection());
    const auto selected = [&] { return Browser().textCursor().selectedText().toStdString(); };
    QTest::keyClick(&FindBox(), Qt::Key_Return);
    EXPECT_EQ(selected(), "cosine");
    QTest::keyClick(Window().windowHandle(), Qt::Key_F3);
    EXPECT_EQ(selected(), "Cosine");
    QTest::keyClick(&FindBox(), Qt::Key_Return);
    EXPECT_EQ(selected(), "cosine") << "from the top again";
    QTest::keyClick(Window().windowHandle(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(selected(), "Cosine") << "from the end again";
    EXPECT_FALSE(SaysNotFound());
}

TEST_F(HelpViewerTest, ScrollsToWhatItFinds) {
    Show("function/normal.htm");
    FindBox().setText("tan");
    QTest::keyClick(&FindBox(), Qt::Key_Return);
    EXPECT_GT(Browser().verticalScrollBar()->value(), 0);
    EXPECT_TRUE(Browser().viewport()->rect().contains(Browser().cursorRect().center()));
}

TEST_F(HelpViewerTest, SaysThatNothingWasFoundAndStaysWhereItIs) {
    Show("function/normal.htm#cos");
    const int scrolled = Browser().verticalScrollBar()->value();
    FindBox().setText("no such word");
    QTest::keyClick(&FindBox(), Qt::Key_Return);
    EXPECT_TRUE(SaysNotFound());
    EXPECT_EQ(Browser().verticalScrollBar()->value(), scrolled);
    QTest::keyClick(&FindBox(), Qt::Key_Backspace);
    EXPECT_FALSE(SaysNotFound()) << "another text may be there";
    QTest::keyClick(&FindBox(), Qt::Key_Return);
    EXPECT_TRUE(SaysNotFound());
    Show("function/bits.htm");
    EXPECT_FALSE(SaysNotFound()) << "another page may have it";
    FindBox().clear();
    QTest::keyClick(Window().windowHandle(), Qt::Key_F3);
    EXPECT_FALSE(SaysNotFound());
    EXPECT_TRUE(FindBox().hasFocus());
}

TEST_F(HelpViewerTest, ZoomsByKeysAndWheel) {
    Show("function/normal.htm");
    const auto height = [&] { return Browser().document()->size().height(); };
    const qreal first = height();
    QTest::keyClick(Window().windowHandle(), Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(height(), first);
    QTest::keyClick(Window().windowHandle(), Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(height(), first);
    const auto turn = [&](int steps) {
        const QPointF place = Browser().viewport()->rect().center();
        QWheelEvent event(place, Browser().viewport()->mapToGlobal(place), {},
                          QPoint(0, 120 * steps), Qt::NoButton, Qt::ControlModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(Browser().viewport(), &event);
    };
    turn(-2);
    EXPECT_LT(height(), first);
    for (int times = 0; times < 50; ++times) turn(-1);
    EXPECT_GE(Browser().font().pixelSize(), 6);
    for (int times = 0; times < 100; ++times) turn(1);
    EXPECT_LE(Browser().font().pixelSize(), 60);
    QTest::keyClick(Window().windowHandle(), Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(height(), first);
}

TEST_F(HelpViewerTest, CanBeUsedWhileTheDialogThatOpenedItWaits) {
    test::ModalPlayer player;
    QDialog dialog(&main);
    player.Then([&](QWidget&) {
        viewer.ShowTopic(&dialog, "function/normal.htm");
        ASSERT_TRUE(IsUsed());
        ClickOnScreen(ControlOf(ids::helpWindow::contentsButton));
        EXPECT_EQ(Shown(), "about/about.htm");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(QApplication::activeModalWidget(), &dialog);
        dialog.reject();
    });
    dialog.exec();
    EXPECT_TRUE(Window().isVisible());
    ClickOnScreen(ControlOf(ids::helpWindow::backButton));
    EXPECT_EQ(Shown(), "function/normal.htm");
}

TEST_F(HelpViewerTest, CanBeUsedBesideDialogsThatComeUpLater) {
    Show("function/normal.htm");
    test::ModalPlayer player;
    auto dialog = std::make_unique<QDialog>(&main);
    const auto goesToContentsAndBack = [&] {
        ClickOnScreen(ControlOf(ids::helpWindow::contentsButton));
        EXPECT_EQ(Shown(), "about/about.htm");
        ClickOnScreen(ControlOf(ids::helpWindow::backButton));
        EXPECT_EQ(Shown(), "function/normal.htm");
    };
    player.Then([&](QWidget&) {
        goesToContentsAndBack();
        {
            QMessageBox message(QMessageBox::NoIcon, "Message", "text", QMessageBox::Ok,
                                dialog.get());
            player.Then([&](QWidget& shown) {
                goesToContentsAndBack();
                shown.close();
            });
            message.exec();
        }
        QApplication::processEvents();
        goesToContentsAndBack();
        dialog->reject();
    });
    dialog->exec();
    dialog.reset();
    QApplication::processEvents();
    goesToContentsAndBack();
}

TEST_F(HelpViewerTest, ClosesWithItsMainWindowAndByEscape) {
    Show("function/normal.htm");
    QTest::keyClick(Window().windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(Window().isVisible());
    EXPECT_TRUE(main.isVisible());
    Show("function/normal.htm");
    main.close();
    EXPECT_FALSE(Window().isVisible());
}

TEST_F(HelpViewerTest, GoesWithItsMainWindow) {
    auto other = std::make_unique<QWidget>();
    auto child = std::make_unique<QDialog>(other.get());
    other->show();
    viewer.ShowTopic(child.get(), "function/normal.htm");
    EXPECT_EQ(Window().parentWidget(), other.get());
    child.reset();
    EXPECT_TRUE(Window().isVisible());
    other.reset();
    EXPECT_EQ(viewer.Window(), nullptr);
    Show("function/bits.htm");
    EXPECT_EQ(Window().parentWidget(), &main);
}

}  // namespace
}  // namespace orvane

#include "help_viewer_test.moc"
