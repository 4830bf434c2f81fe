#include "windows/about_dialog.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QFontInfo>
#include <QTest>
#include <string>
#include <vector>

#include "tests/support/modal_player.h"
#include "windows/about_text.h"
#include "windows/look.h"
#include "windows/program_facts.h"

namespace orvane {
namespace {

TEST(AboutDialogTest, HasItsSizeAndItsLabel) {
    AboutDialog dialog(nullptr);
    const QFontMetrics metrics(InterfaceFont());
    EXPECT_EQ(dialog.windowTitle(), "About");
    EXPECT_EQ(dialog.size(), DialogRect(metrics, 0, 0, 274, 183).size());
    EXPECT_EQ(dialog.minimumSize(), dialog.maximumSize());
    EXPECT_EQ(dialog.findChild<QWidget*>("1050"), &dialog.label);
    EXPECT_EQ(dialog.label.geometry(), DialogRect(metrics, 7, 7, 260, 169));
    EXPECT_TRUE(dialog.findChildren<QAbstractButton*>().isEmpty());
}

TEST(AboutDialogTest, SetsTheLabelUp) {
    AboutDialog dialog(nullptr);
    const LabelScroller& scroller = dialog.label.Scroller();
    EXPECT_EQ(scroller.scrollOffset, -50);
    EXPECT_EQ(scroller.scrollDelay, 80);
    EXPECT_TRUE(scroller.dragEnabled);
    const QImage image = dialog.label.grab().toImage();
    EXPECT_EQ(image.pixelColor(3, 3), QColor(51, 51, 51));
    EXPECT_EQ(image.pixelColor(image.width() - 3, image.height() - 3), QColor(51, 51, 51));
    EXPECT_EQ(dialog.label.SetText(""), AboutText(ProgramVersion(), WebSite()));
}

// Every line must be seen whole, and the text must be taller than the label, or it would not
// scroll.
TEST(AboutDialogTest, ScrollsATextThatFitsItsWidth) {
    AboutDialog dialog(nullptr);
    const LabelLayout& placement = dialog.label.Placement();
    EXPECT_GT(placement.totalHeight, dialog.label.height());
    EXPECT_LT(placement.totalHeight, labelCanvasRows);
    for (const LabelPiece& piece : placement.pieces) {
        EXPECT_GE(piece.rect.left, 5) << piece.item;
        EXPECT_LE(piece.rect.left + piece.rect.width, dialog.label.width() - 5) << piece.item;
    }
}

TEST(AboutDialogTest, ShowsTheNameInARoundFaceOfThisScreen) {
    LabelFont font;
    font.face = "Arial Rounded MT Bold";
    const QFont screenFont = ScreenFont(font);
    const QString face = QFontInfo(screenFont).family();  // may have its maker's name behind it
    bool isListed = false;
    for (const QString& listed : screenFont.families()) isListed |= face.startsWith(listed);
    EXPECT_TRUE(isListed) << face.toStdString();
}

TEST(AboutDialogTest, OpensTheWebSite) {
    test::ModalPlayer player;
    player.Then([](QWidget& window) {
        auto* const label = window.findChild<RichTextLabel*>("1050");
        ASSERT_NE(label, nullptr);
        QStringList opened;
        label->openTarget = [&](const QString& target) { opened += target; };
        ASSERT_EQ(label->Placement().links.size(), 1U);
        const LabelRect& rect = label->Placement().links[0].rect;
        label->SetScrollOffset(rect.top - 20);
        QTest::mouseClick(label, Qt::LeftButton, {}, {rect.left + 10, 25});
        EXPECT_EQ(opened, QStringList{QString::fromUtf8(WebSite().data(), WebSite().size())});
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    ShowAbout(nullptr);
    EXPECT_TRUE(player.IsDone());
}

}  // namespace
}  // namespace orvane
