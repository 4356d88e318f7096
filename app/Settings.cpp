#include "app/Module1.h"
#include "platform/Host.h"
#include "platform/RuntimeError.h"

#include <QDir>
#include <QFileInfo>

namespace app {

using namespace Qt::StringLiterals;

FixedText<200> sBestemmingsmap;
FixedText<200> sSPCmap;
FixedText<1> sSPC;
FixedText<1> sPreXP;

// The size of the buffer that a value is read into, its end mark included.
static constexpr int valueSize = 255;

QString settingsFileName()
{
    return u"Ostravelin.ini"_s;
}

QString ReadIni(const QString &file, const QString &section, const QString &key,
                const QString &defaultValue)
{
    return platform::host().profileString(file, section, key, defaultValue, valueSize);
}

QString readSetting(const QString &section, const QString &key)
{
    return ReadIni(settingsFileName(), section, key, u"?"_s);
}

QString settingsFilePath()
{
    return WindowsFolder() + QDir::separator() + settingsFileName();
}

void requireReadableSettings()
{
    const QFileInfo file(settingsFilePath());
    if (file.exists() && !(file.isFile() && file.isReadable()))
        throw platform::RuntimeError(platform::ErrorNumber::PathFileAccess,
                                     u"The settings file cannot be read: "_s + file.filePath());
}

bool isConfigured()
{
    return readSetting(u"Bestandsmappen"_s, u"Bestemmingsmap"_s) != u"?"_s;
}

void WriteIni(const QString &file, const QString &section, const QString &key, QString &value)
{
    const QString written = value;
    value.replace(u'\r', u' ').replace(u'\n', u' ');
    platform::host().writeProfileString(file, section, key, written);
}

void LoadSettings()
{
    sBestemmingsmap = readSetting(u"Bestandsmappen"_s, u"Bestemmingsmap"_s);
    sSPCmap = readSetting(u"Bestandsmappen"_s, u"SPCmap"_s);
    sSPC = readSetting(u"Opties"_s, u"SPC"_s);
    sPreXP = readSetting(u"Opties"_s, u"preXP"_s);
}

bool makesSpcFiles()
{
    return sSPC.text() == u"1";
}

} // namespace app
