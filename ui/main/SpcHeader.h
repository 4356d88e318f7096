#pragma once

#include <QChar>
#include <QObject>
#include <QString>

// The text header that turns MPEG audio into an SPC file.
namespace ui {

/// The header's own file in the destination folder, until it is part of the SPC file.
inline const QString spcHeaderFile = QStringLiteral("tijdelijk.txt");

/// The header's size in an SPC file, in bytes; shorter texts are padded with NUL.
inline constexpr qsizetype spcHeaderSize = 256;

/// The play time that the header claims for an audio file of that size, at 128 kbit/s: the seconds
/// with two decimals behind a point, for example "59.99". With a decimal mark other than a comma,
/// or a comma behind the fifth character, ".00" is added to an uncut number ("59.99672.00",
/// "12345,67.00"). Players expect these texts: see "Play
/// times" in docs/behaviour.md.
QString secondsText(qint64 fileSize, QChar decimalPoint);

/// The header's text, without the padding, with CR LF between its lines and the end-of-text mark
/// 0x1A at its end.
QString spcHeaderText(const QString &spcFilenaam, const QString &seconds);

/// A text on its way into a file of single-byte text. It is not shown.
class TextFileBox : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    QString text;

    /// Writes the text as it stands, in place of a file of that name. Raises what the file system
    /// refuses.
    void saveFile(const QString &path) const;
};

} // namespace ui
