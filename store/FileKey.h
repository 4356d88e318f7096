#pragma once

#include <QByteArray>
#include <QString>

namespace store {

/// What the engine takes as the key of the database file at `path`, which need not exist yet: the
/// password, from which it derives the key by the file's salt, or that key itself where it is
/// known beforehand.
QByteArray fileKey(const QString &path, const QString &password);

} // namespace store
