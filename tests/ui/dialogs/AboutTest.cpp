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
    EXPECT_EQ(window.findChild<QLabel *>(u"lblTitle"_s)->text(), u"Ostravelin"_s);
    EXPECT_EQ(window.findChild<QLabel *>(u"lblVersion"_s)->text(), u"Versie 1.8.1"_s);
    EXPECT_FALSE(window.findChild<QLabel *>(u"picIcon"_s)->pixmap().isNull());
    QTest::mouseClick(window.findChild<QPushButton *>(), Qt::LeftButton);
    EXPECT_FALSE(window.isVisible());
}
