#include "ui/main/FigureLabel.h"

#include "tests/support/Test.h"

#include <QPaintEvent>
#include <QTest>

namespace {

class PaintedPart : public QObject
{
public:
    QRegion region;

    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
};

} // namespace

TEST(FigureLabel, LooksLikeAPlainLabel)
{
    for (const auto &[text, alignment] : {std::pair(u"12:34"_s, Qt::AlignLeft | Qt::AlignVCenter),
                                          {u"604800"_s, Qt::AlignRight | Qt::AlignVCenter}}) {
        QLabel plain;
        ui::FigureLabel figures;
        for (QLabel *label : {&plain, static_cast<QLabel *>(&figures)}) {
            label->setFont(QFont(u"Tahoma"_s, 24, QFont::Bold));
            label->setAlignment(alignment);
            label->setContentsMargins(3, 1, 5, 9);
            label->resize(200, 61);
            label->setText(text);
            label->grab();
        }
        EXPECT_EQ(figures.grab().toImage(), plain.grab().toImage()) << text.toStdString();
    }
}

TEST(FigureLabel, PaintsAtOnceWhatDiffersAndNoMore)
{
    ui::FigureLabel label;
    label.setFont(QFont(u"Tahoma"_s, 24, QFont::Bold));
    label.setAlignment(Qt::AlignRight);
    label.resize(200, 61);
    label.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&label));
    PaintedPart painted;
    label.installEventFilter(&painted);
    const int figure = label.fontMetrics().horizontalAdvance(u'8');
    for (const auto &[before, after, most] : {std::tuple(u"604800"_s, u"604799"_s, 4 * figure),
                                              {u"604799"_s, u"604798"_s, 2 * figure},
                                              {u"10"_s, u"9"_s, label.width()},
                                              {u"9"_s, u"9"_s, 0}}) {
        label.showFigures(before);
        QImage shown = label.grab().toImage();
        painted.region = {};
        label.showFigures(after);
        const QRect part = painted.region.boundingRect();
        EXPECT_LE(part.width(), most) << after.toStdString();
        if (!part.isEmpty())
            label.render(&shown, part.topLeft(), part);
        EXPECT_EQ(shown, label.grab().toImage()) << after.toStdString();
    }
}
