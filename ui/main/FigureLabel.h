#pragma once

#include <QHash>
#include <QLabel>
#include <QList>
#include <QStaticText>

namespace ui {

/// A label for figures of which some change every second, which is most of what the idle program
/// does. It lays out every figure once and for all, and paints only those that have changed.
/// Without line breaks, kerning and mnemonics. Its font is set before the first figures.
class FigureLabel : public QLabel
{
    Q_OBJECT

public:
    /// Shows other figures at once.
    void showFigures(const QString &figures);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QList<qreal> edges(const QString &figures);
    QRect reach(qreal from, qreal to) const;
    QRect whatDiffers(const QString &before, const QString &after);
    const QStaticText &laidOut(QChar figure);

    QHash<QChar, QStaticText> m_laidOut;
};

} // namespace ui
