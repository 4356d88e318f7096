#include "controls/PB/PictureBox.h"

#include "platform/RuntimeError.h"

#include <QFontMetricsF>
#include <QPainter>

namespace controls {

PictureBox::PictureBox(QWidget *parent)
    : QFrame(parent)
    , m_foreColor(toColour(palette().color(QPalette::Text)))
    , m_backColor(toColour(palette().color(QPalette::Base)))
{
    updateFrame();
}

void PictureBox::setAppearance(qint16 appearance)
{
    m_appearance = appearance;
    updateFrame();
}

void PictureBox::setBorderStyle(qint32 borderStyle)
{
    m_borderStyle = borderStyle;
    updateFrame();
}

void PictureBox::updateFrame()
{
    if (m_borderStyle == 0)
        setFrameStyle(QFrame::NoFrame);
    else if (m_appearance == 0)
        setFrameStyle(QFrame::Box | QFrame::Plain);
    else
        setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
}

void PictureBox::setBackColor(Colour colour)
{
    m_backColor = colour;
    update();
}

void PictureBox::clear()
{
    const double ratio = devicePixelRatio();
    const QSize size = (QSizeF(contentsRect().size()) * ratio).toSize().expandedTo({1, 1});
    if (m_picture.size() != size)
        m_picture = QImage(size, QImage::Format_RGB32);
    m_picture.setDevicePixelRatio(ratio);
    m_picture.fill(toQColor(m_backColor));
    update();
}

void PictureBox::setScaleWidth(double units)
{
    if (units == 0)
        throw platform::RuntimeError(platform::ErrorNumber::InvalidPropertyValue);
    m_scaleWidth = units;
}

void PictureBox::printCentred(const QString &text)
{
    const QFontMetricsF metrics(font(), &m_picture);
    const QSizeF inner = m_picture.deviceIndependentSize();
    const double x = inner.width() / 2 - metrics.horizontalAdvance(text) / 2;
    const double y = (inner.height() - metrics.height()) / 2;

    QPainter painter(&m_picture);
    painter.setFont(font());
    painter.setPen(toQColor(m_foreColor));
    painter.drawText(QPointF(x, y + metrics.ascent()), text);
}

void PictureBox::invertUpTo(double unit, Colour colour)
{
    const double ratio = m_picture.devicePixelRatio();
    const int pixels = qRound(unit / m_scaleWidth * m_picture.width());
    // not(pen xor background) is to be the colour.
    const Colour pen = ~(colour ^ m_backColor);

    QPainter painter(&m_picture);
    painter.setCompositionMode(QPainter::RasterOp_NotSourceXorDestination);
    painter.fillRect(QRectF(0, 0, pixels / ratio, m_picture.height() / ratio), toQColor(pen));
}

void PictureBox::paintEvent(QPaintEvent *event)
{
    {
        QPainter painter(this);
        painter.setClipRect(contentsRect());
        painter.fillRect(contentsRect(), toQColor(m_backColor));
        painter.drawImage(contentsRect().topLeft(), m_picture);
    }
    QFrame::paintEvent(event);
}

} // namespace controls
