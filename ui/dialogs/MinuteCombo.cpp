#include "ui/dialogs/MinuteCombo.h"

#include <QStyleOptionComboBox>

namespace ui {

MinuteCombo::MinuteCombo(QWidget *parent)
    : QComboBox(parent)
{
    connect(this, &QComboBox::currentIndexChanged, this, [this] { setAccessibleDescription({}); });
}

QString MinuteCombo::text() const
{
    return currentIndex() >= 0 ? currentText() : m_unlistedText;
}

void MinuteCombo::setText(const QString &text)
{
    m_unlistedText = text;
    setCurrentIndex(findText(text));
    if (currentIndex() < 0)
        setAccessibleDescription(text); // screen readers know the entries' texts only
    update();
}

void MinuteCombo::initStyleOption(QStyleOptionComboBox *option) const
{
    QComboBox::initStyleOption(option);
    option->currentText = text();
}

} // namespace ui
