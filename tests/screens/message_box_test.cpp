#include "windows/message_box.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <string>

#include "tests/support/modal_player.h"

namespace orvane {
namespace {

enum class Kind { message, confirm, yesNo, yesNoCancel };

// The answer as a word.
std::string Ask(Questions& questions, Kind kind, std::string_view text) {
    switch (kind) {
        case Kind::message:
            questions.ShowMessage(text);
            return "shown";
        case Kind::confirm:
            return questions.Confirm(text) ? "yes" : "no";
        case Kind::yesNo:
            return questions.AskYesNo(text) ? "yes" : "no";
        case Kind::yesNoCancel:
            break;
    }
    const Answer answer = questions.AskYesNoCancel(text);
    return answer == Answer::yes ? "yes" : answer == Answer::no ? "no" : "cancel";
}

void Press(QWidget& window, QMessageBox::StandardButton button) {
    test::Press(static_cast<QMessageBox&>(window).button(button));
}

TEST(MessageBox, HasItsCaptionItsTextAndItsButtons) {
    struct Row {
        Kind kind;
        QMessageBox::StandardButtons buttons;
    };
    const Row rows[] = {
        {Kind::message, QMessageBox::Ok},
        {Kind::confirm, QMessageBox::Yes | QMessageBox::No},
        {Kind::yesNo, QMessageBox::Yes | QMessageBox::No},
        {Kind::yesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.kind));
        QWidget owner;
        owner.show();
        MessageBox questions(&owner);
        test::ModalPlayer player;
        player.Then([&](QWidget& window) {
            auto& box = static_cast<QMessageBox&>(window);
            EXPECT_EQ(box.windowTitle(), "Message");
            EXPECT_EQ(box.text(), "a <b>\n\u20AC\u00E4");
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.standardButtons(), row.buttons);
            EXPECT_EQ(box.parentWidget(), &owner);
            EXPECT_EQ(QFontInfo(box.font()).pixelSize(), 11);
            for (QAbstractButton* const button : box.buttons()) {
                const QString word = button->text().remove('&');
                EXPECT_TRUE(QStringList({"OK", "Yes", "No", "Cancel"}).contains(word));
            }
            Press(box, row.kind == Kind::message ? QMessageBox::Ok : QMessageBox::Yes);
        });
        Ask(questions, row.kind, "a <b>\n\x80\xE4");
    }
}

TEST(MessageBox, IsAnsweredByItsButtonsAndByEnterAndEscape) {
    struct Row {
        Kind kind;
        Qt::Key key;                         // 0: none
        QMessageBox::StandardButton button;  // pressed behind the key where there is one
        const char* answer;
    };
    constexpr auto noKey = Qt::Key(0);
    const Row rows[] = {
        {Kind::message, noKey, QMessageBox::Ok, "shown"},
        {Kind::message, Qt::Key_Return, QMessageBox::NoButton, "shown"},
        {Kind::message, Qt::Key_Escape, QMessageBox::NoButton, "shown"},
        {Kind::confirm, noKey, QMessageBox::Yes, "yes"},
        {Kind::confirm, noKey, QMessageBox::No, "no"},
        {Kind::confirm, Qt::Key_Return, QMessageBox::NoButton, "no"},
        {Kind::confirm, Qt::Key_Escape, QMessageBox::NoButton, "no"},
        {Kind::yesNo, noKey, QMessageBox::Yes, "yes"},
        {Kind::yesNo, noKey, QMessageBox::No, "no"},
        {Kind::yesNo, Qt::Key_Return, QMessageBox::NoButton, "yes"},
        // Either answer may lose something, so Escape is none.
        {Kind::yesNo, Qt::Key_Escape, QMessageBox::No, "no"},
        {Kind::yesNo, Qt::Key_Escape, QMessageBox::Yes, "yes"},
        {Kind::yesNoCancel, noKey, QMessageBox::Yes, "yes"},
        {Kind::yesNoCancel, noKey, QMessageBox::No, "no"},
        {Kind::yesNoCancel, noKey, QMessageBox::Cancel, "cancel"},
        {Kind::yesNoCancel, Qt::Key_Return, QMessageBox::NoButton, "yes"},
        {Kind::yesNoCancel, Qt::Key_Escape, QMessageBox::NoButton, "cancel"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(row.kind) << ' ' << row.key << ' '
                                        << row.button << ' ' << row.answer);
        MessageBox questions(nullptr);
        test::ModalPlayer player;
        player.Then([&](QWidget& window) {
            if (row.key != noKey) QTest::keyClick(&window, row.key);
            if (row.button == QMessageBox::NoButton) return;
            EXPECT_TRUE(window.isVisible());
            Press(window, row.button);
        });
        EXPECT_EQ(Ask(questions, row.kind, "text"), row.answer);
    }
}

TEST(MessageBox, TakesTheCloseBoxForEscape) {
    struct Row {
        Kind kind;
        bool closes;
        const char* answer;
    };
    const Row rows[] = {{Kind::message, true, "shown"},
                        {Kind::confirm, true, "no"},
                        {Kind::yesNo, false, "yes"},
                        {Kind::yesNoCancel, true, "cancel"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.answer);
        MessageBox questions(nullptr);
        test::ModalPlayer player;
        player.Then([&](QWidget& window) {
            window.close();
            EXPECT_EQ(window.isVisible(), !row.closes);
            if (!row.closes) Press(window, QMessageBox::Yes);
        });
        EXPECT_EQ(Ask(questions, row.kind, "text"), row.answer);
    }
}

TEST(MessageBox, IsWideEnoughForItsCaptionWhateverItsTextIs) {
    for (const Kind kind : {Kind::message, Kind::confirm, Kind::yesNo, Kind::yesNoCancel}) {
        for (const char* const text : {"", "x", "Select a file to open"}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(kind) << ' ' << text);
            MessageBox questions(nullptr);
            test::ModalPlayer player;
            player.Then([&](QWidget& window) {
                EXPECT_GE(window.width(), 200);
                if (kind == Kind::message) {
                    EXPECT_EQ(window.width(), 200);
                }
                Press(window, kind == Kind::message ? QMessageBox::Ok : QMessageBox::Yes);
            });
            Ask(questions, kind, text);
        }
    }
}

TEST(MessageBox, FitsTheScreenWhateverANameHolds) {
    std::string lines;
    for (int line = 0; line < 5000; ++line) lines += "line\n";
    for (const std::string& name : {std::string(100'000, 'W'), lines, std::string(3000, ' ')}) {
        MessageBox questions(nullptr);
        test::ModalPlayer player;
        player.Then([&](QWidget& window) {
            const QString text = static_cast<QMessageBox&>(window).text();
            EXPECT_TRUE(text.startsWith("delete the file:\n"));
            EXPECT_TRUE(text.endsWith(" ?"));
            const QSize screen = window.screen()->size();
            EXPECT_LT(window.frameGeometry().width(), screen.width());
            EXPECT_LT(window.frameGeometry().height(), screen.height());
            const auto* const label = window.findChild<QLabel*>("qt_msgbox_label");
            ASSERT_NE(label, nullptr);
            const QRect needed = label->fontMetrics().boundingRect(label->contentsRect(),
                                                                   Qt::TextWordWrap, label->text());
            EXPECT_LE(needed.width(), label->contentsRect().width());
            EXPECT_LE(needed.height(), label->contentsRect().height());
            Press(window, QMessageBox::Yes);
        });
        EXPECT_TRUE(questions.Confirm("delete the file:\n" + name + " ?"));
    }
}

}  // namespace
}  // namespace orvane
