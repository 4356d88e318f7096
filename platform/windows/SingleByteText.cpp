#include "platform/Text.h"

#include <QList>

#include <windows.h>

namespace platform {

// Where the system's code page was set to UTF-8, which is none of single bytes, the western one
// takes its place.
static UINT codePage()
{
    constexpr UINT western = 1252;
    return GetACP() == CP_UTF8 ? western : GetACP();
}

static QByteArray encoded(char32_t character)
{
    constexpr int mostBytes = 2; // East Asian code pages have characters of two
    const std::wstring wide = QString::fromUcs4(&character, 1).toStdWString();
    QByteArray bytes(mostBytes, '?');
    BOOL isMissing = FALSE;
    const int size = WideCharToMultiByte(codePage(), WC_NO_BEST_FIT_CHARS, wide.data(),
                                         static_cast<int>(wide.size()), bytes.data(), mostBytes,
                                         "?", &isMissing);
    return isMissing || size == 0 ? QByteArray("?") : bytes.first(size);
}

QByteArray singleByteText(const QString &text)
{
    QByteArray bytes;
    for (const char32_t character : text.normalized(QString::NormalizationForm_C).toUcs4())
        bytes += encoded(character);
    return bytes;
}

} // namespace platform
