#pragma once

#include "platform/RuntimeError.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

// What the fuzzing targets share. A target tries what has to hold for any input.
namespace fuzz {

inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// Bad input may raise the program's error, and nothing else.
template <typename Action>
void allowingErrors(Action action)
{
    try {
        action();
    } catch (const platform::RuntimeError &) {
        return;
    }
}

inline QByteArray bytes(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
}

/// UTF-8 as people's files and databases have it; anything else becomes replacement characters.
inline QString text(const std::uint8_t *data, std::size_t size)
{
    return QString::fromUtf8(bytes(data, size));
}

} // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
