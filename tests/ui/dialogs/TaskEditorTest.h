#pragma once

#include "tests/ui/dialogs/Editor.h"
#include "tests/ui/main/MainFormTest.h"

/// The task editor over a database of its own.
class TaskEditorTest : public MainFormTest
{
protected:
    /// Without a name it adds a task.
    void openEditor(const QString &name = {});

    void chooseMinute(const QString &minute) const;
    QCheckBox *box(int day, int hour) const { return editor->box(hour + 24 * (day - 1)); }
    void clickBox(int day, int hour) const { QTest::mouseClick(box(day, hour), Qt::LeftButton); }

    std::unique_ptr<Editor> editor;
};
