#include "ui/dialogs/frmForceDownload.h"

#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/Host.h"
#include "store/TaskStore.h"
#include "ui/main/MainForm.h"
#include "ui/main/Widgets.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>

namespace ui {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using app::handleEvent;
using store::OpenRecordset;
using store::rsOpdrachten;

frmForceDownload::frmForceDownload(app::DownloadRecord &pending, QWidget *parent)
    : QDialog(parent)
    , m_pending(pending)
{
    setObjectName(u"frmForceDownload"_s);
    setWindowTitle(app::WindowTitle());
    makeControls();
    fillWithTaskNames();
    connectEvents();
}

void frmForceDownload::makeControls()
{
    constexpr int longestName = 20; // characters that the editor takes
    ComboOpdracht = named<QComboBox>(u"ComboOpdracht"_s);
    ComboOpdracht->setAccessibleName(u"Task"_s);
    ComboOpdracht->setMinimumContentsLength(longestName);
    CmdForceDownload = named<QPushButton>(u"CmdForceDownload"_s, u"Download Now"_s);
    CmdForceDownload->setDefault(true);
    CmdForceDownload->setEnabled(false);

    auto *Frame1 = named<QGroupBox>(u"Frame1"_s, u"Forced download"_s);
    auto *inFrame = new QVBoxLayout(Frame1); // side by side they are too wide for some displays
    inFrame->addWidget(ComboOpdracht);
    inFrame->addWidget(CmdForceDownload, 0, Qt::AlignRight);
    auto *content = new QVBoxLayout(this);
    content->addWidget(Frame1);
    content->setSizeConstraint(QLayout::SetFixedSize);
}

void frmForceDownload::fillWithTaskNames()
{
    const OpenRecordset tasks(*rsOpdrachten, store::tasksSource());
    for (; !tasks->atEnd(); tasks->moveNext())
        ComboOpdracht->addItem(tasks->value(u"Opdrachtnaam"_s).toText());
    ComboOpdracht->setCurrentIndex(-1);
}

void frmForceDownload::connectEvents()
{
    connect(ComboOpdracht, &QComboBox::currentIndexChanged, this,
            [this] { ComboOpdracht_Click(); });
    connect(CmdForceDownload, &QPushButton::clicked, this,
            [this] { handleEvent([this] { CmdForceDownload_Click(); }); });
}

void frmForceDownload::ComboOpdracht_Click()
{
    if (!ComboOpdracht->currentText().isEmpty())
        CmdForceDownload->setEnabled(true);
}

// DownloadFlag stays as it is: see "Forced only beside a pending one" in docs/behaviour.md.
void frmForceDownload::CmdForceDownload_Click()
{
    const OpenRecordset task(*rsOpdrachten,
                             store::chosenTaskStatement(ComboOpdracht->currentText()));
    m_pending.takeTask(task->value(u"Opdrachtnaam"_s).toText(),
                       task->value(u"Download_adres"_s).toText(),
                       task->value(u"Filenaam"_s).toText());
    m_pending.DownloadTime = platform::host().now() + 5s;
    ForcedDownload = platform::Boolean::True;
    accept();
}

} // namespace ui
