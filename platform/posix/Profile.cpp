#include "platform/posix/Profile.h"

#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <unistd.h>

namespace platform {

using namespace Qt::StringLiterals;

// The lines of a file with their ends, which stay as they are.
using Lines = QByteArrayList;

static std::optional<Lines> readLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    Lines lines;
    while (!file.atEnd()) {
        lines.append(file.readLine());
        if (file.error() != QFileDevice::NoError)
            return std::nullopt;
    }
    return lines;
}

static QString text(const QByteArray &line)
{
    QString decoded = QString::fromUtf8(line).trimmed();
    if (decoded.startsWith(QChar::ByteOrderMark))
        decoded = decoded.mid(1).trimmed();
    return decoded;
}

static bool isSectionLine(const QString &line)
{
    return line.startsWith(u'[');
}

static bool isSectionLineOf(const QString &line, const QString &section)
{
    const qsizetype end = line.lastIndexOf(u']');
    return isSectionLine(line) && end > 0 &&
           line.mid(1, end - 1).trimmed().compare(section.trimmed(), Qt::CaseInsensitive) == 0;
}

static bool isKeyLineOf(const QString &line, const QString &key)
{
    const qsizetype equals = line.indexOf(u'=');
    return equals > 0 && !line.startsWith(u';') &&
           line.left(equals).trimmed().compare(key.trimmed(), Qt::CaseInsensitive) == 0;
}

// Where a key stands, or would be added.
struct Place
{
    qsizetype sectionEnd = -1; ///< the line behind the section's last one that says something
    qsizetype keyLine = -1;
};

static Place findPlace(const Lines &lines, const QString &section, const QString &key)
{
    Place place;
    qsizetype i = 0;
    while (i < lines.size() && !isSectionLineOf(text(lines[i]), section))
        ++i;
    if (i == lines.size())
        return place;
    place.sectionEnd = ++i;
    for (; i < lines.size() && !isSectionLine(text(lines[i])); ++i) {
        const QString line = text(lines[i]);
        if (place.keyLine < 0 && isKeyLineOf(line, key))
            place.keyLine = i;
        if (!line.isEmpty())
            place.sectionEnd = i + 1;
    }
    return place;
}

static QString unquoted(const QString &value)
{
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.mid(1, value.size() - 2) : value;
}

static QString cut(const QString &value, qsizetype length)
{
    if (value.size() <= length)
        return value;
    const bool splits = length > 0 && value[length - 1].isHighSurrogate();
    return value.left(splits ? length - 1 : length);
}

QString readProfile(const QString &path, const QString &section, const QString &key,
                    const QString &defaultValue, int size)
{
    const Lines lines = readLines(path).value_or(Lines{});
    const Place place = findPlace(lines, section, key);
    if (place.keyLine < 0)
        return cut(defaultValue, size - 1);
    const QString line = text(lines[place.keyLine]);
    return cut(unquoted(line.mid(line.indexOf(u'=') + 1).trimmed()), size - 1);
}

static QByteArray lineEndOf(const Lines &lines)
{
    return !lines.isEmpty() && lines.front().endsWith('\n') && !lines.front().endsWith("\r\n")
               ? "\n"
               : "\r\n";
}

static void setValue(Lines &lines, const QString &section, const QString &key, const QString &value)
{
    const QByteArray lineEnd = lineEndOf(lines);
    const QByteArray line = (key + u'=' + untilNul(value)).toUtf8() + lineEnd;
    const Place place = findPlace(lines, section, key);
    if (place.keyLine >= 0) {
        lines[place.keyLine] = line;
        return;
    }
    if (!lines.isEmpty() && !lines.back().endsWith('\n'))
        lines.back() += lineEnd;
    if (place.sectionEnd >= 0)
        lines.insert(place.sectionEnd, line);
    else
        lines << (u'[' + section + u']').toUtf8() + lineEnd << line;
}

static bool flush(const QSaveFile &file)
{
    return fsync(file.handle()) == 0 || errno == EINVAL; // a file system that knows no flush
}

static bool isNamedOnDisk(const QString &path)
{
    try {
        system::flushFolderOf(path);
        return true;
    } catch (const RuntimeError &) {
        return false;
    }
}

bool writeProfile(const QString &path, const QString &section, const QString &key,
                  const QString &value)
{
    std::optional<Lines> lines = readLines(path);
    if (!lines && QFileInfo::exists(path))
        return false; // what cannot be read would be lost
    if (!lines && !QDir().mkpath(QFileInfo(path).path()))
        return false;
    Lines written = lines.value_or(Lines{});
    setValue(written, section, key, value);
    const QByteArray bytes = written.join();
    QSaveFile file(path); // unbuffered: a commit does not mind what its buffer could not store
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
           file.write(bytes) == bytes.size() && flush(file) && file.commit() && isNamedOnDisk(path);
}

} // namespace platform
