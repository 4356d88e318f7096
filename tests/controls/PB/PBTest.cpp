#include "controls/PB/PB.h"

#include "tests/support/Test.h"

#include <QAccessible>
#include <QBitmap>
#include <QPainter>

#include <vector>

using controls::PB;

namespace {

constexpr quint32 Black = 0x000000;
constexpr quint32 White = 0xFFFFFF;
constexpr quint32 Orange = 0x0080FF; // 0x00BBGGRR
const QRgb OrangePixel = qRgb(0xFF, 0x80, 0x00);
const QRgb WhitePixel = qRgb(0xFF, 0xFF, 0xFF);

/// An orange bar on white in black letters, 200 by 30 without a border.
class Bar : public PB
{
public:
    explicit Bar(qint32 captionStyle = controls::captionStyle::none, const QString &caption = {})
    {
        resize(200, 30);
        setBorderStyle(0);
        setForeColor(Black);
        setBackColor(White);
        setFillColor(Orange);
        setCaptionStyle(captionStyle);
        setCaption(caption);
    }

    QImage picture() { return grab().toImage().convertToFormat(QImage::Format_RGB32); }

    /// The picture in white but for its first columns, as many of the control's own pixels.
    QImage pictureOfABar(int width)
    {
        QImage image = picture();
        image.fill(WhitePixel);
        QPainter(&image).fillRect(0, 0, width, height(), OrangePixel);
        return image;
    }
};

} // namespace

TEST(PB, BarReachesAsFarAsTheValueInItsRange)
{
    const std::tuple<qint32, qint32, qint32, qint32, int> cases[] = {
        // min, max, value, what is drawn of it, width
        {0, 100, 1, 1, 2},
        {0, 100, 101, 100, 200},
        {0, 100, -1, 0, 0},
        {-50, 150, 0, 0, 50},
        {1000, 1004, 1003, 1003, 150},
        {INT32_MIN, INT32_MAX, 0, 0, 100},
        // Max is looked at first: in a reversed range each value is cut to one of the ends.
        {100, 0, 40, 0, 200},
        {100, 0, -40, 100, 0},
    };
    Bar bar;
    for (const auto &[min, max, assigned, drawn, width] : cases) {
        SCOPED_TRACE(testing::Message() << assigned << " from " << min << " to " << max);
        bar.setMin(min);
        bar.setMax(max);
        qint32 value = assigned;
        bar.setValue(value);
        EXPECT_EQ(std::pair(value, bar.value()), std::pair(drawn, assigned));
        EXPECT_EQ(bar.picture(), bar.pictureOfABar(width));
    }
}

TEST(PB, CaptionFollowsTheStyle)
{
    const std::tuple<qint32, QString, qint32, qint32, qint32, QString> cases[] = {
        // style, caption, min, max, value, what is shown
        {0, u"Hourly"_s, 0, 100, 45, u""_s},
        {1, u"Hourly"_s, 0, 100, 45, u"Hourly"_s},
        {2, u"Hourly"_s, 0, 100, 45, u"45%"_s},
        {3, u"  "_s, 0, 100, 45, u"45%"_s},
        {-7, u"  Hourly "_s, 0, 100, 45, u"Hourly 45%"_s},
        {2, u""_s, 0, 100, 250, u"100%"_s},
        {2, u""_s, 0, 8, 1, u"13%"_s},      // 12.5: a half goes up, not to the even number
        {2, u""_s, 0, 200, 57, u"29%"_s},   // 28.5, which is not exact in binary
        {2, u""_s, 0, 1000, 284, u"28%"_s}, // 28.4
        {2, u""_s, -50, 150, 0, u"25%"_s},
    };
    for (const auto &[style, caption, min, max, value, text] : cases) {
        SCOPED_TRACE(testing::Message() << "style " << style << ", value " << value);
        Bar bar(style, caption);
        bar.setMin(min);
        bar.setMax(max);
        bar.setValue(value);
        const QImage shown = bar.picture();
        bar.setCaptionStyle(controls::captionStyle::captionOnly);
        bar.setCaption(text);
        bar.setValue(value);
        EXPECT_EQ(shown, bar.picture());
    }
}

TEST(PB, CaptionIsCentredInTheControlsFontAndInvertedUnderTheBar)
{
    Bar bar(controls::captionStyle::captionOnly, u"HHH"_s);
    QFont font;
    font.setPixelSize(20);
    bar.setCaptionFont(font);
    bar.setValue(0);
    const QImage plain = bar.picture();
    const QImage inked = plain.createMaskFromColor(WhitePixel, Qt::MaskInColor);
    const QRect ink = QRegion(QBitmap::fromImage(inked)).boundingRect();
    const double ratio = plain.devicePixelRatio();
    EXPECT_NEAR(ink.center().x() / ratio, 100, 2);
    EXPECT_NEAR(ink.center().y() / ratio, 15, 3);
    EXPECT_GT(ink.height() / ratio, 12); // a capital of a 20 pixel font

    bar.setValue(50);
    const QImage half = bar.picture();
    for (int y = 0; y < plain.height(); ++y)
        for (int x = 0; x < plain.width(); ++x) {
            const QRgb under = plain.pixel(x, y);
            const QRgb inverted = 0xFF000000 | (under ^ WhitePixel ^ OrangePixel);
            ASSERT_EQ(half.pixel(x, y), x < plain.width() / 2 ? inverted : under) << x << ", " << y;
        }
}

TEST(PB, OnlyAssigningValueDraws)
{
    const std::vector<std::pair<const char *, QVariant>> changes = {
        {"Max", 400},         {"Min", -400},         {"CaptionStyle", 1},   {"Caption", u"Daily"_s},
        {"FillColor", Black}, {"ForeColor", Orange}, {"BackColor", Orange},
    };
    for (const auto &[property, changed] : changes) {
        SCOPED_TRACE(property);
        Bar bar(3, u"Hourly"_s);
        bar.setValue(40);
        const QImage before = bar.picture();
        bar.setProperty(property, changed);
        bar.Refresh();
        EXPECT_EQ(bar.picture(), before);
        bar.setValue(40);
        EXPECT_NE(bar.picture(), before);
    }
}

TEST(PB, ResizedControlKeepsItsPictureWithBackgroundAround)
{
    Bar bar;
    bar.setValue(100);
    bar.show();
    bar.resize(300, 30);
    EXPECT_EQ(bar.picture(), bar.pictureOfABar(200));
    bar.setValue(100);
    EXPECT_EQ(bar.picture(), bar.pictureOfABar(300));
}

TEST(PB, EmptyRangeRaisesAndLeavesAnEmptyPicture)
{
    for (const qint32 style : {0, 1, 2, 3}) {
        SCOPED_TRACE(style);
        Bar bar(style, u"Hourly"_s);
        bar.setValue(60);
        bar.setMin(100);
        qint32 value = 130;
        EXPECT_EQ(errorOf([&] { bar.setValue(value); }),
                  style < 2 ? InvalidPropertyValue : DivisionByZero);
        EXPECT_EQ(std::pair(value, bar.value()), std::pair(100, 130));
        EXPECT_EQ(bar.picture(), bar.pictureOfABar(0));
    }
}

TEST(PB, NumbersAreRoundedHalvesToTheEvenOneAndOverflowBeyondTheirBits)
{
    Bar bar;
    for (const auto &[given, whole] : {std::pair{12.5, 12}, {13.5, 14}, {12.6, 13}, {-0.5, 0}}) {
        EXPECT_TRUE(bar.setProperty("value", given));
        EXPECT_EQ(bar.value(), whole) << given;
    }
    for (const double number : {2147483648.0, std::nan("")})
        EXPECT_EQ(errorOf([&] { bar.setValue(number); }), Overflow) << number;
    bar.setCaptionStyle(-32768);
    for (const qint32 number : {32768, -32769}) {
        EXPECT_EQ(errorOf([&] { bar.setCaptionStyle(number); }), Overflow) << number;
        EXPECT_EQ(errorOf([&] { bar.setAppearance(number); }), Overflow) << number;
    }
    EXPECT_EQ(std::pair(bar.CaptionStyle(), bar.Appearance()), std::pair(-32768, 1));
}

TEST(PB, BorderFramesThePictureInsideFlatOrNot)
{
    Bar bar;
    bar.setAppearance(0);
    bar.setBorderStyle(1);
    bar.setValue(100);
    const QImage flat = bar.picture();
    const int one = qRound(flat.devicePixelRatio());
    const int last = flat.width() - 1;
    for (const auto &[x, isInside] :
         {std::pair(0, false), {one, true}, {last - one, true}, {last, false}})
        EXPECT_EQ(flat.pixel(x, flat.height() / 2) == OrangePixel, isInside) << x;
    bar.setAppearance(1);
    EXPECT_NE(bar.picture(), flat);
}

TEST(PB, IsAProgressBarToAssistiveTechnology)
{
    Bar bar(0, u"Hourly"_s);
    bar.setMin(10);
    bar.setValue(170);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_TRUE(accessible && accessible->valueInterface());
    const QAccessibleValueInterface &value = *accessible->valueInterface();
    EXPECT_EQ((QVariantList{accessible->role(), accessible->text(QAccessible::Name),
                            value.minimumValue(), value.maximumValue(), value.currentValue()}),
              (QVariantList{QAccessible::ProgressBar, u"Hourly"_s, 10, 100, 100}));
    bar.setAccessibleName(u"Progress"_s);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"Progress"_s);
}
