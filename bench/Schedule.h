#pragma once

#include "store/TaskStore.h"

#include <QDir>
#include <QFile>

/// Opens a new task database in the program folder, with so many active tasks in all of the week's
/// 168 slots.
inline void openFullSchedule(const QString &programFolder, int tasks)
{
    using namespace Qt::StringLiterals;

    QDir().mkpath(programFolder + u"/database"_s);
    QFile::copy(QStringLiteral(EMPTY_DATABASE), programFolder + u"/database/ostravelin.mdb"_s);
    store::OpenDatabase(programFolder);
    store::Transaction transaction(store::dbConnection);
    for (int task = 0; task < tasks; ++task) {
        store::dbConnection.execute(
            u"INSERT INTO Opdrachtgegevens VALUES ('Hourly news %1', "
            "'http://station.example/news/hourly%1.mp3', 'hourly%1.mp3', %1, 1)"_s.arg(task));
        for (int slot = 0; slot < 168; ++slot) {
            store::dbConnection.execute(
                u"INSERT INTO Tijden VALUES ('Hourly news %1', %2, %3)"_s.arg(task)
                    .arg(slot / 24 + 1)
                    .arg(slot % 24));
        }
    }
    transaction.commit();
}
