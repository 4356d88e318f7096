#include "ui/main/ProgramStyle.h"

#include <QGroupBox>
#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QStyleOption>

namespace ui {

// What a menu bar shows that is too narrow for its menus: two chevrons that point to the right.
// Icons are made smaller as needed, but not larger.
static QIcon moreToTheRight()
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QGuiApplication::palette().color(QPalette::ButtonText), 4));
    for (const int left : {6, 16})
        painter.drawPolyline(QPolygon({{left, 6}, {left + 10, 16}, {left, 26}}));
    return pixmap;
}

QIcon ProgramStyle::standardIcon(StandardPixmap icon, const QStyleOption *option,
                                 const QWidget *widget) const
{
    return icon == SP_ToolBarHorizontalExtensionButton
               ? moreToTheRight()
               : QProxyStyle::standardIcon(icon, option, widget);
}

// The toolkit's own style draws a box below the caption, a little darker than what is around it.
static void drawGroupBox(const QRect &box, QPainter *painter)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QColor(0, 0, 0, 24));
    painter->setBrush(QColor(0, 0, 0, 3));
    painter->drawRoundedRect(QRectF(box).adjusted(1.5, 1.5, -0.5, -0.5), 2, 2);
    painter->restore();
}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option,
                                 QPainter *painter, const QWidget *widget) const
{
    constexpr int MarginBelowCaption = 3; // as the style itself lays the box out
    const auto *box = qobject_cast<const QGroupBox *>(widget);
    if (element == PE_FrameGroupBox && box && !box->title().isEmpty() &&
        baseStyle()->inherits("QFusionStyle")) {
        const int caption =
            qMax(pixelMetric(PM_IndicatorHeight, option, widget), option->fontMetrics.height());
        drawGroupBox(option->rect.adjusted(0, caption + MarginBelowCaption, 0, 0), painter);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

} // namespace ui
