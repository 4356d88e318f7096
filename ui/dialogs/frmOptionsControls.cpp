#include "ui/dialogs/frmOptions.h"
#include "ui/main/Named.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>

// How the options window's controls are made and laid out.
namespace ui {

using namespace Qt::StringLiterals;

static QLineEdit *makeFolderText(const QString &name)
{
    auto *text = named<QLineEdit>(name);
    text->setMinimumWidth(40 * text->fontMetrics().averageCharWidth());
    return text;
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
    // Selecting a tab changes nothing, on purpose: the first page stays in front.

    auto *content = new QVBoxLayout(this);
    content->addWidget(tbsOptions);
    content->addWidget(pages, 1);
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

} // namespace ui
