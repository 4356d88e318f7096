#pragma once

#include <QColor>
#include <QFrame>
#include <QImage>

namespace controls {

/// A colour as the controls keep and save it: 0x00BBGGRR. The top byte has no part in drawing.
using Colour = quint32;

inline QColor toQColor(Colour colour)
{
    return QColor::fromRgb(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                           static_cast<int>(colour >> 16 & 0xFF));
}

inline Colour toColour(const QColor &colour)
{
    return static_cast<Colour>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

/// A framed surface with a persistent picture. What is drawn stays as it is, whatever property
/// changes and however the box is resized, until it is cleared; around the picture, and before
/// the first one, the background shows. The picture has the resolution of the screen.
class PictureBox : public QFrame
{
public:
    explicit PictureBox(QWidget *parent);

    /// 0 is flat, any other number three-dimensional. It shows in the border.
    void setAppearance(qint16 appearance);
    qint16 appearance() const { return m_appearance; }
    /// 0 is no border, any other number a fixed single one.
    void setBorderStyle(qint32 borderStyle);
    qint32 borderStyle() const { return m_borderStyle; }
    void setForeColor(Colour colour) { m_foreColor = colour; }
    Colour foreColor() const { return m_foreColor; }
    void setBackColor(Colour colour);
    Colour backColor() const { return m_backColor; }

    /// Begins a new picture of the box's inner size, all background.
    void clear();
    /// Makes the picture that many units wide, counted from its left edge; a negative number
    /// counts downwards. Raises InvalidPropertyValue for 0.
    void setScaleWidth(double units);
    /// Prints the text in the foreground colour and the box's font in the middle of the picture.
    void printCentred(const QString &text);
    /// Fills the picture from its left edge to the given unit, over its full height, with a pen
    /// that inverts what lies under it and turns the background into the colour.
    void invertUpTo(double unit, Colour colour);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void updateFrame();

    QImage m_picture;
    double m_scaleWidth = 1;
    Colour m_foreColor;
    Colour m_backColor;
    qint32 m_borderStyle = 1;
    qint16 m_appearance = 1;
};

} // namespace controls
