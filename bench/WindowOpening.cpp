#include "app/DownloadRecord.h"
#include "bench/Measure.h"
#include "bench/Schedule.h"
#include "platform/NativeHost.h"
#include "ui/dialogs/frmAbout.h"
#include "ui/dialogs/frmForceDownload.h"
#include "ui/dialogs/frmOpdrachten.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/dialogs/frmSchedule.h"

#include <QApplication>
#include <QTemporaryDir>

#include <functional>
#include <map>
#include <memory>

// window_opening_bench: how long each window takes from nothing to its first painting, beside an
// empty dialog, with 50 tasks that have all of the week's slots. They open in turn.

using namespace Qt::StringLiterals;

static constexpr int rounds = 31;

class PaintWatch : public QObject
{
public:
    bool painted = false;

    bool eventFilter(QObject *, QEvent *event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

static double millisecondsToOpen(const std::function<std::unique_ptr<QDialog>()> &make)
{
    return milliseconds([&] {
        const auto dialog = make();
        PaintWatch watch;
        dialog->installEventFilter(&watch);
        dialog->show();
        while (!watch.painted)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    });
}

template <typename Dialog, typename... Arguments>
static std::function<std::unique_ptr<QDialog>()> maker(Arguments &...arguments)
{
    return [&] { return std::make_unique<Dialog>(arguments...); };
}

int main(int argc, char **argv)
{
    platform::NativeHost host;
    platform::installHost(host);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QTemporaryDir folder;
    openFullSchedule(folder.path(), 50);
    store::createTaskRecordset();
    store::sOpdrachtnaam = u"Hourly news 7"_s;
    app::DownloadRecord pending;
    const ui::frmOpdrachten::Editor noEditor;

    const std::pair<const char *, std::function<std::unique_ptr<QDialog>()>> windows[] = {
        {"empty dialog", maker<QDialog>()},
        {"task list", maker<ui::frmOpdrachten>(noEditor)},
        {"task editor", maker<ui::frmSchedule>()},
        {"forced download", maker<ui::frmForceDownload>(pending)},
        {"options", maker<ui::frmOptions>()},
        {"about", maker<ui::frmAbout>()},
    };
    std::map<const char *, std::vector<double>> times;
    for (int round = 0; round < rounds; ++round)
        for (const auto &[name, make] : windows)
            times[name].push_back(millisecondsToOpen(make));
    for (const auto &window : windows) {
        const auto &ofWindow = times[window.first];
        print(window.first, "ms", spreadOf(ofWindow));
        std::printf("%20sthe first time %.1f ms\n", "", ofWindow.front());
    }
    return EXIT_SUCCESS;
}
