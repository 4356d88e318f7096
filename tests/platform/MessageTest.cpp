#include "tests/support/Test.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

TEST(Message, HasItsIconAndButtonsAndAQuestionIsAnsweredNoUnlessYesIsChosen)
{
    platform::NativeHost host;
    const QString text = u"<b>Sure?</b>"_s;
    const auto whenShown = [&](QMessageBox::Icon icon, QMessageBox::StandardButtons buttons,
                               const std::function<void(QMessageBox *)> &act) {
        QTimer::singleShot(0, qApp, [=] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            EXPECT_EQ(box->windowTitle(), u"Title"_s);
            EXPECT_EQ(box->text(), text);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->icon(), icon);
            EXPECT_EQ(box->standardButtons(), buttons);
            act(box);
        });
    };
    const auto pressReturn = [](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Return); };
    const auto pressEscape = [](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); };
    const auto chooseYes = [](QMessageBox *box) { box->button(QMessageBox::Yes)->click(); };
    const auto yesNo = QMessageBox::Yes | QMessageBox::No;
    whenShown(QMessageBox::Question, yesNo, pressReturn);
    EXPECT_FALSE(host.ask(u"Title"_s, text));
    whenShown(QMessageBox::Question, yesNo, pressEscape);
    EXPECT_FALSE(host.ask(u"Title"_s, text));
    whenShown(QMessageBox::Question, yesNo, chooseYes);
    EXPECT_TRUE(host.ask(u"Title"_s, text));
    whenShown(QMessageBox::Critical, QMessageBox::Ok, pressReturn);
    host.showMessage(u"Title"_s, text, platform::MessageIcon::Critical);
    whenShown(QMessageBox::Information, QMessageBox::Ok, pressEscape);
    host.showMessage(u"Title"_s, text, platform::MessageIcon::Information);
}
