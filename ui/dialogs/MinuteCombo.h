#pragma once

#include <QComboBox>

#include <vector>

namespace ui {

/// The minutes of the hour, "0" to "59", without the taken ones, which come highest first. Each is
/// removed by its position in the list: of two equal ones the second takes away the next higher
/// free minute (see "Minutes by position" in docs/behaviour.md). Raises InvalidProcedureCall for a
/// position that the list does not have, or has no more.
QStringList freeMinutes(const std::vector<int> &taken);

/// A combo box that does not take typing, and yet can show a text that is not in its list. That
/// text is gone as soon as the user chooses an entry. The mouse's wheel turns it only while it has
/// the focus, so that nobody changes it who only scrolls past it.
class MinuteCombo : public QComboBox
{
    Q_OBJECT

public:
    explicit MinuteCombo(QWidget *parent = nullptr);

    /// What is shown; empty when nothing is chosen.
    QString text() const;

    /// Chooses the entry of that text, or shows the text alone when there is no such entry.
    void setText(const QString &text);

protected:
    void initStyleOption(QStyleOptionComboBox *option) const override;
    void wheelEvent(QWheelEvent *event) override;

private:
    QString m_unlistedText; ///< shown while no entry is chosen
};

} // namespace ui
