#include "store/FileKey.h"

#include "store/ConnectionString.h"

#include <QFile>

namespace store {

// The engine derives a key by 64,000 rounds of PBKDF2-HMAC-SHA1, which would be half of the whole
// program's start. Every installation has the same password, so that a salt of its own would
// protect nothing: task databases are made with this one, the first 16 bytes of their file, and
// their key is known.
static constexpr QByteArrayView knownSalt = "Ostravelin tasks";
static constexpr QByteArrayView knownKey =
    "79c43dacfa12b2206f02959d97b55d73893ba27b30f039d4c3ae774b5a60ed1e";

QByteArray fileKey(const QString &path, const QString &password)
{
    QFile file(path);
    const bool isNew = !file.open(QIODevice::ReadOnly) || file.size() == 0;
    const bool isKnown = isNew || file.read(knownSalt.size()) == knownSalt;
    if (!isKnown || password != taskDatabasePassword)
        return password.toUtf8();
    return "x'" + knownKey.toByteArray() + knownSalt.toByteArray().toHex() + "'";
}

} // namespace store
