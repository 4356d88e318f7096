#include "platform/posix/Profile.h"

#include "tests/fuzz/Fuzz.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

using namespace Qt::StringLiterals;

static constexpr int anyLength = 1 << 20;

static QString read(const QString &path, const QString &key, int size = anyLength)
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
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(u"settings.ini"_s);
    if (size == 0)
        return 0;
    const std::size_t length = std::min<std::size_t>(*data, size - 1);
    const QString value = fuzz::text(data + 1, length);
    QFile file(path);
    fuzz::require(file.open(QIODevice::WriteOnly));
    file.write(fuzz::bytes(data + 1 + length, size - 1 - length));
    file.close();

    fuzz::require(read(path, u"Key"_s, 255).size() <= 254);
    const QString other = read(path, u"Other"_s);
    fuzz::require(platform::writeProfile(path, u"Section"_s, u"Key"_s, value));
    if (!isPlain(value))
        return 0;
    fuzz::require(read(path, u"Key"_s) == value);
    fuzz::require(read(path, u"Other"_s) == other);
    return 0;
}
