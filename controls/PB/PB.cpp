#include "controls/PB/PB.h"

#include "controls/PB/Accessible.h"
#include "controls/PB/PictureBox.h"
#include "controls/PB/PropertyBag.h"
#include "controls/PB/Range.h"
#include "platform/Arithmetic.h"
#include "platform/Text.h"

#include <QAccessible>
#include <QResizeEvent>

namespace controls {

using namespace Qt::StringLiterals;

static constexpr Colour Blue = 0xFF0000;

PB::PB(QWidget *parent)
    : QWidget(parent)
    , m_picProgress(new PictureBox(this))
{
    m_picProgress->setObjectName(u"picProgress"_s);
    installAccessibility();

    // A hidden control keeps its place: it is drawn before it is shown.
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);

    initProperties();
}

void PB::initProperties()
{
    m_max = 100;
    m_min = 0;
    m_picProgress->setBackColor(toColour(palette().color(QPalette::Base)));
    m_fillColor = Blue;
    m_captionStyle = captionStyle::PercentageOnly;
    giveFontToConstituents();
}

void PB::giveFontToConstituents()
{
    m_picProgress->setFont(font());
}

void PB::setAppearance(qint32 appearance)
{
    m_picProgress->setAppearance(platform::narrowed<qint16>(appearance));
    Q_EMIT propertyChanged();
}

qint32 PB::Appearance() const
{
    return m_picProgress->appearance();
}

void PB::setCaption(const QString &caption)
{
    m_caption = platform::trimmedBlanks(caption);
    Q_EMIT propertyChanged();
}

void PB::setMax(qint32 max)
{
    m_max = max;
    Q_EMIT propertyChanged();
}

void PB::setMin(qint32 min)
{
    m_min = min;
    Q_EMIT propertyChanged();
}

void PB::setEnabled(bool enabled)
{
    m_picProgress->setEnabled(enabled);
    Q_EMIT propertyChanged();
}

bool PB::Enabled() const
{
    return m_picProgress->isEnabledTo(this);
}

void PB::setBorderStyle(qint32 borderStyle)
{
    m_picProgress->setBorderStyle(borderStyle);
    Q_EMIT propertyChanged();
}

qint32 PB::BorderStyle() const
{
    return m_picProgress->borderStyle();
}

void PB::setCaptionStyle(qint32 captionStyle)
{
    m_captionStyle = platform::narrowed<qint16>(captionStyle);
    Q_EMIT propertyChanged();
}

void PB::setCaptionFont(const QFont &captionFont)
{
    setFont(captionFont);
    giveFontToConstituents();
    Q_EMIT propertyChanged();
}

void PB::setFillColor(Colour colour)
{
    m_fillColor = colour;
    Q_EMIT propertyChanged();
}

void PB::setForeColor(Colour colour)
{
    m_picProgress->setForeColor(colour);
    Q_EMIT propertyChanged();
}

Colour PB::ForeColor() const
{
    return m_picProgress->foreColor();
}

void PB::setBackColor(Colour colour)
{
    m_picProgress->setBackColor(colour);
    Q_EMIT propertyChanged();
}

Colour PB::BackColor() const
{
    return m_picProgress->backColor();
}

void PB::setValue(qint32 &value)
{
    m_value = value;
    value = cutToRange(value, m_min, m_max);
    draw(value);
    if (isVisible()) {
        QAccessibleValueChangeEvent event(this, value);
        QAccessible::updateAccessibility(&event);
    }
}

void PB::setValue(const qint32 &value)
{
    qint32 cut = value;
    setValue(cut);
}

void PB::setValue(double value)
{
    setValue(platform::roundedHalfToEven<qint32>(value));
}

void PB::draw(qint32 value)
{
    // A hidden control is told of a new size only when it is shown.
    m_picProgress->resize(size());
    m_picProgress->clear();
    const QString text = captionText(value);
    m_picProgress->setScaleWidth(double(m_max) - m_min);
    m_picProgress->printCentred(text);
    m_picProgress->invertUpTo(double(value) - m_min, m_fillColor);
}

QString PB::captionText(qint32 value) const
{
    if (m_captionStyle == captionStyle::None)
        return {};
    if (m_captionStyle == captionStyle::CaptionOnly)
        return m_caption;
    QString percentage = percentageText(value, m_min, m_max);
    if (m_captionStyle == captionStyle::PercentageOnly || m_caption.isEmpty())
        return percentage;
    return m_caption + u' ' + percentage;
}

void PB::Refresh()
{
    m_picProgress->repaint();
}

// Deliberate: "Max" is read but not written, "Font" is written but not read, and the style of a
// missing entry (3) is not the one that a new control has (2).

void PB::readProperties(const PropertyBag &bag)
{
    const auto colour = [&bag](const QString &key, Colour defaultValue) {
        return bag.readProperty(key, defaultValue).value<Colour>();
    };
    m_picProgress->setAppearance(platform::narrowed<qint16>(
        bag.readProperty(u"Appearance"_s, m_picProgress->appearance()).toInt()));
    m_picProgress->setForeColor(colour(u"ForeColor"_s, m_picProgress->foreColor()));
    m_picProgress->setBackColor(colour(u"BackColor"_s, m_picProgress->backColor()));
    m_fillColor = colour(u"FillColor"_s, m_fillColor);
    setBorderStyle(bag.readProperty(u"BorderStyle"_s, 1).toInt());
    setCaptionStyle(
        bag.readProperty(u"CaptionStyle"_s, captionStyle::CaptionAndPercentage).toInt());
    setEnabled(bag.readProperty(u"Enabled"_s, true).toBool());
    setCaption(bag.readProperty(u"Caption"_s, QString()).toString());
    setMax(bag.readProperty(u"Max"_s, 100).toInt());
    setMin(bag.readProperty(u"Min"_s, 0).toInt());
    if (const QVariant font = bag.readProperty(u"CaptionFont"_s); font.isValid())
        setCaptionFont(font.value<QFont>());
}

void PB::writeProperties(PropertyBag &bag) const
{
    bag.writeProperty(u"Appearance"_s, Appearance());
    bag.writeProperty(u"ForeColor"_s, ForeColor());
    bag.writeProperty(u"BackColor"_s, BackColor());
    bag.writeProperty(u"FillColor"_s, m_fillColor);
    bag.writeProperty(u"Font"_s, font());
    bag.writeProperty(u"BorderStyle"_s, BorderStyle(), 1);
    bag.writeProperty(u"CaptionStyle"_s, CaptionStyle(), captionStyle::CaptionAndPercentage);
    bag.writeProperty(u"Enabled"_s, Enabled(), true);
    bag.writeProperty(u"Caption"_s, m_caption);
    bag.writeProperty(u"Min"_s, m_min, 0);
    bag.writeProperty(u"CaptionFont"_s, CaptionFont());
}

QSize PB::sizeHint() const
{
    const int line = fontMetrics().height();
    return {line * 12, line + line / 2};
}

void PB::resizeEvent(QResizeEvent *event)
{
    m_picProgress->resize(event->size());
}

} // namespace controls
