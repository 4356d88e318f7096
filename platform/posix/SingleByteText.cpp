#include "platform/Text.h"

#include <QList>

#include <algorithm>
#include <array>

namespace platform {

// What Windows-1252 has from 0x80 to 0x9F, the five control characters that Windows adds to it
// included; the rest of it equals Latin-1.
static constexpr std::array<char16_t, 32> from0x80 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

static char singleByte(char32_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<char>(character);
    const auto *found = std::find(from0x80.begin(), from0x80.end(), character);
    return found == from0x80.end() ? '?' : static_cast<char>(0x80 + (found - from0x80.begin()));
}

QByteArray singleByteText(const QString &text)
{
    QByteArray bytes;
    const auto characters = text.normalized(QString::NormalizationForm_C).toUcs4();
    bytes.reserve(characters.size());
    for (const char32_t character : characters)
        bytes += singleByte(character);
    return bytes;
}

} // namespace platform
