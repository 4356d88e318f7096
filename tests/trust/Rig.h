#pragma once

#include "app/Module1.h"
#include "tests/ui/main/MainFormTest.h"

#include <QDateTime>
#include <QFile>
#include <QSignalSpy>

namespace trust {

/// The main window with its database, settings, station and moved clock, as an object that a
/// program leads through many downloads.
class Rig : public MainFormTest
{
protected:
    void TestBody() override {}

    /// Counts what does not hold, and prints the first ten.
    void expect(bool holds, const QString &otherwise)
    {
        const qint64 clock = host.clock.time_since_epoch().count();
        if (!holds && ++faults <= 10)
            std::printf("%s: %s\n", qPrintable(otherwise),
                        qPrintable(QDateTime::fromSecsSinceEpoch(clock, Qt::UTC).toString()));
    }

    /// One tick of the countdown. Returns whether it started a download.
    bool tickStarts()
    {
        if (!m_completed)
            m_completed = std::make_unique<QSignalSpy>(form->findChild<controls::DL *>(),
                                                       &controls::DL::Completed);
        const int beeps = host.beeps;
        tick();
        return host.beeps > beeps;
    }

    /// Waits until the download has ended and the next one was looked up.
    void awaitEnd()
    {
        if (m_completed->isEmpty())
            m_completed->wait(60'000);
        expect(m_completed->size() == 1, QStringLiteral("a download without its one end"));
        m_completed->clear();
    }

    /// What was logged since the last call, which took the log away.
    QString takeLog() const
    {
        const QString lines = log().join(u'|');
        QFile::remove(app::logFilePath());
        return lines;
    }

    int faults = 0;

private:
    std::unique_ptr<QSignalSpy> m_completed;
};

} // namespace trust
