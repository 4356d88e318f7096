#include "controls/PB/PB.h"
#include "controls/PB/PropertyBag.h"
#include "tests/support/Test.h"

#include <QSignalSpy>

#include <vector>

using controls::PB;

namespace {

class MemoryBag : public controls::PropertyBag
{
public:
    QMap<QString, QVariant> entries;
    mutable QStringList keys; ///< in the order of storing or reading

private:
    QVariant find(const QString &key) const override
    {
        keys << key;
        return entries.value(key);
    }
    void store(const QString &key, const QVariant &value) override
    {
        keys << key;
        entries[key] = value;
    }
};

/// A property of a new control, some other value, and what an empty bag makes of that. An invalid
/// value stands for whatever it was before.
using Property = std::tuple<const char *, QVariant, QVariant, QVariant>;

std::vector<Property> properties()
{
    QFont font;
    font.setPointSize(19);
    return {
        {"Appearance", 1, 0, {}},         {"ForeColor", {}, 0x112233U, {}},
        {"BackColor", {}, 0x445566U, {}}, {"FillColor", 0xFF0000U, 0x778899U, {}},
        {"BorderStyle", 1, 0, 1},         {"CaptionStyle", 2, 1, 3},
        {"Enabled", true, false, true},   {"Caption", u""_s, u"\tHourly\t"_s, u""_s},
        {"Max", 100, 500, 100},           {"Min", 0, -20, 0},
        {"CaptionFont", {}, font, {}},
    };
}

} // namespace

TEST(Properties, TellTheHostOfAChangeAndComeBackFromWhatWasSavedInOrder)
{
    PB bar;
    const QSignalSpy changed(&bar, &PB::propertyChanged);
    EXPECT_EQ(bar.value(), 0);
    bar.setValue(50); // the host is not told of it
    for (const auto &[name, ofNew, set, fromEmptyBag] : properties()) {
        const auto before = changed.count();
        EXPECT_TRUE(!ofNew.isValid() || bar.property(name) == ofNew) << name;
        bar.setProperty(name, set);
        EXPECT_EQ(bar.property(name), set) << name;
        EXPECT_EQ(changed.count(), before + 1) << name;
    }
    EXPECT_FALSE(bar.findChild<QWidget *>(u"picProgress"_s)->isEnabled());
    EXPECT_TRUE(bar.isEnabled());

    MemoryBag bag;
    bar.writeProperties(bag);
    EXPECT_EQ(bag.keys.join(u' '),
              u"Appearance ForeColor BackColor FillColor Font BorderStyle CaptionStyle "
              "Enabled Caption Min CaptionFont"_s);
    bag.entries[u"Font"_s] = QFont(u"Never read"_s, 99);
    bag.entries[u"Max"_s] = bar.Max(); // which the control does not save
    PB loaded;
    loaded.readProperties(bag);
    for (const auto &[name, ofNew, set, fromEmptyBag] : properties())
        EXPECT_EQ(loaded.property(name), set) << name;
}

TEST(Properties, ThatAreMissingGetTheDefaultsWhichAreNotSavedOrStayAsTheyAre)
{
    PB bar;
    for (const auto &[name, ofNew, set, fromEmptyBag] : properties())
        bar.setProperty(name, set);
    MemoryBag bag;
    bar.readProperties(bag);
    EXPECT_EQ(bag.keys.join(u' '), u"Appearance ForeColor BackColor FillColor BorderStyle "
                                   "CaptionStyle Enabled Caption Max Min CaptionFont"_s);
    for (const auto &[name, ofNew, set, fromEmptyBag] : properties())
        EXPECT_EQ(bar.property(name), fromEmptyBag.isValid() ? fromEmptyBag : set) << name;

    bag.keys.clear();
    bar.writeProperties(bag);
    EXPECT_EQ(bag.keys.join(u' '),
              u"Appearance ForeColor BackColor FillColor Font Caption CaptionFont"_s);
}
