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

    const std::unique_ptr<QStyle> toolkits(QStyleFactory::create(u"Fusion"_s));
    for (const QString &caption : {u"A caption"_s, QString()}) {
        QGroupBox box(caption);
        box.resize(200, 100);
        const auto drawnBy = [&](QStyle *drawing) {
            box.setStyle(drawing);
            return box.grab().toImage();
        };
        const QImage drawn = drawnBy(&style);
        const QImage expected = drawnBy(toolkits.get());
        for (const int x : {0, 1, 3, 150, 198, 199}) // across it, its corners aside
            EXPECT_NEAR(darkness(drawn, x, 50), darkness(expected, x, 50), 4) << x;
        for (const int y : {1, 3, 12, 17, 18, 19, 98, 99})
            EXPECT_NEAR(darkness(drawn, 150, y), darkness(expected, 150, y), 4) << y;
        EXPECT_GT(darkness(drawn, 1, 50), darkness(drawn, 3, 50));
    }
}
