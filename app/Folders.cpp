#include "app/Module1.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "platform/Text.h"

#include <QDir>

namespace app {

using namespace Qt::StringLiterals;

QString WindowsFolder()
{
    return platform::host().settingsDirectory();
}

static bool hasDriveOrBackslash(const QString &folder)
{
    const bool drive = folder.size() >= 2 && folder[1] == u':' && folder[0].isLetter();
    return drive || folder.startsWith(u'\\');
}

QString folderWithSeparator(const QString &folder)
{
    if (folder.isEmpty())
        return folder; // a lone separator would mean the root
    if (hasDriveOrBackslash(folder)) {
        const QString joined = folder + u'\\';
        return joined.endsWith(u"\\\\"_s) ? joined.left(3) : joined;
    }
    QString joined = folder;
    while (joined.endsWith(QDir::separator()))
        joined.chop(1);
    return joined + QDir::separator();
}

static QString folderOfSetting(FixedText<200> &setting)
{
    const QString folder = platform::trimmedBlanks(setting.text());
    setting = folder;
    return folderWithSeparator(platform::untilNul(folder));
}

QString DestinationFolder()
{
    return folderOfSetting(sBestemmingsmap);
}

QString SpcFolder()
{
    return folderOfSetting(sSPCmap);
}

bool copiesSpcFiles()
{
    return SpcFolder() != DestinationFolder();
}

bool FileExists(const QString &path)
{
    return platform::fileExists(path);
}

} // namespace app
