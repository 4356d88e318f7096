#include "store/DatabaseFile.h"

#include "platform/RuntimeError.h"

#include <QFile>
#include <QFileInfo>

#include <bitset>

namespace store {

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

static constexpr qint64 pageSize = 1024;

[[noreturn]] static void raise(ErrorNumber number, const QString &path)
{
    throw RuntimeError(number, RuntimeError(number).description() + u": "_s + path);
}

void requireDatabaseFile(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        raise(ErrorNumber::DatabaseFileNotFound, path);
    if (!file.isFile() || file.size() == 0)
        raise(ErrorNumber::NotADatabase, path);
    if (!QFile(path).open(QIODevice::ReadOnly))
        raise(ErrorNumber::PermissionDenied, path);
}

// Encrypted data is as good as random: a page of it holds about 251 of the 256 byte values and, in
// practice, never fewer than 200. Headers, texts and unencrypted databases stay far below.
static bool looksRandom(const QByteArray &page)
{
    std::bitset<256> values;
    for (const char byte : page)
        values.set(static_cast<unsigned char>(byte));
    return values.count() >= 200;
}

static bool looksEncrypted(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() % pageSize == 0 &&
           looksRandom(file.read(pageSize));
}

void raiseUndecipherable(const QString &path)
{
    raise(looksEncrypted(path) ? ErrorNumber::WrongDatabasePassword : ErrorNumber::NotADatabase,
          path);
}

} // namespace store
