#pragma once

#include "controls/DL/DL.h"
#include "tests/support/Station.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <optional>
#include <ostream>

/// A downloader, a station that all its requests go to, and two empty folders: one for temporary
/// files, one for what was downloaded.
class Downloads : public testing::Test
{
protected:
    /// The counts of one event.
    struct Counts
    {
        qint32 downloaded;
        qint32 total;
        bool operator==(const Counts &) const = default;
        friend void PrintTo(const Counts &counts, std::ostream *out)
        {
            *out << counts.downloaded << " of " << counts.total;
        }
    };

    Downloads()
    {
        station.routeHere();
        QDir(folder.path()).mkdir(QStringLiteral("temporary"));
        QDir(folder.path()).mkdir(QStringLiteral("audio"));
        qputenv("TMPDIR", QFile::encodeName(temporaryFolder()));
    }

    ~Downloads() override { qunsetenv("TMPDIR"); }

    QString temporaryFolder() const { return folder.filePath(QStringLiteral("temporary")); }
    QString destination() const { return folder.filePath(QStringLiteral("audio/raw.mp2")); }

    QStringList temporaryFiles() const { return QDir(temporaryFolder()).entryList(QDir::Files); }

    /// What stands in the file, or nothing when there is none.
    static std::optional<QByteArray> contents(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
    }

    static Counts countsOf(const QList<QVariant> &event)
    {
        return {event.at(0).toInt(), event.at(1).toInt()};
    }

    /// Downloads the address to the destination and gives the counts of Completed. None of the
    /// events may come before Download has returned.
    static Counts download(controls::DL &dl, const QString &address, const QString &destination)
    {
        QSignalSpy completed(&dl, &controls::DL::Completed);
        dl.Download(address, destination);
        EXPECT_TRUE(completed.isEmpty());
        if (!completed.isEmpty() || completed.wait(20'000))
            return countsOf(completed.first());
        ADD_FAILURE() << "not completed";
        return {-1, -1};
    }

    Station station;
    QTemporaryDir folder;
};
