#include "ui/dialogs/frmOptions.h"

#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/Host.h"
#include "platform/Text.h"
#include "ui/dialogs/Module2.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include <cmath>

namespace ui {

using namespace Qt::StringLiterals;
using app::handleEvent;
using app::readSetting;
using platform::MessageIcon;
using platform::untilNul;

frmOptions::frmOptions(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(u"frmOptions"_s);
    makeControls();
    connectEvents();
    Form_Load();
}

void frmOptions::connectEvents()
{
    const auto onClick = [this](QPushButton *button, void (frmOptions::*handler)()) {
        connect(button, &QPushButton::clicked, this,
                [this, handler] { handleEvent([this, handler] { (this->*handler)(); }); });
    };
    onClick(Bestemmings_dir, &frmOptions::Bestemmings_dir_Click);
    onClick(SPC_dir, &frmOptions::SPC_dir_Click);
    onClick(cmdApply, &frmOptions::cmdApply_Click);
    onClick(cmdOK, &frmOptions::cmdOK_Click);
    onClick(cmdCancel, &frmOptions::cmdCancel_Click);
    connect(Check1, &QCheckBox::toggled, SPC_dir, &QPushButton::setEnabled);
}

// A text that is no number counts as 0.
static bool isOne(const QString &text)
{
    return std::nearbyint(text.toDouble()) == 1;
}

void frmOptions::Form_Load()
{
    setWindowTitle(app::WindowTitle());
    const QString destination = readSetting(u"Bestandsmappen"_s, u"Bestemmingsmap"_s);
    if (destination == u"?"_s) {
        setSavable(false);
        return;
    }
    Text2->setText(destination);
    Text3->setText(readSetting(u"Bestandsmappen"_s, u"SPCmap"_s));
    Check1->setChecked(isOne(readSetting(u"Opties"_s, u"SPC"_s)));
    Check2->setChecked(isOne(readSetting(u"Opties"_s, u"preXP"_s)));
}

void frmOptions::setSavable(bool savable)
{
    cmdOK->setEnabled(savable);
    cmdApply->setEnabled(savable);
}

static void tell(const QString &text, MessageIcon icon)
{
    platform::host().showMessage(app::WindowTitle(), text, icon);
}

// The folder that the user chose, with its NUL, or "" after the user was told that there is none.
static QString chosenFolder(QWidget *owner)
{
    QString path = BrowseForFolder(owner, u"Choose a folder"_s);
    if (path.isEmpty())
        tell(u"Folder setting aborted!"_s, MessageIcon::Information);
    return path;
}

// With anything but NUL: "?" counts, and so do the blanks that the settings start as.
static bool startsWithACharacter(const app::FixedText<200> &setting)
{
    return setting.text().front().unicode() >= 1;
}

// Until the settings were loaded once, they are the blanks that they start as.
static bool isFirstRun()
{
    return app::sBestemmingsmap.text().front() == u' ';
}

// The destination in force stays as it is until Submit or Save.
void frmOptions::Bestemmings_dir_Click()
{
    const QString path = chosenFolder(this);
    if (path.isEmpty())
        return;
    Text2->setText(untilNul(path));
    if (startsWithACharacter(app::sBestemmingsmap))
        setSavable(true);
}

// Unlike the destination, the SPC folder is in force at once, with its NUL. On a first run it does
// not open the gate: that takes a destination.
void frmOptions::SPC_dir_Click()
{
    const QString path = chosenFolder(this);
    if (path.isEmpty())
        return;
    Text3->setText(untilNul(path));
    app::sSPCmap = path;
    if (!isFirstRun() && startsWithACharacter(app::sBestemmingsmap) &&
        startsWithACharacter(app::sSPCmap))
        setSavable(true);
}

static void writeSetting(const QString &section, const QString &key, QString value)
{
    app::WriteIni(app::settingsFileName(), section, key, value);
}

static QString stateText(const QCheckBox *box)
{
    return box->isChecked() ? u"1"_s : u"0"_s;
}

void frmOptions::cmdApply_Click()
{
    if (Text3->text().isEmpty())
        Check1->setChecked(false); // no SPC header without an SPC folder
    writeSetting(u"Bestandsmappen"_s, u"Bestemmingsmap"_s, Text2->text());
    writeSetting(u"Bestandsmappen"_s, u"SPCmap"_s, Text3->text());
    writeSetting(u"Opties"_s, u"SPC"_s, stateText(Check1));
    writeSetting(u"Opties"_s, u"preXP"_s, stateText(Check2));
    app::LoadSettings();
}

void frmOptions::cmdOK_Click()
{
    cmdApply_Click();
    accept();
}

void frmOptions::cmdCancel_Click()
{
    constexpr qsizetype shortestDestination = 3; // a bare drive root
    if (Text2->text().size() < shortestDestination) {
        tell(u"You have not specified a valid destination, Ostravelin will be closed!"_s,
             MessageIcon::Critical);
        platform::host().endProgram(0);
        return;
    }
    QDialog::reject();
}

// What Esc and the window's frame do.
void frmOptions::reject()
{
    handleEvent([this] { cmdCancel_Click(); });
}

} // namespace ui
