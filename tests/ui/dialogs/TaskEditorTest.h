#pragma once

#include "tests/ui/dialogs/Editor.h"
#include "tests/ui/main/MainFormTest.h"

/// The task editor over a database of its own.
class TaskEditorTest : public MainFormTest
{
protected:
    /// Without a name it adds a task.
    void openEditor(const QString &name = {})
    {
        store::bNieuweOpdracht = platform::toBoolean(name.isEmpty());
        store::sOpdrachtnaam = name;
        editor = std::make_unique<Editor>();
        editor->show();
        editor->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    }

    QString minute() const { return editor->minutes()->text(); }
    void chooseMinute(const QString &minute) const
    {
        editor->minutes()->setCurrentIndex(editor->minutes()->findText(minute));
    }

    QCheckBox *box(int day, int hour) const { return editor->box(hour + 24 * (day - 1)); }
    void clickBox(int day, int hour) const { QTest::mouseClick(box(day, hour), Qt::LeftButton); }

    std::unique_ptr<Editor> editor;
};
