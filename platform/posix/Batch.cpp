#include "platform/Files.h"
#include "platform/NativeHost.h"
#include "platform/RuntimeError.h"

#include <QApplication>
#include <QFile>
#include <QProcess>

namespace platform {

using namespace Qt::StringLiterals;

static constexpr std::uint32_t batchWindowHandle = 1;

// Gives the concatenation its name. Returns why that is not possible, or an empty text.
static QString finish(QProcess &process, const QString &hidden, const QString &output)
{
    const bool made = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    QString reason = made ? QString() : QString::fromLocal8Bit(process.readAllStandardError());
    try {
        if (made)
            replaceFile(hidden, output);
    } catch (const RuntimeError &error) {
        reason = error.description();
    }
    if (!made && reason.isEmpty())
        reason = u"the process was ended"_s;
    QFile::remove(hidden); // nothing is left of it after a success
    return reason.simplified();
}

// The names reach the process as arguments, behind "--" and with their folder, so that none is
// taken for an option or by a shell.
int NativeHost::startBatch(const ConcatenationBatch &batch,
                           std::function<void(const QString &)> onFailure)
{
    auto *process = new QProcess(qApp);
    process->setStandardInputFile(QProcess::nullDevice());
    deleteLeftovers(batch.folder, leftoverNames);
    const QString hidden = newHiddenName(batch.folder);
    process->setStandardOutputFile(hidden);
    QObject::connect(process, &QProcess::finished, process, [=, this] {
        --m_runningBatches;
        process->deleteLater();
        const QString reason = finish(*process, hidden, batch.folder + batch.output);
        if (!reason.isEmpty())
            onFailure(reason);
    });
    process->start(u"cat"_s, {u"--"_s, batch.folder + batch.header, batch.folder + batch.audio});
    if (!process->waitForStarted()) {
        const QString reason = process->errorString();
        QFile::remove(hidden);
        delete process;
        throw RuntimeError(ErrorNumber::FileNotFound, reason);
    }
    ++m_runningBatches;
    return static_cast<int>(process->processId());
}

std::uint32_t NativeHost::findBatchWindow(BatchWindowKind kind) const
{
    const bool isThere = (m_runningBatches > 0) == (kind == BatchWindowKind::Running);
    return isThere ? batchWindowHandle : 0;
}

// There is no window to answer.
int NativeHost::closeBatchWindow(std::uint32_t)
{
    return 0;
}

} // namespace platform
