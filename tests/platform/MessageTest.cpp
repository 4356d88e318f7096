#include "tests/support/Test.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using platform::MessageIcon;

TEST(Message, HasItsIconAndButtonsAndAQuestionIsAnsweredNoUnlessYesIsChosen)
{
    FakeHost host;
    const QString title = u"Title"_s;
    const QString text = u"<b>Sure?</b>"_s;
    const auto ask = [&] { return host.NativeHost::ask(title, text); };
    const auto show = [&](MessageIcon icon) {
        host.NativeHost::showMessage(title, text, icon);
        return false;
    };
    const auto press = [](Qt::Key key) {
        return [key](QMessageBox &box) { QTest::keyClick(&box, key); };
    };
    const auto chooseYes = [](QMessageBox &box) { box.button(QMessageBox::Yes)->click(); };
    const auto yesNo = QMessageBox::Yes | QMessageBox::No;
    const std::tuple<std::function<bool()>, QMessageBox::Icon, QMessageBox::StandardButtons,
                     std::function<void(QMessageBox &)>, bool>
        cases[] = {
            {ask, QMessageBox::Question, yesNo, press(Qt::Key_Return), false},
            {ask, QMessageBox::Question, yesNo, press(Qt::Key_Escape), false},
            {ask, QMessageBox::Question, yesNo, chooseYes, true},
            {[&] { return show(MessageIcon::Critical); }, QMessageBox::Critical, QMessageBox::Ok,
             press(Qt::Key_Return), false},
            {[&] { return show(MessageIcon::Information); }, QMessageBox::Information,
             QMessageBox::Ok, press(Qt::Key_Escape), false},
        };
    for (const auto &[open, icon, buttons, answer, isYes] : cases) {
        QTimer::singleShot(0, qApp, [&, icon = icon, buttons = buttons, act = answer] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            EXPECT_EQ(box->windowTitle(), title);
            EXPECT_EQ(box->text(), text);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->icon(), icon);
            EXPECT_EQ(box->standardButtons(), buttons);
            act(*box);
        });
        EXPECT_EQ(open(), isYes);
    }
}
