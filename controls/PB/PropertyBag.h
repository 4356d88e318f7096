#pragma once

#include <QString>
#include <QVariant>

namespace controls {

/// Where a host keeps the saved properties of a control, by key. For programs that let controls be
/// designed and saved; this one does not. An entry is left out when its value is the default that
/// the control gives for it.
class PropertyBag
{
public:
    virtual ~PropertyBag() = default;

    /// The saved value, or the default when the key is missing.
    QVariant readProperty(const QString &key, const QVariant &defaultValue = {}) const
    {
        const QVariant saved = find(key);
        return saved.isValid() ? saved : defaultValue;
    }

    /// Without a default the entry is always saved.
    void writeProperty(const QString &key, const QVariant &value, const QVariant &defaultValue = {})
    {
        if (!defaultValue.isValid() || value != defaultValue)
            store(key, value);
    }

private:
    /// The value under the key, an invalid one when there is none.
    virtual QVariant find(const QString &key) const = 0;
    virtual void store(const QString &key, const QVariant &value) = 0;
};

} // namespace controls
