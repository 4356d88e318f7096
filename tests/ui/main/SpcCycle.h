#pragma once

#include "tests/support/SampleAudio.h"
#include "tests/ui/main/MainFormTest.h"

/// One task whose downloads become SPC files.
class SpcCycle : public MainFormTest
{
protected:
    SpcCycle()
    {
        addTaskAt(due, u"Hourly"_s, u"/radio/latest.mp2"_s, u"news.spc"_s);
        station.answerOthers(Answer{.body = audio});
        QDir().mkpath(spcFolder({}));
        app::sSPC = u"1"_s;
        app::sSPCmap = spcFolder({});
        app::sPreXP = u"0"_s;
    }

    QString spcFolder(const QString &name) const { return host.folder() + u"/spc/"_s + name; }

    void setFileName(const QString &name) { setTasks(u"Filenaam = '%1'"_s.arg(name)); }

    QTimer *watch() const { return formControl<QTimer>(u"Timer2"_s); }

    void tickWatch() { tick(watch()); }

    /// A download, and its batch up to its end.
    void runDownloadAndBatch()
    {
        onProgress([this] { host.ticks += 1000; });
        runDownload();
        EXPECT_TRUE(watch()->isActive());
        waitForBatch();
    }

    void waitForBatch()
    {
        ASSERT_TRUE(QTest::qWaitFor(
            [this] { return host.findBatchWindow(platform::BatchWindowKind::Finished) != 0; }));
    }

    QByteArray expectedHeader(const QByteArray &name, const QByteArray &seconds) const
    {
        return ("FILE: " + name +
                "\r\nDESCRIPTION: NL 1.8.1\r\nSAMPLE RATE: 48000\r\nFILTER CUTOFF: 0\r\n"
                "SAMPLE SIZE: 16 bits\r\nSAMPLE FORMAT: MPEG\r\nCHANNELS: 2\r\nSECONDS: " +
                seconds +
                "\r\nSAMPLES PER BLOCK: 1152\r\nBYTES PER BLOCK: 768\r\n"
                "EXTRA INFO: L=2/M=st/Kb=128/E=0/C=0/O=1/Em=0/A=4\x1A")
            .leftJustified(256, '\0');
    }

    const QByteArray audio = sampleAudio(100); // 38,400 bytes
};
