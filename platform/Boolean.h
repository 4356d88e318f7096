#pragma once

#include <cstdint>

namespace platform {

/// The system's 16-bit Boolean. True is -1 (all bits set), and a test for true compares with it
/// exactly.
enum class Boolean : std::int16_t { False = 0, True = -1 };

} // namespace platform
