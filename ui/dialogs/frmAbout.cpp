#include "ui/dialogs/frmAbout.h"

#include "app/Module1.h"
#include "ui/main/Widgets.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace ui {

using namespace Qt::StringLiterals;

QIcon programIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128})
        icon.addFile(u":/icons/ostravelin-%1.png"_s.arg(size), QSize(size, size));
    return icon;
}

static QLabel *makeIcon()
{
    constexpr int size = 64; // device-independent pixels
    auto *picIcon = named<QLabel>(u"picIcon"_s);
    picIcon->setPixmap(programIcon().pixmap(QSize(size, size), picIcon->devicePixelRatio()));
    picIcon->setAccessibleName(u"Icon"_s);
    return picIcon;
}

static QLabel *makeTitle()
{
    auto *lblTitle = named<QLabel>(u"lblTitle"_s, app::programTitle());
    QFont font(u"Arial"_s, 24);
    font.setStyleHint(QFont::SansSerif);
    lblTitle->setFont(font);
    return lblTitle;
}

static QFrame *makeLine()
{
    auto *line = named<QFrame>(u"Line1"_s);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

static QLayout *makeTexts()
{
    auto *texts = new QVBoxLayout;
    texts->addWidget(makeTitle());
    texts->addWidget(named<QLabel>(u"lblVersion"_s, u"Versie "_s + app::versionText()));
    texts->addWidget(named<QLabel>(u"lblDescription"_s));
    return texts;
}

frmAbout::frmAbout(QWidget *parent)
    : QDialog(parent)
{
    setObjectName(u"frmAbout"_s);
    setWindowTitle(app::WindowTitle());

    auto *upper = new QHBoxLayout;
    upper->addWidget(makeIcon(), 0, Qt::AlignTop);
    upper->addLayout(makeTexts());

    auto *cmdOK = named<QPushButton>(u"cmdOK"_s, u"OK"_s);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    auto *lower = new QHBoxLayout;
    lower->addWidget(named<QLabel>(u"lblDisclaimer"_s), 1);
    lower->addWidget(cmdOK);

    auto *content = new QVBoxLayout(this);
    content->setSizeConstraint(QLayout::SetFixedSize);
    content->addLayout(upper);
    content->addWidget(makeLine());
    content->addWidget(makeLine());
    content->addLayout(lower);
}

} // namespace ui
