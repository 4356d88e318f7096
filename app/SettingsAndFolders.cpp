#include "app/Module1.h"
#include "platform/Files.h"
#include "platform/Host.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <QDir>
#include <QFileInfo>

namespace app {

using namespace Qt::StringLiterals;

FolderSetting sBestemmingsmap;
FolderSetting sSPCmap;
SwitchSetting sSPC;
SwitchSetting sPreXP;

static constexpr QStringView missingValue = u"?";

// The size of the buffer that a value is read into, its end mark included.
static constexpr int valueSize = 255;

QString settingsFileName()
{
    return u"Ostravelin.ini"_s;
}

QString settingsFilePath()
{
    return platform::host().redirectedPath(WindowsFolder() + QDir::separator() +
                                           settingsFileName());
}

void requireReadableSettings()
{
    const QFileInfo file(settingsFilePath());
    if (file.exists() && !(file.isFile() && file.isReadable()))
        throw platform::RuntimeError(platform::ErrorNumber::PathFileAccess,
                                     u"The settings file cannot be read: "_s + file.filePath());
}

QString ReadIni(const QString &file, const QString &section, const QString &key,
                const QString &defaultValue)
{
    return platform::host().profileString(file, section, key, defaultValue, valueSize);
}

void WriteIni(const QString &file, const QString &section, const QString &key, QString &value)
{
    const QString written = value;
    value.replace(u'\r', u' ').replace(u'\n', u' ');
    platform::host().writeProfileString(file, section, key, written);
}

QString readSetting(const SettingKey &setting)
{
    return ReadIni(settingsFileName(), setting.section.toString(), setting.key.toString(),
                   missingValue.toString());
}

void writeSetting(const SettingKey &setting, const QString &value)
{
    QString written = value;
    WriteIni(settingsFileName(), setting.section.toString(), setting.key.toString(), written);
}

bool isConfigured()
{
    return readSetting(destinationKey) != missingValue;
}

void LoadSettings()
{
    sBestemmingsmap = readSetting(destinationKey);
    sSPCmap = readSetting(spcFolderKey);
    sSPC = readSetting(spcHeaderKey);
    sPreXP = readSetting(preXpKey);
}

static bool isOn(const SwitchSetting &setting)
{
    return setting.text() == u"1";
}

bool makesSpcFiles()
{
    return isOn(sSPC);
}

bool watchesRunningBatch()
{
    return isOn(sPreXP);
}

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

static QString folderOfSetting(FolderSetting &setting)
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
