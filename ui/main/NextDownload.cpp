#include "app/ErrorReport.h"
#include "app/NextSlot.h"
#include "controls/PB/PB.h"
#include "platform/Host.h"
#include "store/ScheduleRow.h"
#include "store/TaskStore.h"
#include "ui/main/FigureLabel.h"
#include "ui/main/MainForm.h"
#include "ui/main/Widgets.h"

#include <QGroupBox>
#include <QMenu>

namespace ui {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::Boolean;

// A failed computation arms nothing, so it is tried again after this while.
static constexpr auto retryAfterFailure = 60s;

namespace {

// The scheduler's query as a series of slots. A row that cannot be read whole is logged and
// skipped whole, so that one task's name never meets another one's address.
class TaskSlotRows : public app::SlotRows
{
public:
    TaskSlotRows(store::Recordset &rows, const app::ErrorTrap &trap)
        : m_rows(rows)
        , m_row(rows)
        , m_trap(trap)
    {}

    void moveFirst() override { m_rows.moveFirst(); }
    void moveNext() override { m_rows.moveNext(); }
    bool atEnd() const override { return m_rows.atEnd(); }

    std::optional<app::WeekSlot> slot() override
    {
        std::optional<app::WeekSlot> slot;
        m_trap.step([&] { slot = readWhole(); });
        return slot;
    }

    void fill(app::DownloadRecord &record) const
    {
        record.takeTask(m_row.name(), m_row.address(), m_row.fileName());
    }

private:
    app::WeekSlot readWhole() const
    {
        if (!m_row.holdsTexts())
            throw platform::RuntimeError(platform::ErrorNumber::InvalidUseOfNull);
        return {m_row.day(), m_row.hour(), m_row.minute()};
    }

    store::Recordset &m_rows;
    store::ScheduleRow m_row;
    const app::ErrorTrap &m_trap;
};

} // namespace

void MainForm::ZoekVolgende()
{
    RecomputeLater->stop();
    const app::ErrorTrap trap;
    frameDownload->setTitle(u"Next Download"_s);
    pBar->hide();
    showStatus({});
    DownloadEntry.DownloadTime = {};
    mnuInstelling(Boolean::True);

    bool found = false;
    const bool searched = trap.step([&] { found = findNextDownload(); });
    if (found)
        showPending();
    else
        showNoTask();
    if (!searched)
        RecomputeLater->start(retryAfterFailure);
}

bool MainForm::findNextDownload()
{
    const app::ErrorTrap trap;
    const store::OpenRecordset rows(*store::rsOpdrachten, store::scheduleStatement());
    if (rows->recordCount() <= 0)
        return false;
    TaskSlotRows weekSlots(*rows, trap);
    const auto chosen = app::chooseSlot(weekSlots, [] { return platform::host().now(); });
    if (!chosen)
        return false;
    rows->setAbsolutePosition(chosen->row + 1);
    weekSlots.fill(DownloadEntry);
    DownloadEntry.DownloadTime = chosen->moment;
    return true;
}

void MainForm::showPending()
{
    QPalette palette = Label4->palette();
    palette.setColor(QPalette::WindowText, QColor(0x00, 0x80, 0x00));
    Label4->setPalette(palette);
    DownloadEntry.DownloadFlag = Boolean::True;
}

void MainForm::showNoTask()
{
    Label3->clear();
    QPalette palette = Label4->palette();
    palette.setColor(QPalette::WindowText, QColor(0xFF, 0x00, 0x00));
    Label4->setPalette(palette);
    Label4->setText(u"No tasks"_s);
    DownloadEntry.DownloadFlag = Boolean::False;
}

void MainForm::mnuInstelling(Boolean bVal)
{
    const bool enabled = bVal == Boolean::True;
    if (!enabled)
        mnuOpdrachten->close(); // an open menu would still take a click
    mnuOpdrachten->menuAction()->setEnabled(enabled);
    mnuOpties->setEnabled(enabled);
    if (m_openWindow)
        m_openWindow->setEnabled(enabled); // with the windows over it
}

} // namespace ui
