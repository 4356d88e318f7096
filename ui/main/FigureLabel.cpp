#include "ui/main/FigureLabel.h"

#include <QPainter>

namespace ui {

void FigureLabel::paintEvent(QPaintEvent * /*event*/)
{
    const QString figures = text();
    qreal width = 0;
    for (const QChar figure : figures)
        width += laidOut(figure).size().width();

    const QRectF room = contentsRect();
    const qreal height = QFontMetricsF(font()).height();
    qreal x = alignment().testFlag(Qt::AlignRight) ? room.right() - width : room.left();
    const qreal y = room.top() + (room.height() - height) / 2;
    QPainter painter(this);
    for (const QChar figure : figures) {
        painter.drawStaticText(QPointF(x, y), laidOut(figure));
        x += laidOut(figure).size().width();
    }
}

const QStaticText &FigureLabel::laidOut(QChar character)
{
    QStaticText &known = m_laidOut[character];
    if (known.text().isEmpty()) {
        known.setText(character);
        known.setTextFormat(Qt::PlainText);
        known.prepare({}, font());
    }
    return known;
}

} // namespace ui
