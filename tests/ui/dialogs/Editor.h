#pragma once

#include "tests/ui/main/MainFormTest.h"
#include "ui/dialogs/MinuteCombo.h"
#include "ui/dialogs/frmSchedule.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

/// A task as the grid shows it: name, address, file name, minute, and "True" when it is active.
using Task = QStringList;
/// Hours of the week by the indexes of their boxes.
using Hours = QList<int>;

/// The task editor, with what it shows as a task and its hours.
class Editor : public ui::frmSchedule
{
public:
    using frmSchedule::frmSchedule;

    QLineEdit *name() const { return findChild<QLineEdit *>(u"txtOpdrachtnaam"_s); }
    QLineEdit *address() const { return findChild<QLineEdit *>(u"txtDownload_adres"_s); }
    QLineEdit *fileName() const { return findChild<QLineEdit *>(u"txtFilenaam"_s); }
    ui::MinuteCombo *minutes() const { return findChild<ui::MinuteCombo *>(); }
    QCheckBox *active() const { return findChild<QCheckBox *>(u"CheckAktief"_s); }
    QCheckBox *box(int hour) const { return findChild<QCheckBox *>(u"Check1_%1"_s.arg(hour)); }

    Task task() const
    {
        return {name()->text(), address()->text(), fileName()->text(), minutes()->text(),
                active()->isChecked() ? u"True"_s : u"False"_s};
    }

    Hours hours() const
    {
        Hours hours;
        for (int hour = 0; hour < 168; ++hour)
            if (box(hour)->isChecked())
                hours << hour;
        return hours;
    }

    void fill(const Task &task, const Hours &hours) const
    {
        name()->setText(task[0]);
        address()->setText(task[1]);
        fileName()->setText(task[2]);
        minutes()->setText(task[3]);
        active()->setChecked(task[4] == u"True"_s);
        for (int hour = 0; hour < 168; ++hour)
            box(hour)->setChecked(hours.contains(hour));
    }

    void save() const { findChild<QPushButton *>(u"Opslaan"_s)->click(); }
    void cancel() const { findChild<QPushButton *>(u"Annuleren"_s)->click(); }
};

/// The task editor over a database of its own.
class TaskEditorTest : public MainFormTest
{
protected:
    /// Without a name it adds a task.
    void openEditor(const QString &name = {})
    {
        store::bNieuweOpdracht = name.isEmpty() ? Boolean::True : Boolean::False;
        store::sOpdrachtnaam = name;
        editor = std::make_unique<Editor>();
        editor->show();
        editor->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    }

    std::unique_ptr<Editor> editor;
};
