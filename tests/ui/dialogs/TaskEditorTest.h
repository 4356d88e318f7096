#pragma once

#include "tests/ui/main/MainFormTest.h"
#include "ui/dialogs/frmSchedule.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

/// The task editor over a database of its own.
class TaskEditorTest : public MainFormTest
{
protected:
    /// Without a name it adds a task.
    void openEditor(const QString &name = {});

    template <typename Control>
    Control *control(QStringView name) const
    {
        return editor->findChild<Control *>(name.toString());
    }
    QString text(QStringView textBox) const { return control<QLineEdit>(textBox)->text(); }
    void type(QStringView textBox, const QString &text) const;
    QString minute() const;
    void chooseMinute(const QString &minute) const;
    QCheckBox *box(int day, int hour) const;
    QList<int> tickedBoxes() const;
    void clickBox(int day, int hour) const;
    void save() const;

    std::unique_ptr<ui::frmSchedule> editor;
};
