#include "controls/PB/PB.h"
#include "controls/PB/PropertyBag.h"
#include "tests/support/Test.h"

#include <QMap>
#include <QStringList>

#include <vector>

using controls::PB;

namespace {

class MemoryBag : public controls::PropertyBag
{
public:
    QMap<QString, QVariant> entries;
    QStringList stored;           ///< keys in the order of storing
    mutable QStringList lookedUp; ///< keys in the order of reading

private:
    QVariant find(const QString &key) const override
    {
        lookedUp << key;
        return entries.value(key);
    }
    void store(const QString &key, const QVariant &value) override
    {
        stored << key;
        entries[key] = value;
    }
};

MemoryBag savedBy(const PB &bar)
{
    MemoryBag bag;
    bar.writeProperties(bag);
    return bag;
}

QString keysSavedBy(const PB &bar)
{
    return savedBy(bar).stored.join(u' ');
}

/// Each saved property with what an empty bag makes of it, when it was something else before; an
/// invalid value stands for what it was before.
struct SavedProperty
{
    const char *name;
    QVariant before;
    QVariant fromEmptyBag;
};

std::vector<SavedProperty> savedProperties()
{
    QFont font;
    font.setPointSize(19);
    return {
        {"Appearance", 0, {}},
        {"ForeColor", 0x112233U, {}},
        {"BackColor", 0x445566U, {}},
        {"FillColor", 0x778899U, {}},
        {"BorderStyle", 0, 1},
        {"CaptionStyle", 2, 3},
        {"Enabled", false, true},
        {"Caption", u"Hourly"_s, u""_s},
        {"Max", 500, 100},
        {"Min", -20, 0},
        {"CaptionFont", font, {}},
    };
}

void setAll(PB &bar)
{
    for (const SavedProperty &property : savedProperties())
        bar.setProperty(property.name, property.before);
}

} // namespace

TEST(SavedProperties, WrittenInOrderWithoutThoseAtTheirDefault)
{
    PB bar;
    bar.setMax(500);
    EXPECT_EQ(keysSavedBy(bar), u"Appearance ForeColor BackColor FillColor Font "
                                "CaptionStyle Caption CaptionFont"_s);
    bar.setCaptionStyle(3);
    EXPECT_EQ(keysSavedBy(bar),
              u"Appearance ForeColor BackColor FillColor Font Caption CaptionFont"_s);
    setAll(bar);
    EXPECT_EQ(keysSavedBy(bar),
              u"Appearance ForeColor BackColor FillColor Font BorderStyle CaptionStyle "
              "Enabled Caption Min CaptionFont"_s);
}

TEST(SavedProperties, MissingEntriesGiveTheDefaultsOrLeaveWhatIsThere)
{
    PB bar;
    setAll(bar);
    const MemoryBag empty;
    bar.readProperties(empty);
    EXPECT_EQ(empty.lookedUp.join(u' '), u"Appearance ForeColor BackColor FillColor BorderStyle "
                                         "CaptionStyle Enabled Caption Max Min CaptionFont"_s);
    for (const SavedProperty &property : savedProperties()) {
        EXPECT_EQ(bar.property(property.name),
                  property.fromEmptyBag.isValid() ? property.fromEmptyBag : property.before)
            << property.name;
    }
}

TEST(SavedProperties, SavedControlComesBackExceptItsMax)
{
    PB saved;
    setAll(saved);
    MemoryBag bag = savedBy(saved);
    bag.entries[u"Font"_s] = QFont(u"Never read"_s, 99);

    PB loaded;
    loaded.readProperties(bag);
    EXPECT_EQ(loaded.Max(), 100);
    loaded.setMax(saved.Max());
    for (const SavedProperty &property : savedProperties())
        EXPECT_EQ(loaded.property(property.name), property.before) << property.name;

    bag.entries[u"Max"_s] = 250;
    loaded.readProperties(bag);
    EXPECT_EQ(loaded.Max(), 250);
}
