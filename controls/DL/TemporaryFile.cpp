#include "controls/DL/TemporaryFile.h"

#include "platform/FileSystem.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"

#include <QDir>
#include <QRandomGenerator>

namespace controls {

using namespace Qt::StringLiterals;

// Nobody can guess the name, and opening never takes over a file or a link that is there.
static QString newName()
{
    const quint64 number = QRandomGenerator::system()->generate64();
    return QDir::temp().filePath(u"DL-%1.tmp"_s.arg(number, 16, 16, QChar(u'0')));
}

TemporaryFile::TemporaryFile()
    : m_file(newName())
{
    platform::deleteLeftovers(QDir::tempPath(), u"DL-"_s + u"[0-9a-f]"_s.repeated(16) + u".tmp"_s);
    if (!m_file.open(QIODevice::NewOnly | QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw platform::RuntimeError(platform::ErrorNumber::PathFileAccess,
                                     u"A temporary file cannot be made"_s);
}

TemporaryFile::~TemporaryFile()
{
    if (!m_file.fileName().isEmpty())
        m_file.remove();
}

qint64 TemporaryFile::write(const char *bytes, qint64 size)
{
    return qMax(qint64{0}, m_file.write(bytes, size));
}

bool TemporaryFile::close()
{
    m_file.close();
    if (m_file.error() != QFileDevice::NoError)
        return false;
    try {
        platform::system::flushFile(m_file.fileName());
        return true;
    } catch (const platform::RuntimeError &) {
        return false;
    }
}

void TemporaryFile::moveTo(const QString &path)
{
    platform::moveFile(m_file.fileName(), path);
    m_file.setFileName({});
}

} // namespace controls
