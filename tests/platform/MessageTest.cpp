#include "tests/support/Test.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

TEST(Message, AQuestionIsAnsweredNoUnlessYesIsChosen)
{
    const std::pair<std::function<void(QMessageBox &)>, bool> cases[] = {
        {[](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Return); }, false},
        {[](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); }, false},
        {[](QMessageBox &box) { box.button(QMessageBox::Yes)->click(); }, true},
    };
    FakeHost host;
    for (const auto &[answer, isYes] : cases) {
        QTimer::singleShot(0, qApp, [&, act = answer] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            EXPECT_EQ(box->windowTitle(), u"Title"_s);
            EXPECT_EQ(box->text(), u"<b>Sure?</b>"_s);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->icon(), QMessageBox::Question);
            act(*box);
        });
        EXPECT_EQ(host.NativeHost::ask(u"Title"_s, u"<b>Sure?</b>"_s), isYes);
    }
}
