#include "ui/main/ElidedLabel.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

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
    label.resize(label.sizeHint());
    label.show();
    label.setText(u"Weather"_s);
    const QImage whole = label.grab().toImage();
    EXPECT_EQ(toolTipOf(label), u""_s);

    const QSize before = label.sizeHint();
    label.setText(u"Weather & <traffic> for the weekend"_s);
    EXPECT_EQ(label.sizeHint(), before);
    EXPECT_EQ(label.minimumSizeHint().width(), 0);
    EXPECT_EQ(toolTipOf(label), u"<span>Weather &amp; &lt;traffic&gt; for the weekend</span>"_s);

    const QImage cut = label.grab().toImage();
    label.setText(label.fontMetrics().elidedText(label.text(), Qt::ElideRight, label.width()));
    EXPECT_NE(cut, whole);
    EXPECT_EQ(cut, label.grab().toImage());
}
