#include "ui/dialogs/MinuteCombo.h"

#include "platform/RuntimeError.h"

#include <QStyleOptionComboBox>
#include <QWheelEvent>

namespace ui {

QStringList freeMinutes(const std::vector<int> &taken)
{
    QStringList minutes;
    for (int minute = 0; minute < 60; ++minute)
        minutes << QString::number(minute);
    for (const int position : taken) {
        if (position < 0 || position >= minutes.size())
            throw platform::RuntimeError(platform::ErrorNumber::InvalidProcedureCall);
        minutes.removeAt(position);
    }
    return minutes;
}

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

void MinuteCombo::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

} // namespace ui
