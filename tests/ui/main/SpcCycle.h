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
        station.answerOthers({.body = audio});
        QDir().mkpath(spcFolder({}));
        app::sSPC = u"1"_s;
        app::sSPCmap = spcFolder({});
        app::sPreXP = u"0"_s;
    }

    QString spcFolder(const QString &name) const { return host.folder() + u"/spc/"_s + name; }

    QTimer *watch() const { return formControl<QTimer>(u"Timer2"_s); }

    void waitForBatch()
    {
        ASSERT_TRUE(QTest::qWaitFor(
            [this] { return host.findBatchWindow(platform::BatchWindowKind::Finished) != 0; }));
    }

    void expectNextArmed() const
    {
        EXPECT_FALSE(watch()->isActive());
        EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::True);
    }

    const QByteArray audio = sampleAudio(100); // 38,400 bytes
};
