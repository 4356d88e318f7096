#pragma once

#include "controls/PB/PictureBox.h"

namespace controls {

class PropertyBag;

/// Numbers for CaptionStyle. Any other number means captionAndPercentage.
namespace captionStyle {
inline constexpr qint32 none = 0;
inline constexpr qint32 captionOnly = 1;
inline constexpr qint32 percentageOnly = 2;
inline constexpr qint32 captionAndPercentage = 3; ///< the percentage alone without a caption
} // namespace captionStyle

/// A progress bar with an optional caption in its middle, which shows inverted where the bar covers
/// it. Only assigning `value` draws: a change of the range, the caption or a colour shows with the
/// next assignment. A control that is resized keeps its picture, with background around it, until
/// then.
///
/// A control begins as a designer places it: range 0 to 100, a blue bar, the percentage as caption.
/// This program uses it so; the saved properties are for programs that host designed controls.
class PB : public QWidget
{
    Q_OBJECT
    Q_CLASSINFO("ProgID", "Ostravelin.PB")
    Q_PROPERTY(qint32 Appearance READ Appearance WRITE setAppearance NOTIFY propertyChanged)
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption NOTIFY propertyChanged)
    Q_PROPERTY(qint32 Max READ Max WRITE setMax NOTIFY propertyChanged)
    Q_PROPERTY(qint32 Min READ Min WRITE setMin NOTIFY propertyChanged)
    Q_PROPERTY(bool Enabled READ Enabled WRITE setEnabled NOTIFY propertyChanged)
    Q_PROPERTY(qint32 BorderStyle READ BorderStyle WRITE setBorderStyle NOTIFY propertyChanged)
    Q_PROPERTY(qint32 CaptionStyle READ CaptionStyle WRITE setCaptionStyle NOTIFY propertyChanged)
    Q_PROPERTY(QFont CaptionFont READ CaptionFont WRITE setCaptionFont NOTIFY propertyChanged)
    Q_PROPERTY(quint32 FillColor READ FillColor WRITE setFillColor NOTIFY propertyChanged)
    Q_PROPERTY(quint32 ForeColor READ ForeColor WRITE setForeColor NOTIFY propertyChanged)
    Q_PROPERTY(quint32 BackColor READ BackColor WRITE setBackColor NOTIFY propertyChanged)
    // A double, so that an assignment by name rounds as setValue(double) does.
    Q_PROPERTY(double value READ value WRITE setValue)

public:
    explicit PB(QWidget *parent = nullptr);

    /// 0 is flat, any other number three-dimensional. Raises Overflow beyond 16 bits.
    void setAppearance(qint32 appearance);
    qint32 Appearance() const;
    /// Kept without leading and trailing blanks.
    void setCaption(const QString &caption);
    QString Caption() const { return m_caption; }
    /// The end of the range. Neither end is checked against the other.
    void setMax(qint32 max);
    qint32 Max() const { return m_max; }
    /// The beginning of the range.
    void setMin(qint32 min);
    qint32 Min() const { return m_min; }
    /// Enables or disables the inner picture, not this widget.
    void setEnabled(bool enabled);
    bool Enabled() const;
    /// 0 is no border, any other number a fixed single one.
    void setBorderStyle(qint32 borderStyle);
    qint32 BorderStyle() const;
    /// One of the numbers above. Raises Overflow beyond 16 bits.
    void setCaptionStyle(qint32 captionStyle);
    qint32 CaptionStyle() const { return m_captionStyle; }
    QFont CaptionFont() const { return font(); }
    void setCaptionFont(const QFont &captionFont);
    /// The bar's colour.
    void setFillColor(Colour colour);
    Colour FillColor() const { return m_fillColor; }
    /// The caption's colour.
    void setForeColor(Colour colour);
    Colour ForeColor() const;
    /// The colour of the empty part.
    void setBackColor(Colour colour);
    Colour BackColor() const;
    /// Stores the value, then draws it, cut to the range; the cut value is handed back in the
    /// argument, the stored one stays as assigned. With Max equal to Min the value is stored, the
    /// picture is left empty, and DivisionByZero is raised if the caption has a percentage,
    /// InvalidPropertyValue if not.
    void setValue(qint32 &value);
    /// The same for a constant, with nothing handed back.
    void setValue(const qint32 &value);
    /// Assigns the nearest whole number, a half going to the even one. Raises Overflow.
    void setValue(double value);
    qint32 value() const { return m_value; }
    /// Paints the present picture on the screen at once, without drawing the bar anew.
    void Refresh();

    /// Takes over saved properties, in place of those that the control has.
    void readProperties(const PropertyBag &bag);
    void writeProperties(PropertyBag &bag) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    /// Some property other than `value` was set, so that the design is to be saved again.
    void propertyChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void initProperties();
    void giveFontToConstituents();
    void draw(qint32 value);
    QString captionText(qint32 value) const;

    PictureBox *m_picProgress;
    QString m_caption;
    qint32 m_max = 0;
    qint32 m_min = 0;
    qint32 m_value = 0;
    Colour m_fillColor = 0;
    qint16 m_captionStyle = captionStyle::none;
};

} // namespace controls
