#pragma once

#include "store/Recordset.h"
#include "tests/support/Test.h"

#include <QTemporaryDir>

/// A connection to an empty task database of the test's own.
class StoreTest : public testing::Test
{
protected:
    StoreTest();

    QString programFolder() const { return folder.path(); }
    QString databasePath() const;
    void addTask(const QString &name, int minute = 0, bool active = true);
    void addSlot(const QString &name, int day, int hour);

    /// All rows of a source, each as its fields with "|" between them and "-" for an empty one.
    QStringList rowsOf(const QString &source) const;
    static QString currentRow(const store::Recordset &rows);

    QTemporaryDir folder;
    store::Connection connection;
};
