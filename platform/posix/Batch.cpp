#include "platform/Files.h"
#include "platform/NativeHost.h"
#include "platform/RuntimeError.h"

#include <QApplication>
#include <QFile>
#include <QProcess>

#include <memory>

namespace platform {

using namespace Qt::StringLiterals;

static constexpr std::uint32_t batchWindowHandle = 1;

static QString hiddenNameFor(const ConcatenationBatch &batch)
{
    return batch.folder + u".ostravelin-batch.part"_s;
}

// Gives the concatenation its name. Returns why that is not possible, or an empty text.
static QString finish(QProcess &process, const ConcatenationBatch &batch)
{
    const bool made = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    QString reason = made ? QString() : QString::fromLocal8Bit(process.readAllStandardError());
    try {
        if (made)
            replaceFile(hiddenNameFor(batch), batch.folder + batch.output);
    } catch (const RuntimeError &error) {
        reason = error.description();
    }
    if (!made && reason.isEmpty())
        reason = u"the process was ended"_s;
    QFile::remove(hiddenNameFor(batch)); // nothing is left of it after a success
    return reason.simplified();
}

// The names reach the process as arguments, behind "--" and with their folder, so that none is
// taken for an option or by a shell. The process of a program that was killed may still be writing
// under the hidden name, so the new one gets a file of its own.
int NativeHost::startBatch(const ConcatenationBatch &batch,
                           std::function<void(const QString &)> onFailure)
{
    auto *process = new QProcess(qApp);
    process->setStandardInputFile(QProcess::nullDevice());
    QFile::remove(hiddenNameFor(batch));
    process->setStandardOutputFile(hiddenNameFor(batch));
    QObject::connect(process, &QProcess::finished, process, [=, this] {
        m_batchRuns = false;
        process->deleteLater();
        const QString reason = finish(*process, batch);
        if (!reason.isEmpty())
            onFailure(reason);
    });
    process->start(u"cat"_s, {u"--"_s, batch.folder + batch.header, batch.folder + batch.audio});
    if (!process->waitForStarted()) {
        const QString reason = process->errorString();
        delete process;
        throw RuntimeError(ErrorNumber::FileNotFound, reason);
    }
    m_batchRuns = true;
    return static_cast<int>(process->processId());
}

std::uint32_t NativeHost::findBatchWindow(BatchWindowKind kind) const
{
    const bool isThere = m_batchRuns == (kind == BatchWindowKind::Running);
    return isThere ? batchWindowHandle : 0;
}

// There is no window to answer.
int NativeHost::closeBatchWindow(std::uint32_t)
{
    return 0;
}

} // namespace platform
