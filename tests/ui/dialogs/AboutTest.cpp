#include "tests/support/Test.h"
#include "ui/dialogs/frmAbout.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

TEST(About, NamesTheProgramAndItsVersionUntilItIsClosed)
{
    ui::frmAbout window;
    window.show();
    QStringList texts = {window.windowTitle()};
    for (const QString &name :
         {u"lblTitle"_s, u"lblVersion"_s, u"lblDescription"_s, u"lblDisclaimer"_s})
        texts << window.findChild<QLabel *>(name)->text();
    EXPECT_EQ(texts.join(u'|'), u"Ostravelin 1.8.1|Ostravelin|Versie 1.8.1||"_s);
    EXPECT_EQ(window.findChildren<QFrame *>(u"Line1"_s).size(), 2);
    EXPECT_FALSE(window.findChild<QLabel *>(u"picIcon"_s)->pixmap().isNull());

    QTest::mouseClick(window.findChild<QPushButton *>(u"cmdOK"_s), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
}
