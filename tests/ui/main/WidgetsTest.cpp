#include "ui/main/Widgets.h"

#include "tests/support/Test.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QToolTip>

static QString toolTipOf(ui::ElidedLabel &label)
{
    QHelpEvent asked(QEvent::ToolTip, {1, 1}, label.mapToGlobal(QPoint(1, 1)));
    QCoreApplication::sendEvent(&label, &asked);
    return QToolTip::text();
}

TEST(ElidedLabel, CutsWhatHasNoRoomAndTellsItWhole)
{
    ui::ElidedLabel label;
    label.setUsualText(u"Hourly news"_s);
    label.adjustSize();
    label.show();
    label.setText(u"Weather"_s);
    EXPECT_EQ(toolTipOf(label), u""_s);

    label.setText(u"Weather & <traffic> for the weekend"_s);
    EXPECT_EQ(label.sizeHint().width(), label.width());
    EXPECT_EQ(label.minimumSizeHint().width(), 0);
    EXPECT_EQ(toolTipOf(label), u"<span>Weather &amp; &lt;traffic&gt; for the weekend</span>"_s);

    const QImage cut = label.grab().toImage();
    label.setText(label.fontMetrics().elidedText(label.text(), Qt::ElideRight, label.width()));
    EXPECT_EQ(label.grab().toImage(), cut);
    label.clear();
    EXPECT_NE(label.grab().toImage(), cut);
}
