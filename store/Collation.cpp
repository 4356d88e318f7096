#include "store/Collation.h"

#include <QString>

#include <algorithm>

namespace store {

static bool isPlain(char character)
{
    return static_cast<unsigned char>(character) < 0x80;
}

static char plainLower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A'))
                                                : character;
}

static int compareAnyLetters(std::string_view first, std::string_view second)
{
    const auto decoded = [](std::string_view text) {
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    };
    return decoded(first).compare(decoded(second), Qt::CaseInsensitive);
}

// The engine calls this some hundred thousand times for one schedule, so letters outside the plain
// alphabet are decoded only from the first one on at which the texts meet one.
int compareTexts(std::string_view first, std::string_view second)
{
    const std::size_t shared = std::min(first.size(), second.size());
    for (std::size_t at = 0; at < shared; ++at) {
        if (!isPlain(first[at]) || !isPlain(second[at]))
            return compareAnyLetters(first.substr(at), second.substr(at));
        const int difference = plainLower(first[at]) - plainLower(second[at]);
        if (difference != 0)
            return difference;
    }
    return static_cast<int>(first.size()) - static_cast<int>(second.size());
}

} // namespace store
