#include "ui/main/ProgramStyle.h"

#include "tests/support/Test.h"

#include <QGroupBox>
#include <QIcon>
#include <QStyleFactory>

static int darkness(const QImage &picture, int x, int y)
{
    return 255 - qGray(picture.pixel(x, y));
}

TEST(ProgramStyle, DrawsWhatTheStyleOfTheToolkitReadsFromPictures)
{
    ui::ProgramStyle style;
    style.setBaseStyle(QStyleFactory::create(u"Fusion"_s));
    const QIcon more = style.standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, {}, {});
    const QImage arrow = more.pixmap(QSize(16, 16)).toImage();
    EXPECT_GT(arrow.pixelColor(12, 8).alpha(), 128);
    EXPECT_EQ(arrow.pixelColor(1, 8).alpha(), 0);

    QGroupBox box(u"A caption"_s);
    box.resize(200, 100);
    box.setStyle(&style);
    const QImage drawn = box.grab().toImage();
    box.setStyle(style.baseStyle());
    const QImage expected = box.grab().toImage();
    for (const int x : {0, 1, 100, 190, 198})
        for (const int y : {20, 50, 90})
            EXPECT_NEAR(darkness(drawn, x, y), darkness(expected, x, y), 6) << x << ", " << y;
    EXPECT_GT(darkness(drawn, 1, 50), darkness(drawn, 10, 50));
}
