#include "tests/support/Test.h"
#include "ui/dialogs/frmAbout.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

TEST(About, NamesTheProgramAndItsVersionUntilItIsClosed)
{
    ui::frmAbout window;
    window.show();
    EXPECT_EQ(window.windowTitle(), u"Ostravelin 1.8.1"_s);
    const auto text = [&](const QString &name) { return window.findChild<QLabel *>(name)->text(); };
    EXPECT_EQ(text(u"lblTitle"_s), u"Ostravelin"_s);
    EXPECT_EQ(text(u"lblVersion"_s), u"Versie 1.8.1"_s);
    EXPECT_EQ(text(u"lblDescription"_s), QString());
    EXPECT_EQ(text(u"lblDisclaimer"_s), QString());
    EXPECT_EQ(window.findChildren<QFrame *>(u"Line1"_s).size(), 2);
    EXPECT_FALSE(window.findChild<QLabel *>(u"picIcon"_s)->pixmap().isNull());

    QTest::mouseClick(window.findChild<QPushButton *>(u"cmdOK"_s), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
}
