#pragma once

#include <QByteArray>
#include <QString>

// How an encrypted database file's key comes from its password.
namespace store {

/// What the engine takes as the key of the file at `path`: the key itself, derived from the
/// password and the file's salt, or the password as it is when the file has no salt yet.
QByteArray fileKey(const QString &path, const QString &password);

} // namespace store
