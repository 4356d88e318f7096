#include "app/ErrorTrap.h"
#include "app/Module1.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "ui/main/MainForm.h"
#include "ui/main/SpcHeader.h"
#include "ui/main/TextFileBox.h"

#include <QLocale>

namespace ui {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using app::DestinationFolder;

const QString spcHeaderFile = u"tijdelijk.txt"_s;
static const QString spcBatchFile = u"tijdelijk.bat"_s;

static QString locallyWrittenSeconds(const QString &audioFile)
{
    const QString decimalPoint = QLocale::system().decimalPoint();
    return secondsText(platform::fileSize(audioFile), decimalPoint.front());
}

// As many NUL characters as a text file of that size lacks for a whole header.
static QString padding(qint64 fileSize)
{
    if (fileSize > spcHeaderSize)
        throw platform::RuntimeError(platform::ErrorNumber::InvalidProcedureCall);
    return QString(spcHeaderSize - fileSize, QChar::Null);
}

void MainForm::WriteSpcHeader()
{
    const app::ErrorTrap trap;
    showStatus(u"SPC header wordt toegevoegd..."_s);
    QString seconds;
    trap.step(
        [&] { seconds = locallyWrittenSeconds(DestinationFolder() + DownloadEntry.Filenaam); });
    RichTextBox1->text = spcHeaderText(DownloadEntry.spcFilenaam, seconds);
    const auto saveHeader = [this] { RichTextBox1->saveFile(DestinationFolder() + spcHeaderFile); };
    trap.step(saveHeader);
    trap.step([this] {
        RichTextBox1->text += padding(platform::fileSize(DestinationFolder() + spcHeaderFile));
    });
    trap.step(saveHeader); // unpadded when it was too long
    RichTextBox1->text = u"copy /b "_s + spcHeaderFile + u" + "_s + DownloadEntry.Filenaam + u' ' +
                         DownloadEntry.spcFilenaam;
    trap.step([this] { RichTextBox1->saveFile(DestinationFolder() + spcBatchFile); });
    trap.step([] { platform::changeDirectory(DestinationFolder()); });
    BatchFile = spcBatchFile;
    trap.step([this] { startBatch(); });
    Timer2->start();
}

void MainForm::startBatch()
{
    const auto logFailure = [task = DownloadEntry.Opdracht](const QString &reason) {
        app::ErrorTrap().step([&] { app::WriteLog(task + u" - "_s + reason); });
    };
    BatchTask = platform::host().startBatch({.folder = DestinationFolder(),
                                             .batchFile = BatchFile,
                                             .header = spcHeaderFile,
                                             .audio = DownloadEntry.Filenaam,
                                             .output = DownloadEntry.spcFilenaam},
                                            logFailure);
}

} // namespace ui
