#pragma once

#include "platform/RuntimeError.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

// What the fuzzing targets share.
namespace fuzz {

/// Tries what has to hold for any input: the target itself, one to a program.
void meet(const QByteArray &input);

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

} // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::meet({reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)});
    return 0;
}

using namespace Qt::StringLiterals;
