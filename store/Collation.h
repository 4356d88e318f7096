#pragma once

#include <string_view>

namespace store {

/// Compares two texts in UTF-8 without regard to the case of any letter, é as well as e. Less than,
/// equal to or greater than 0, as the first text comes before the second, equals or follows it.
int compareTexts(std::string_view first, std::string_view second);

} // namespace store
