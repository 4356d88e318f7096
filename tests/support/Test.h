#pragma once

#include "platform/Boolean.h"
#include "platform/RuntimeError.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Files.h"

#include <QString>

#include <gtest/gtest.h>
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

// Let a failed comparison show texts and bytes as text and errors by their numbers.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << testing::PrintToString(bytes.toStdString());
}

namespace platform {

inline void PrintTo(ErrorNumber number, std::ostream *out)
{
    *out << "error " << static_cast<int>(number);
}

} // namespace platform

// Included by tests only, all of which use these names.
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace testing_support;
using platform::Boolean;
using platform::ErrorNumber;
using enum platform::ErrorNumber;
