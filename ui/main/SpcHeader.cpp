#include "ui/main/SpcHeader.h"

#include "app/ErrorReport.h"
#include "app/Module1.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "platform/Text.h"
#include "ui/main/MainForm.h"

#include <QLocale>
#include <QStringList>

namespace ui {

using namespace Qt::StringLiterals;
using app::DestinationFolder;

// A single-precision number with at most 7 significant digits.
static QString singleText(float number, QChar decimalPoint)
{
    return QString::number(static_cast<double>(number), 'G', 7).replace(u'.', decimalPoint);
}

QString secondsText(qint64 fileSize, QChar decimalPoint)
{
    constexpr double bytesPerSecond = 32001.747;
    constexpr qsizetype scanned = 5;

    QString text = singleText(static_cast<float>(static_cast<double>(fileSize) / bytesPerSecond),
                              decimalPoint);
    qsizetype mark = text.left(scanned).indexOf(u',');
    if (mark >= 0)
        text[mark] = u'.';
    else
        mark = scanned;
    QString seconds = text.left(mark + 3);
    if (mark >= text.size() || text[mark] != u'.')
        seconds += u".00"_s;
    return seconds;
}

QString spcHeaderText(const QString &spcFilenaam, const QString &seconds)
{
    const QStringList lines = {
        u"FILE: "_s + spcFilenaam,
        u"DESCRIPTION: NL "_s + app::versionText(),
        u"SAMPLE RATE: 48000"_s,
        u"FILTER CUTOFF: 0"_s,
        u"SAMPLE SIZE: 16 bits"_s,
        u"SAMPLE FORMAT: MPEG"_s,
        u"CHANNELS: 2"_s,
        u"SECONDS: "_s + seconds,
        u"SAMPLES PER BLOCK: 1152"_s,
        u"BYTES PER BLOCK: 768"_s,
        u"EXTRA INFO: L=2/M=st/Kb=128/E=0/C=0/O=1/Em=0/A=4"_s,
    };
    return lines.join(u"\r\n"_s) + QChar(0x1A);
}

void TextFileBox::saveFile(const QString &path) const
{
    platform::writeFile(path, platform::singleByteText(text));
}

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
    m_batchFolder = DestinationFolder();
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
