#pragma once

#include <QString>

// The program's global unit: its settings, its folders, its log and its titles.
namespace app {

/// A text of always Width characters: a longer one is cut when it is assigned, a shorter one is
/// padded with blanks on its right. It starts as blanks.
template <int Width>
class FixedText
{
public:
    FixedText &operator=(const QString &text)
    {
        m_text = text.leftJustified(Width, u' ', true);
        if (m_text.back().isHighSurrogate())
            m_text.back() = u' '; // never half a character
        return *this;
    }

    const QString &text() const { return m_text; }

private:
    QString m_text = QString(Width, u' ');
};

using FolderSetting = FixedText<200>;
using SwitchSetting = FixedText<1>;

/// The settings in force. Each holds the text of its key, "?" when the key was missing, or blanks
/// before the first LoadSettings(). A folder that was just chosen ends in a NUL character.
extern FolderSetting sBestemmingsmap; ///< destination folder of the downloads
extern FolderSetting sSPCmap;         ///< folder that receives a copy of each SPC file
extern SwitchSetting sSPC;            ///< "1": downloads become SPC files
extern SwitchSetting sPreXP;          ///< "1": the batch watch works in its old mode

/// Where a setting stands in the settings file.
struct SettingKey
{
    QStringView section;
    QStringView key;
};

inline constexpr SettingKey destinationKey{u"Bestandsmappen", u"Bestemmingsmap"};
inline constexpr SettingKey spcFolderKey{u"Bestandsmappen", u"SPCmap"};
inline constexpr SettingKey spcHeaderKey{u"Opties", u"SPC"};
inline constexpr SettingKey preXpKey{u"Opties", u"preXP"};

/// A value of the settings file, "?" when it is missing.
QString readSetting(const SettingKey &setting);

/// Stores a value in the settings file. A failed write is not reported.
void writeSetting(const SettingKey &setting, const QString &value);

/// Whether a destination folder was ever set.
bool isConfigured();

/// The settings file's name in the settings directory, and the path of this user's.
QString settingsFileName();
QString settingsFilePath();

/// Raises PathFileAccess for a settings file that is there and cannot be read, so that it is never
/// taken for one without settings.
void requireReadableSettings();

/// A value of a settings file, at most 254 characters of it, or `defaultValue` when file, section
/// or key is missing. Its surrounding blanks are gone.
QString ReadIni(const QString &file, const QString &section, const QString &key,
                const QString &defaultValue);

/// Stores a value with its line breaks, while in the caller's `value` every carriage return and
/// line feed becomes a blank: see "Line breaks in a setting" in docs/behaviour.md. A failed write
/// is not reported.
void WriteIni(const QString &file, const QString &section, const QString &key, QString &value);

/// Reads the four settings in force from the settings file.
void LoadSettings();

/// Whether downloads become SPC files.
bool makesSpcFiles();

/// Whether the batch watch works in its old mode.
bool watchesRunningBatch();

/// The settings directory, without a separator at its end.
QString WindowsFolder();

/// The destination folder with one separator at its end, blanks at its ends dropped (in the
/// setting as well). It ends before a NUL character, which a chosen folder has at its end until
/// the settings are loaded. See folderWithSeparator().
QString DestinationFolder();

/// The same for the SPC folder.
QString SpcFolder();

/// Whether SPC files are copied to a folder of their own: the two folders differ as texts.
bool copiesSpcFiles();

/// The folder's text with a separator at its end; an empty text stays empty. The style follows
/// the text. Behind a drive letter or a leading backslash it is "\", and a text that then ends in
/// two of them is cut to its first three characters: "D:\" stays "D:\", but "D:\Audio\" becomes
/// "D:\" as well (see "A folder with its own backslash" in docs/behaviour.md). Any other text ends
/// in exactly one native separator.
QString folderWithSeparator(const QString &folder);

/// Whether a file stands at the path.
bool FileExists(const QString &path);

/// The text on one line: every control character, and so every line break, becomes a blank.
QString onOneLine(QString text);

/// The activity log's path.
QString logFilePath();

/// Appends "dd-mm-yy hh:mm:ss - message" to the log in the program folder, creating it when it is
/// missing. The message is written on one line. The file is open for the time of the call only, so
/// that it is complete on disk at any moment. Raises what the file system refuses.
void WriteLog(const QString &message);

/// The program's title.
QString programTitle();

/// The program's version, for example "1.8.1".
QString versionText();

/// The program's title, a blank and its version, for example "Ostravelin 1.8.1".
QString WindowTitle();

} // namespace app
