#include "ui/dialogs/frmSchedule.h"

#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/Host.h"
#include "store/TaskStore.h"
#include "ui/dialogs/LineField.h"
#include "ui/dialogs/MinuteCombo.h"
#include "ui/dialogs/WeekGrid.h"
#include "ui/main/ScrollPane.h"
#include "ui/main/Widgets.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>
#include <functional>

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
    fitToDisplay(*this, sizeHint());
}

void frmSchedule::makeControls()
{
    auto *frames = new QWidget;
    auto *inFrames = new QVBoxLayout(frames);
    inFrames->setContentsMargins({});
    inFrames->addWidget(makeTaskFrame());
    inFrames->addWidget(makeTimeFrame(), 1);
    auto *pane = new ScrollPane(frames);
    m_grid->keepDaysInSight(pane);
    auto *content = new QVBoxLayout(this);
    content->addWidget(pane, 1);
    content->addLayout(makeButtons());
}

QWidget *frmSchedule::makeTaskFrame()
{
    constexpr int visible = 60; // characters
    txtOpdrachtnaam = named<LineField>(u"txtOpdrachtnaam"_s, Joint::Blank, 20, visible);
    txtDownload_adres = named<LineField>(u"txtDownload_adres"_s, Joint::Nothing, 100, visible);
    txtFilenaam = named<LineField>(u"txtFilenaam"_s, Joint::Blank, 50, visible);
    CheckAktief = named<QCheckBox>(u"CheckAktief"_s);
    CheckAktief->setAccessibleName(u"Active"_s);

    auto *frame = new QGroupBox(u"Task data"_s);
    auto *content = new QFormLayout(frame);
    content->addRow(u"Taskname:"_s, txtOpdrachtnaam);
    content->addRow(u"Download address:"_s, txtDownload_adres);
    content->addRow(u"Filename:"_s, txtFilenaam);
    content->addRow(u"Active:"_s, CheckAktief);
    return frame;
}

QWidget *frmSchedule::makeTimeFrame()
{
    ComboMinuten = named<MinuteCombo>(u"ComboMinuten"_s);
    ComboMinuten->setMinimumContentsLength(2);
    ComboMinuten->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *minutes = new QFormLayout;
    minutes->addRow(u"Minutes:"_s, ComboMinuten);

    m_grid = new WeekGrid(u"Check1"_s);
    Check1 = m_grid->boxes();

    auto *frame = new QGroupBox(u"Download time"_s);
    auto *content = new QVBoxLayout;
    content->addLayout(minutes);
    content->addWidget(m_grid, 1);
    frame->setLayout(betweenYieldingMargins(content));
    return frame;
}

QLayout *frmSchedule::makeButtons()
{
    Opslaan = named<QPushButton>(u"Opslaan"_s, u"&Save"_s);
    Opslaan->setDefault(true);
    Annuleren = named<QPushButton>(u"Annuleren"_s, u"&Cancel"_s);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Opslaan);
    buttons->addWidget(Annuleren);
    return buttons;
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
    CheckAktief->setChecked(rsSchedule.value(u"Aktief").toBool());
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

// Only the name of a new task is tested: see "A rename into another's name" in docs/behaviour.md.
bool frmSchedule::writeTask()
{
    const QString name = txtOpdrachtnaam->text();
    const OpenRecordset row(rsSchedule, isNewTask()
                                            ? store::newTaskStatement(name)
                                            : store::editedTaskStatement(store::sOpdrachtnaam));
    if (isNewTask()) {
        if (row->recordCount() >= 1)
            return false;
        row->addNew();
    }
    row->setValue(u"Opdrachtnaam", name);
    row->setValue(u"Download_adres", txtDownload_adres->text());
    row->setValue(u"Filenaam", txtFilenaam->text());
    row->setValue(u"Aktief", CheckAktief->isChecked());
    row->setValue(u"minuten", ComboMinuten->text().toDouble());
    row->update();
    return true;
}

// Slots go by the name in the window. Those that a task had under another name before it was
// renamed stay where they are, and a new task finds those that a deleted one of its name has left:
// see "Slots that stay after a deletion" in docs/behaviour.md.
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
