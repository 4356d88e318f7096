#include "ui/dialogs/frmOptions.h"

#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/Host.h"
#include "platform/Text.h"
#include "ui/dialogs/LineField.h"
#include "ui/main/ScrollPane.h"
#include "ui/main/Widgets.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTabBar>

#include <cmath>

namespace ui {

using namespace Qt::StringLiterals;
using app::handleEvent;
using app::readSetting;
using app::writeSetting;
using platform::MessageIcon;
using platform::untilNul;

// The characters of a path that a settings file gives back, and its end mark.
static constexpr int pathBufferSize = 255;

QString BrowseForFolder(QWidget *hwndOwner, const QString &title)
{
    const QString path = platform::host().chooseFolder(hwndOwner, title);
    if (path.isEmpty() || path.size() >= pathBufferSize)
        return {};
    return path + QChar::Null;
}

frmOptions::frmOptions(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(u"frmOptions"_s);
    makeControls();
    connectEvents();
    Form_Load();
    fitToDisplay(*this, sizeHint());
}

// As many characters as the settings file gives back.
static LineField *makeFolderText(const QString &name)
{
    constexpr int visible = 40; // characters
    return named<LineField>(name, Joint::Blank, pathBufferSize - 1, visible);
}

static QPushButton *makeFolderButton(const QString &name, const QString &meaning)
{
    auto *button = named<QPushButton>(name, u"Browse..."_s);
    button->setAccessibleName(meaning);
    button->setAutoDefault(false); // Enter after a choice presses Save
    return button;
}

// A label names its control to screen readers as well.
static QLabel *makeLabel(const QString &name, const QString &caption, QWidget *control)
{
    auto *label = named<QLabel>(name, caption);
    label->setBuddy(control);
    control->setAccessibleName(caption.chopped(1)); // without the colon
    return label;
}

static QWidget *makeSamplePage(int number)
{
    auto *frame = named<QGroupBox>(u"fraSample%1"_s.arg(number), u"Sample %1"_s.arg(number));
    auto *page = named<QWidget>(u"picOptions"_s);
    auto *content = new QVBoxLayout(page);
    content->addWidget(frame);
    return page;
}

void frmOptions::makeControls()
{
    auto *tbsOptions = named<QTabBar>(u"tbsOptions"_s);
    tbsOptions->setAccessibleName(u"Pages"_s);
    tbsOptions->setExpanding(false);
    auto *pages = new QStackedWidget;
    tbsOptions->addTab(u"Settings"_s);
    pages->addWidget(makeFolderPage());
    for (int number = 2; number <= 4; ++number) {
        tbsOptions->addTab(u"Sample %1"_s.arg(number));
        pages->addWidget(makeSamplePage(number));
    }
    // Selecting a tab changes nothing: see "Tabs that change nothing" in docs/behaviour.md.

    auto *content = new QVBoxLayout(this);
    content->addWidget(tbsOptions);
    content->addWidget(new ScrollPane(pages), 1);
    content->addLayout(makeButtons());
    orderTabs();
    Text2->setFocus();
}

QWidget *frmOptions::makeFolderPage()
{
    auto *page = named<QWidget>(u"picOptions"_s);
    auto *content = new QVBoxLayout(page);
    content->setContentsMargins({});
    content->addWidget(makeDestinationFrame());
    content->addWidget(makeSpcFrame());
    content->addStretch();
    return page;
}

QWidget *frmOptions::makeDestinationFrame()
{
    Text2 = makeFolderText(u"Text2"_s);
    Bestemmings_dir = makeFolderButton(u"Bestemmings_dir"_s, u"Choose the destination folder"_s);

    auto *Frame1 = named<QGroupBox>(u"Frame1"_s);
    auto *content = new QGridLayout(Frame1);
    content->addWidget(makeLabel(u"Label2"_s, u"Destination folder:"_s, Text2), 0, 0, 1, 2);
    content->addWidget(Text2, 1, 0);
    content->addWidget(Bestemmings_dir, 1, 1);
    return Frame1;
}

QWidget *frmOptions::makeSpcFrame()
{
    Text3 = makeFolderText(u"Text3"_s);
    SPC_dir = makeFolderButton(u"SPC_dir"_s, u"Choose the SPC folder"_s);
    SPC_dir->setEnabled(false);
    Check1 = named<QCheckBox>(u"Check1"_s);
    Check2 = named<QCheckBox>(u"Check2"_s);

    auto *switches = new QGridLayout;
    switches->addWidget(makeLabel(u"Label7"_s, u"SPC header:"_s, Check1), 0, 0);
    switches->addWidget(Check1, 0, 1);
    switches->addWidget(makeLabel(u"Label8"_s, u"Pre-Windows XP:"_s, Check2), 1, 0);
    switches->addWidget(Check2, 1, 1);
    switches->setColumnStretch(1, 1);

    auto *Frame2 = named<QGroupBox>(u"Frame2"_s);
    auto *content = new QGridLayout(Frame2);
    content->addWidget(makeLabel(u"Label3"_s, u"SPC folder:"_s, Text3), 0, 0, 1, 2);
    content->addWidget(Text3, 1, 0);
    content->addWidget(SPC_dir, 1, 1);
    content->addLayout(switches, 2, 0, 1, 2);
    return Frame2;
}

QLayout *frmOptions::makeButtons()
{
    cmdOK = named<QPushButton>(u"cmdOK"_s, u"&Save"_s);
    cmdOK->setDefault(true);
    cmdCancel = named<QPushButton>(u"cmdCancel"_s, u"&Cancel"_s);
    cmdApply = named<QPushButton>(u"cmdApply"_s, u"&Submit"_s);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdApply);
    return buttons;
}

void frmOptions::orderTabs()
{
    QWidget *previous = findChild<QTabBar *>();
    for (QWidget *next : std::initializer_list<QWidget *>{
             Text2, Bestemmings_dir, Text3, SPC_dir, Check1, Check2, cmdOK, cmdCancel, cmdApply}) {
        QWidget::setTabOrder(previous, next);
        previous = next;
    }
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

// The switch goes by the number at the start of the text, rounded to a whole one, so that a note
// behind it does no harm. A text that starts with none counts as 0, and so does a number that has
// no room in 16 bits: an error would shut the user out from where it can be mended.
static bool isOne(const QString &text)
{
    static const QRegularExpression number(u"^ *[+-]?(\\d+\\.?\\d*|\\.\\d+)(e[+-]?\\d+)?"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    return std::nearbyint(number.match(text).captured().toDouble()) == 1;
}

void frmOptions::Form_Load()
{
    setWindowTitle(app::WindowTitle());
    if (!app::isConfigured()) {
        setSavable(false);
        return;
    }
    Text2->setText(readSetting(app::destinationKey));
    Text3->setText(readSetting(app::spcFolderKey));
    Check1->setChecked(isOne(readSetting(app::spcHeaderKey)));
    Check2->setChecked(isOne(readSetting(app::preXpKey)));
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

// The folder that the user chose, with its NUL, or "" after the user was told why there is none.
static QString chosenFolder(QWidget *owner)
{
    QString path = BrowseForFolder(owner, u"Choose a folder"_s);
    if (path.isEmpty()) {
        tell(u"Folder setting aborted!"_s, MessageIcon::Information);
    } else if (platform::host().isOpenedByDesktop(untilNul(path))) {
        tell(
            u"Files cannot be kept in this folder: the desktop has opened it over the network, and "
            "may lose it while nobody looks. Choose a folder of this computer, or one that the "
            "system itself has mounted."_s,
            MessageIcon::Critical);
        path.clear();
    }
    return path;
}

// With anything but NUL: "?" counts, and so do the blanks that the settings start as.
static bool startsWithACharacter(const app::FolderSetting &setting)
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

static QString stateText(const QCheckBox *box)
{
    return box->isChecked() ? u"1"_s : u"0"_s;
}

void frmOptions::cmdApply_Click()
{
    if (Text3->text().isEmpty())
        Check1->setChecked(false); // no SPC header without an SPC folder
    writeSetting(app::destinationKey, Text2->text());
    writeSetting(app::spcFolderKey, Text3->text());
    writeSetting(app::spcHeaderKey, stateText(Check1));
    writeSetting(app::preXpKey, stateText(Check2));
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
