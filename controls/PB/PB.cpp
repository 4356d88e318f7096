#include "controls/PB/PB.h"

#include "controls/PB/PictureBox.h"
#include "platform/Arithmetic.h"
#include "platform/Text.h"

#include <QAccessibleWidget>
#include <QResizeEvent>

#include <cmath>

namespace controls {

using namespace Qt::StringLiterals;

static constexpr Colour blue = 0xFF0000;

// Max for a value above it, otherwise Min for one below that.
static qint32 cutToRange(qint32 value, qint32 min, qint32 max)
{
    if (value > max)
        return max;
    if (value < min)
        return min;
    return value;
}

// How far the value is from Min to Max, as a whole percentage, a half rounded up: "45%".
// Raises DivisionByZero for an empty range.
static QString percentageText(qint32 value, qint32 min, qint32 max)
{
    const double percentage = platform::quotient(double(value) - min, double(max) - min) * 100;
    // A double is good for 15 decimal digits. Rounded from these, 57 of 200 is 28.5, thus 29;
    // the double itself is 28.499999999999996.
    const double decimal = QString::number(percentage, 'g', 15).toDouble();
    return QString::number(std::llround(decimal)) + u'%';
}

namespace {

class AccessiblePB : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit AccessiblePB(PB *bar)
        : QAccessibleWidget(bar, QAccessible::ProgressBar)
        , m_bar(bar)
    {}

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override
    {
        const QString given = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && given.isEmpty() ? m_bar->Caption() : given;
    }

    QVariant currentValue() const override
    {
        return cutToRange(m_bar->value(), m_bar->Min(), m_bar->Max());
    }
    void setCurrentValue(const QVariant & /*value*/) override {} // it is for reading only
    QVariant maximumValue() const override { return m_bar->Max(); }
    QVariant minimumValue() const override { return m_bar->Min(); }
    QVariant minimumStepSize() const override { return 1; }

private:
    PB *m_bar;
};

} // namespace

// Lets assistive technology see each PB as a progress bar with its range and the value drawn,
// named by its accessible name or else its caption. It costs nothing until such technology asks.
static void installAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory([](const QString &, QObject *object) -> QAccessibleInterface * {
            auto *bar = qobject_cast<PB *>(object);
            return bar ? new AccessiblePB(bar) : nullptr;
        });
        return true;
    }();
    static_cast<void>(installed);
}

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
    m_fillColor = blue;
    m_captionStyle = captionStyle::percentageOnly;
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
    if (m_captionStyle == captionStyle::none)
        return {};
    if (m_captionStyle == captionStyle::captionOnly)
        return m_caption;
    QString percentage = percentageText(value, m_min, m_max);
    if (m_captionStyle == captionStyle::percentageOnly || m_caption.isEmpty())
        return percentage;
    return m_caption + u' ' + percentage;
}

void PB::Refresh()
{
    m_picProgress->repaint();
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
