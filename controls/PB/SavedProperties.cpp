#include "controls/PB/PB.h"
#include "controls/PB/PictureBox.h"
#include "controls/PB/PropertyBag.h"
#include "platform/Arithmetic.h"

namespace controls {

using namespace Qt::StringLiterals;

// "Max" is read but not written, "Font" is written but not read, and the style of a missing entry
// (3) is not the one that a new control has (2): see docs/behaviour.md.

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
        bag.readProperty(u"CaptionStyle"_s, captionStyle::captionAndPercentage).toInt());
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
    bag.writeProperty(u"CaptionStyle"_s, CaptionStyle(), captionStyle::captionAndPercentage);
    bag.writeProperty(u"Enabled"_s, Enabled(), true);
    bag.writeProperty(u"Caption"_s, m_caption);
    bag.writeProperty(u"Min"_s, m_min, 0);
    bag.writeProperty(u"CaptionFont"_s, CaptionFont());
}

} // namespace controls
