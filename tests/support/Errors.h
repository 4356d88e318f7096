#pragma once

#include "platform/RuntimeError.h"

#include <optional>
#include <ostream>

namespace testing_support {

/// The number of the error that the action raises, or nothing when it raises none.
template <typename Action>
std::optional<platform::ErrorNumber> errorOf(Action &&action)
{
    try {
        action();
        return std::nullopt;
    } catch (const platform::RuntimeError &error) {
        return error.number();
    }
}

} // namespace testing_support

namespace platform {

inline void PrintTo(ErrorNumber number, std::ostream *out)
{
    *out << "error " << static_cast<int>(number);
}

} // namespace platform
