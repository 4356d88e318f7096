#include "platform/posix/Profile.h"

#include "tests/fuzz/Fuzz.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

static QString read(const QString &path, const QString &key, int size = 1 << 20)
{
    return platform::readProfile(path, u"Section"_s, key, u"?"_s, size);
}

// Values that a settings file cannot hold as they are: they would be trimmed or end the line.
static bool isPlain(const QString &value)
{
    return value == value.trimmed() && !value.contains(u'"') && !value.contains(u'\'') &&
           std::none_of(value.begin(), value.end(), [](QChar c) { return c < u' '; });
}

// The first byte says how long the value is, the rest is the file. A value that was written is
// read back, and the other key's value has not changed.
void fuzz::meet(const QByteArray &input)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(u"settings.ini"_s);
    if (input.isEmpty())
        return;
    const auto length = static_cast<unsigned char>(input[0]);
    const QString value = QString::fromUtf8(input.mid(1, length));
    QFile file(path);
    require(file.open(QIODevice::WriteOnly));
    file.write(input.mid(1 + length));
    file.close();

    require(read(path, u"Key"_s, 255).size() <= 254);
    const QString other = read(path, u"Other"_s);
    require(platform::writeProfile(path, u"Section"_s, u"Key"_s, value));
    require(!isPlain(value) || (read(path, u"Key"_s) == value && read(path, u"Other"_s) == other));
}
