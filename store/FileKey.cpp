#include "store/FileKey.h"

#include <QFile>

#include <array>
#include <nettle/pbkdf2.h>

namespace store {

// The file format's own numbers: format version 3, a salt in the file's first bytes.
static constexpr qint64 saltSize = 16;
static constexpr std::size_t keySize = 32;
static constexpr unsigned iterations = 64000;

static const std::uint8_t *bytes(const QByteArray &text)
{
    return reinterpret_cast<const std::uint8_t *>(text.constData());
}

static QByteArray derivedKey(const QByteArray &password, const QByteArray &salt)
{
    std::array<std::uint8_t, keySize> key{};
    pbkdf2_hmac_sha1(static_cast<std::size_t>(password.size()), bytes(password), iterations,
                     static_cast<std::size_t>(salt.size()), bytes(salt), key.size(), key.data());
    return {reinterpret_cast<const char *>(key.data()), keySize};
}

// The engine derives the same key itself when it is given the password, in twice the time: the
// longest single step of the program's start.
QByteArray fileKey(const QString &path, const QString &password)
{
    QFile file(path);
    const QByteArray salt = file.open(QIODevice::ReadOnly) ? file.read(saltSize) : QByteArray();
    if (salt.size() < saltSize)
        return password.toUtf8();
    return "x'" + derivedKey(password.toUtf8(), salt).toHex() + "'";
}

} // namespace store
