#include "ui/dialogs/HourBox.h"

#include <QMouseEvent>
#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace ui {

HourBox::HourBox(const QColor &ground, QWidget *parent)
    : QCheckBox(parent)
    , m_ground(ground)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

static QSize indicatorSize(const QStyle *style, const QWidget *widget)
{
    return {style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, widget),
            style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, widget)};
}

QSize HourBox::sizeHint() const
{
    return indicatorSize(style(), this) + QSize(12, 5);
}

void HourBox::paintEvent(QPaintEvent *)
{
    static const QPalette lightTheme(QColor(0xEF, 0xEF, 0xEF));
    QStylePainter painter(this);
    painter.fillRect(rect(), m_ground);

    QStyleOptionButton indicator;
    initStyleOption(&indicator);
    indicator.palette = lightTheme;
    indicator.rect = QStyle::alignedRect(layoutDirection(), Qt::AlignCenter,
                                         indicatorSize(style(), this), rect());
    painter.drawPrimitive(QStyle::PE_IndicatorCheckBox, indicator);

    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.palette = lightTheme;
        focus.backgroundColor = m_ground;
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

void HourBox::mousePressEvent(QMouseEvent *event)
{
    event->ignore();
}

void HourBox::mouseMoveEvent(QMouseEvent *event)
{
    event->ignore();
}

void HourBox::mouseReleaseEvent(QMouseEvent *event)
{
    event->ignore();
}

} // namespace ui
