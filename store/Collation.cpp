#include "store/Collation.h"

#include <QString>

#include <algorithm>

namespace store {

static bool isPlain(char character)
{
    return static_cast<unsigned char>(character) < 0x80;
}

static bool isInsideLetter(char character)
{
    return (static_cast<unsigned char>(character) & 0xC0) == 0x80;
}

static char plainLower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A'))
                                                : character;
}

// From the letter on that the given byte of the texts is a part of; they are equal before it.
static int compareAnyLetters(std::string_view first, std::string_view second, std::size_t at)
{
    while (at > 0 && (isInsideLetter(first[at]) || isInsideLetter(second[at])))
        --at;
    const auto rest = [at](std::string_view text) {
        return QString::fromUtf8(text.data() + at, static_cast<qsizetype>(text.size() - at));
    };
    return rest(first).compare(rest(second), Qt::CaseInsensitive);
}

// The engine calls this some hundred thousand times for one schedule, so letters outside the plain
// alphabet are decoded only where the texts differ in one.
int compareTexts(std::string_view first, std::string_view second)
{
    const std::size_t shared = std::min(first.size(), second.size());
    for (std::size_t at = 0; at < shared; ++at) {
        if (first[at] == second[at])
            continue;
        if (!isPlain(first[at]) || !isPlain(second[at]))
            return compareAnyLetters(first, second, at);
        const int difference = plainLower(first[at]) - plainLower(second[at]);
        if (difference != 0)
            return difference;
    }
    return static_cast<int>(first.size()) - static_cast<int>(second.size());
}

} // namespace store
