#include "ui/main/FigureLabel.h"

#include "ui/main/Widgets.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace ui {

void FigureLabel::showFigures(const QString &figures)
{
    const QString before = text();
    if (figures == before)
        return;
    // setText() would have the whole label painted, and so would switching updates on again.
    setAttribute(Qt::WA_UpdatesDisabled);
    setText(figures);
    setAttribute(Qt::WA_UpdatesDisabled, false);
    paintNow(this, whatDiffers(before, figures));
}

void FigureLabel::paintEvent(QPaintEvent *event)
{
    const QString figures = text();
    const QList<qreal> edge = edges(figures);
    const QRectF room = contentsRect();
    const qreal y = room.top() + (room.height() - QFontMetricsF(font()).height()) / 2;
    QPainter painter(this);
    for (qsizetype i = 0; i < figures.size(); ++i) {
        if (reach(edge[i], edge[i + 1]).intersects(event->rect()))
            painter.drawStaticText(QPointF(edge[i], y), laidOut(figures[i]));
    }
}

// Where each figure begins, and where the last one ends.
QList<qreal> FigureLabel::edges(const QString &figures)
{
    QList<qreal> edge{0};
    for (const QChar figure : figures)
        edge.push_back(edge.back() + laidOut(figure).size().width());
    const QRectF room = contentsRect();
    const qreal shift =
        alignment().testFlag(Qt::AlignRight) ? room.right() - edge.back() : room.left();
    for (qreal &x : edge)
        x += shift;
    return edge;
}

// All that figures between the two edges may cover: the ink of some stands out a little.
QRect FigureLabel::reach(qreal from, qreal to) const
{
    const int overhang = height() / 8;
    return QRectF(from, 0, to - from, height()).toAlignedRect().adjusted(-overhang, 0, overhang, 0);
}

QRect FigureLabel::whatDiffers(const QString &before, const QString &after)
{
    const QList<qreal> edge = edges(after);
    if (edge != edges(before))
        return rect();
    const auto first = std::mismatch(after.begin(), after.end(), before.begin()).first;
    const auto last = std::mismatch(after.rbegin(), after.rend(), before.rbegin()).first.base();
    return reach(edge[first - after.begin()], edge[last - after.begin()]);
}

const QStaticText &FigureLabel::laidOut(QChar figure)
{
    QStaticText &known = m_laidOut[figure];
    if (known.text().isEmpty()) {
        known.setText(figure);
        known.setTextFormat(Qt::PlainText);
        known.prepare({}, font());
    }
    return known;
}

} // namespace ui
