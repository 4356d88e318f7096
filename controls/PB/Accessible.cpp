#include "controls/PB/Accessible.h"

#include "controls/PB/PB.h"
#include "controls/PB/Range.h"

#include <QAccessibleWidget>

namespace controls {

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

void installAccessibility()
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

} // namespace controls
