#include "app/Module1.h"
#include "platform/Host.h"
#include "store/OpenRecordset.h"
#include "store/Statements.h"
#include "store/TaskStore.h"
#include "store/Transaction.h"
#include "ui/dialogs/MinuteCombo.h"
#include "ui/dialogs/WeekGrid.h"
#include "ui/dialogs/frmSchedule.h"

#include <QCheckBox>
#include <QLineEdit>

#include <algorithm>
#include <functional>

// How the task editor checks and saves the task.
namespace ui {

using namespace Qt::StringLiterals;
using platform::Boolean;
using store::OpenRecordset;

static bool isNewTask()
{
    return store::bNieuweOpdracht == Boolean::True;
}

static void tell(const QString &mistake)
{
    platform::host().showMessage(u"Ostravelin "_s + app::versionText(), mistake,
                                 platform::MessageIcon::Critical);
}

void frmSchedule::Opslaan_Click()
{
    if (const QString mistake = inputMistake(); !mistake.isEmpty()) {
        tell(mistake);
        return;
    }
    if (!save()) {
        tell(u"This taskname already exists, please choose another!!!"_s);
        return;
    }
    store::sOpdrachtnaam = txtOpdrachtnaam->text();
    accept();
}

// The first one, or nothing. Blanks are as good as any text.
QString frmSchedule::inputMistake() const
{
    if (txtOpdrachtnaam->text().isEmpty())
        return u"Your forgot to fill in the task name!!!!"_s;
    if (txtDownload_adres->text().isEmpty())
        return u"Your forgot to fill in the download address!!!"_s;
    if (txtFilenaam->text().isEmpty())
        return u"Your forgot to fill in the file name!!!"_s;
    if (ComboMinuten->text().isEmpty())
        return u"Your forgot to fill in the minutes!!!"_s;
    if (std::none_of(Check1.cbegin(), Check1.cend(), std::mem_fn(&QCheckBox::isChecked)))
        return u"There must be at least 1 download hour!!!"_s;
    return {};
}

// Stores the task whole or, when anything fails on the way, not at all. Returns false when the new
// task's name is taken.
bool frmSchedule::save()
{
    store::Transaction transaction(store::dbConnection);
    if (!writeTask())
        return false;
    writeSlots();
    transaction.commit();
    return true;
}

// Only the name of a new task is tested: a renamed one may take the name of another task, which is
// kept so on purpose.
bool frmSchedule::writeTask()
{
    const QString name = txtOpdrachtnaam->text();
    const OpenRecordset row(rsSchedule,
                            store::taskStatement(isNewTask() ? name : store::sOpdrachtnaam));
    if (isNewTask()) {
        if (row->recordCount() >= 1)
            return false;
        row->addNew();
    }
    row->setValue(u"Opdrachtnaam", name);
    row->setValue(u"Download_adres", txtDownload_adres->text());
    row->setValue(u"Filenaam", txtFilenaam->text());
    row->setValue(u"Aktief", platform::toBoolean(CheckAktief->isChecked()));
    row->setValue(u"minuten", ComboMinuten->text().toDouble());
    row->update();
    return true;
}

// Slots go by the name in the window. Those that a task had under another name before it was
// renamed stay where they are, and a new task finds those that a deleted one of its name has left:
// both are kept so on purpose.
void frmSchedule::writeSlots()
{
    const QString name = txtOpdrachtnaam->text();
    if (!isNewTask())
        store::dbConnection.execute(store::deleteSlotsStatement(name));
    const OpenRecordset rows(rsSchedule, store::slotsSource());
    for (int index = 0; index < WeekGrid::boxCount; ++index) {
        if (!Check1[index]->isChecked())
            continue;
        rows->addNew();
        rows->setValue(u"Opdrachtnaam", name);
        rows->setValue(u"Dagen", WeekGrid::dayOf(index));
        rows->setValue(u"Uren", WeekGrid::hourOf(index));
        rows->update();
    }
}

} // namespace ui
