#include "ui/main/Widgets.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <QWindow>

namespace ui {

using namespace Qt::StringLiterals;

void paintNow(QWidget *widget, const QRegion &part)
{
    const QWindow *window = widget->window()->windowHandle();
    if (window && window->isExposed())
        widget->repaint(part);
    else
        widget->update(part);
}

ElidedLabel::ElidedLabel()
{
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::setUsualText(const QString &text)
{
    m_usualText = text;
    updateGeometry();
}

QSize ElidedLabel::sizeHint() const
{
    const QMargins around = contentsMargins();
    return {fontMetrics().horizontalAdvance(m_usualText) + around.left() + around.right(),
            minimumSizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::isCut() const
{
    return fontMetrics().horizontalAdvance(text()) > contentsRect().width();
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QString whole = u"<span>"_s + text().toHtmlEscaped() + u"</span>"_s;
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), isCut() ? whole : QString(),
                       this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const QRect room = contentsRect();
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, room.width());
    style()->drawItemText(&painter, room, static_cast<int>(alignment()), palette(), isEnabled(),
                          shown, foregroundRole());
}

} // namespace ui
