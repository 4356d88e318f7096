#include "ui/dialogs/MinuteCombo.h"
#include "ui/dialogs/WeekGrid.h"
#include "ui/dialogs/frmSchedule.h"
#include "ui/main/Named.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

// How the task editor's controls are made and laid out.
namespace ui {

using namespace Qt::StringLiterals;

static QLineEdit *makeText(const QString &name, int maxLength)
{
    auto *text = named<QLineEdit>(name);
    text->setMaxLength(maxLength);
    text->setMinimumWidth(60 * text->fontMetrics().averageCharWidth());
    return text;
}

void frmSchedule::makeControls()
{
    auto *frames = new QHBoxLayout;
    frames->addWidget(makeTaskFrame(), 1, Qt::AlignTop);
    frames->addWidget(makeTimeFrame());
    auto *content = new QVBoxLayout(this);
    content->addLayout(frames);
    content->addLayout(makeButtons());
}

QWidget *frmSchedule::makeTaskFrame()
{
    txtOpdrachtnaam = makeText(u"txtOpdrachtnaam"_s, 20);
    txtDownload_adres = makeText(u"txtDownload_adres"_s, 100);
    txtFilenaam = makeText(u"txtFilenaam"_s, 50);
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

    auto *grid = new WeekGrid(u"Check1"_s);
    Check1 = grid->boxes();

    auto *frame = new QGroupBox(u"Download time"_s);
    auto *content = new QVBoxLayout(frame);
    content->addLayout(minutes);
    content->addWidget(grid, 1);
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

} // namespace ui
