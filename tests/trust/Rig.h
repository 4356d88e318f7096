#pragma once

#include "app/Module1.h"
#include "tests/ui/main/MainFormTest.h"

#include <QCoreApplication>
#include <QFile>
#include <QSignalSpy>

namespace trust {

/// The number behind an option of the command line.
inline int numberOption(const QString &option, int byDefault)
{
    const QStringList arguments = QCoreApplication::arguments();
    const qsizetype at = arguments.indexOf(option);
    return at < 0 ? byDefault : arguments.value(at + 1).toInt();
}

/// The main window with its database, settings, station and moved clock, as an object that a
/// program leads through many downloads. Collects what does not add up.
class Rig : public MainFormTest
{
public:
    /// Prints the first faults. Returns the status to end with.
    int report() const
    {
        std::printf("%8lld  faults\n", m_faults.size());
        for (const QString &fault : m_faults.mid(0, 10))
            std::printf("          %s\n", qPrintable(fault));
        return m_faults.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE;
    }

protected:
    void TestBody() override {}

    void expect(bool holds, const QString &otherwise)
    {
        if (!holds)
            m_faults << otherwise;
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

private:
    std::unique_ptr<QSignalSpy> m_completed;
    QStringList m_faults;
};

} // namespace trust
