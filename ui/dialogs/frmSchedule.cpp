#include "ui/dialogs/frmSchedule.h"

#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "store/OpenRecordset.h"
#include "store/Statements.h"
#include "store/TaskStore.h"
#include "ui/dialogs/FreeMinutes.h"
#include "ui/dialogs/MinuteCombo.h"
#include "ui/dialogs/WeekGrid.h"

#include <QCheckBox>
#include <QEvent>
#include <QLineEdit>
#include <QPushButton>

namespace ui {

using namespace Qt::StringLiterals;
using platform::Boolean;
using store::OpenRecordset;

frmSchedule::frmSchedule(QWidget *parent)
    : QDialog(parent)
    , rsSchedule(store::dbConnection)
{
    setObjectName(u"frmSchedule"_s);
    makeControls();
    connectEvents();
    Form_Load();
}

void frmSchedule::connectEvents()
{
    connect(Opslaan, &QPushButton::clicked, this,
            [this] { app::handleEvent([this] { Opslaan_Click(); }); });
    connect(Annuleren, &QPushButton::clicked, this, &QDialog::reject);
}

bool frmSchedule::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        txtOpdrachtnaam->setFocus();
    return QDialog::event(event);
}

void frmSchedule::Form_Load()
{
    setWindowTitle(app::WindowTitle());
    offerFreeMinutes();
    if (store::bNieuweOpdracht == Boolean::False)
        loadTask();
}

// Whether a task is another one than the edited task is told by its name, here with regard to case.
void frmSchedule::offerFreeMinutes()
{
    std::vector<int> taken;
    const OpenRecordset tasks(rsSchedule, store::tasksByMinuteStatement());
    for (; !tasks->atEnd(); tasks->moveNext())
        if (tasks->value(u"Opdrachtnaam") != store::Value(store::sOpdrachtnaam))
            taken.push_back(tasks->value(u"minuten").toInteger());
    ComboMinuten->addItems(freeMinutes(taken));
    ComboMinuten->setCurrentIndex(-1);
}

void frmSchedule::loadTask()
{
    const OpenRecordset rows(rsSchedule, store::taskWithSlotsStatement(store::sOpdrachtnaam));
    showTask();
    for (; !rows->atEnd(); rows->moveNext())
        tickSlot();
}

void frmSchedule::showTask()
{
    const auto show = [this](QLineEdit *text, QStringView field) {
        text->setText(rsSchedule.value(field).toText());
        text->setCursorPosition(0); // of a long address the host is seen
    };
    show(txtOpdrachtnaam, u"Opdrachtnaam");
    show(txtDownload_adres, u"Download_adres");
    show(txtFilenaam, u"Filenaam");
    CheckAktief->setChecked(rsSchedule.value(u"Aktief").toBoolean() == Boolean::True);
    ComboMinuten->setText(QString::number(rsSchedule.value(u"minuten").toInteger()));
}

// A row without a day, as a task without slots has one, or with a day that no week has ticks
// nothing. An hour that no day has counts on into the days around, as far as there are boxes.
void frmSchedule::tickSlot()
{
    const store::Value day = rsSchedule.value(u"Dagen");
    if (day.isEmpty() || day.toInteger() < 1 || day.toInteger() > WeekGrid::days)
        return;
    const int index = WeekGrid::boxIndex(day.toInteger(), rsSchedule.value(u"Uren").toInteger());
    if (index < 0 || index >= WeekGrid::boxCount)
        throw platform::RuntimeError(platform::ErrorNumber::InvalidProcedureCall);
    Check1[index]->setChecked(true);
}

} // namespace ui
