#include "platform/FileSystem.h"
#include "platform/Files.h"
#include "platform/NativeHost.h"
#include "platform/RuntimeError.h"
#include "platform/windows/System.h"

#include <QApplication>
#include <QFile>
#include <QProcess>

#include <string>
#include <windows.h>

namespace platform {

using namespace Qt::StringLiterals;

// Stands for a window where none shows. No window has it.
static constexpr std::uint32_t batchProcessHandle = 1;

static QString commandInterpreter()
{
    return windowsDirectory() + u"\\System32\\cmd.exe"_s;
}

// A run of a batch writes its output in the place of the old one, which waits under a hidden name
// until the new one is whole.
struct Run
{
    QString sources;
    QString output;
    QString oldOutput;
    qint64 wholeSize = 0;
    bool replacesAudio = false;
};

// -1 when a source is missing: the command interpreter joins what is there, and calls that a
// success.
static qint64 wholeSizeOf(const ConcatenationBatch &batch)
{
    const QString header = batch.folder + batch.header;
    const QString audio = batch.folder + batch.audio;
    return fileExists(header) && fileExists(audio) ? fileSize(header) + fileSize(audio) : -1;
}

static Run preparedRun(const ConcatenationBatch &batch)
{
    deleteLeftovers(batch.folder, leftoverNames);
    Run run{.sources = batch.header + u" and "_s + batch.audio,
            .output = batch.folder + batch.output,
            .oldOutput = newHiddenName(batch.folder),
            .wholeSize = wholeSizeOf(batch),
            .replacesAudio = isSameFile(batch.folder + batch.audio, batch.folder + batch.output)};
    if (fileExists(run.output))
        system::renameOver(run.output, run.oldOutput);
    return run;
}

static void putBackOldOutput(const Run &run)
{
    QFile::remove(run.output);
    if (fileExists(run.oldOutput))
        system::renameOver(run.oldOutput, run.output);
}

// An output that takes the audio's own place cannot come from the batch: the copy would empty its
// source first.
static QString commandOf(const ConcatenationBatch &batch, const Run &run)
{
    if (!run.replacesAudio)
        return batch.batchFile;
    return u"copy /b "_s + batch.header + u" + "_s + run.oldOutput.mid(batch.folder.size()) + u' ' +
           batch.output;
}

// The console is hidden and has the title by which the batch is known. It reads the batch in the
// code page that the batch is written in.
static void start(QProcess &process, const QString &folder, const QString &command)
{
    process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProgram(commandInterpreter());
    process.setNativeArguments(u"/d /c chcp %1 > nul & %2"_s.arg(GetACP()).arg(command));
    process.setCreateProcessArgumentsModifier(
        [title = commandInterpreter().toStdWString()](
            QProcess::CreateProcessArguments *arguments) mutable {
            arguments->flags &= ~static_cast<unsigned long>(CREATE_NO_WINDOW);
            arguments->flags |= CREATE_NEW_CONSOLE;
            arguments->startupInfo->lpTitle = title.data();
            arguments->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
            arguments->startupInfo->wShowWindow = SW_HIDE;
        });
    process.start();
}

static bool isWhole(const QProcess &process, const Run &run)
{
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 &&
           fileExists(run.output) && fileSize(run.output) == run.wholeSize;
}

static QString reasonOf(QProcess &process, const Run &run)
{
    if (process.exitStatus() != QProcess::NormalExit)
        return u"the process was ended"_s;
    const QString told = QString::fromLocal8Bit(process.readAllStandardError());
    return (u"the command interpreter did not join "_s + run.sources + u' ' + told).simplified();
}

// Returns why the new output is not whole and on the disk, or an empty text.
static QString faultOf(QProcess &process, const Run &run)
{
    if (!isWhole(process, run))
        return reasonOf(process, run);
    try {
        system::flushFile(run.output);
    } catch (const RuntimeError &error) {
        return error.description();
    }
    return {};
}

// Drops the old output once the new one is whole. Returns why that is not so, or an empty text.
static QString finish(QProcess &process, const Run &run)
{
    const QString fault = faultOf(process, run);
    if (fault.isEmpty()) {
        QFile::remove(run.oldOutput);
        return {};
    }
    try {
        putBackOldOutput(run);
    } catch (const RuntimeError &error) {
        return error.description() + u": "_s + run.oldOutput;
    }
    return fault;
}

int NativeHost::startBatch(const ConcatenationBatch &batch,
                           std::function<void(const QString &)> onFailure)
{
    const Run run = preparedRun(batch);
    auto *process = new QProcess(qApp);
    QObject::connect(process, &QProcess::finished, process, [=, this] {
        --m_runningBatches;
        process->deleteLater();
        const QString reason = finish(*process, run);
        if (!reason.isEmpty())
            onFailure(reason);
    });
    // The end of the program does not cut an output off.
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, process,
                     [process] { process->waitForFinished(); });
    start(*process, batch.folder, commandOf(batch, run));
    if (!process->waitForStarted()) {
        const QString reason = process->errorString();
        delete process;
        putBackOldOutput(run);
        throw RuntimeError(ErrorNumber::FileNotFound, reason);
    }
    ++m_runningBatches;
    return static_cast<int>(process->processId());
}

static QString titleOf(BatchWindowKind kind)
{
    return kind == BatchWindowKind::Running ? commandInterpreter() : u"Beëindigd - tijdelijk"_s;
}

// A console does not always show its title, and never shows that it has finished when it closes
// itself, so that the process counts as well.
std::uint32_t NativeHost::findBatchWindow(BatchWindowKind kind) const
{
    if (const HWND window = FindWindowA(nullptr, titleOf(kind).toLocal8Bit()))
        return HandleToULong(window);
    const bool isThere = (m_runningBatches > 0) == (kind == BatchWindowKind::Running);
    return isThere ? batchProcessHandle : 0;
}

int NativeHost::closeBatchWindow(std::uint32_t window)
{
    if (window == batchProcessHandle)
        return 0;
    const std::int32_t zero = 0;
    const auto handle = static_cast<HWND>(ULongToHandle(window));
    return static_cast<int>(SendMessageA(handle, WM_CLOSE, 0, reinterpret_cast<LPARAM>(&zero)));
}

} // namespace platform
