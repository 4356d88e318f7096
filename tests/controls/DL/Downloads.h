#pragma once

#include "controls/DL/DL.h"
#include "tests/support/Station.h"
#include "tests/support/Test.h"

#include <QSignalSpy>

#include <memory>

/// What an event counts: bytes downloaded and bytes in total.
using Counts = std::pair<qint32, qint32>;

/// A downloader, a station that all its requests go to, and two empty folders: one for temporary
/// files, one for what was downloaded.
class Downloads : public testing::Test
{
protected:
    Downloads()
    {
        station.routeHere();
        QDir(folder.path()).mkdir(u"temporary"_s);
        QDir(folder.path()).mkdir(u"audio"_s);
        useTemporaryFolder(temporaryFolder());
    }

    ~Downloads() override { useTemporaryFolder(temporaryBefore); }

    QString temporaryFolder() const { return folder.filePath(u"temporary"_s); }
    QStringList temporaryFiles() const { return filesIn(temporaryFolder()); }
    QString destination() const { return folder.filePath(u"audio/raw.mp2"_s); }

    static void waitFor(int count, QSignalSpy &events)
    {
        while (events.size() < count)
            ASSERT_TRUE(events.wait(20'000));
    }

    static Counts countsOf(const QList<QVariant> &event)
    {
        return {event.at(0).toInt(), event.at(1).toInt()};
    }

    /// Downloads the address and gives the counts of Completed. None of the events may come before
    /// Download has returned.
    Counts download(const QString &address, const QString &path)
    {
        completed.clear();
        progress.clear();
        dl->Download(address, path);
        EXPECT_TRUE(completed.isEmpty());
        waitFor(1, completed);
        return completed.isEmpty() ? Counts(-1, -1) : countsOf(completed.first());
    }

    /// Downloads a path of the station to the destination.
    Counts download(const QString &path) { return download(Station::url(path), destination()); }

    const QString temporaryBefore = QDir::tempPath();
    Station station;
    QTemporaryDir folder;
    std::unique_ptr<controls::DL> dl = std::make_unique<controls::DL>();
    QSignalSpy progress{dl.get(), &controls::DL::Progress};
    QSignalSpy storing{dl.get(), &controls::DL::Storing};
    QSignalSpy completed{dl.get(), &controls::DL::Completed};
};
