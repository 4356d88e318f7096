#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "store/DatabaseFile.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

// make_database SCHEMA TARGET: makes an empty task database from a script, unless TARGET exists.

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

static QString contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError(ErrorNumber::FileNotFound, file.errorString() + u": "_s + path);
    return QString::fromUtf8(file.readAll());
}

// The database gets its name when it is complete, so that an interrupted build leaves none.
static void makeDatabase(const QString &schema, const QString &target)
{
    const QString script = contentOf(schema);
    const QString unfinished = target + u".new"_s;
    QFile::remove(unfinished);
    {
        const auto database = store::openDatabaseFile(
            {unfinished, store::taskDatabasePassword.toString()}, store::OpenMode::Create);
        store::runScript(database.get(), u"BEGIN;"_s + script + u"COMMIT;"_s);
    }
    platform::moveFile(unfinished, target);
}

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fputs("Usage: make_database SCHEMA TARGET\n", stderr);
        return 2;
    }
    const QString schema = QFile::decodeName(argv[1]);
    const QString target = QFile::decodeName(argv[2]);
    try {
        if (!QFileInfo::exists(target))
            makeDatabase(schema, target);
    } catch (const RuntimeError &error) {
        std::fprintf(stderr, "make_database: %s\n", error.what());
        return 1;
    }
    return 0;
}
