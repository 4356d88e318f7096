#pragma once

#include <QStringList>

#include <vector>

namespace ui {

/// The minutes of the hour, "0" to "59", without the taken ones, which come highest first. Each is
/// removed by its position in the list, on purpose: of two equal ones the second takes away the
/// next higher free minute. Raises InvalidProcedureCall for a position that the list does not have,
/// or has no more.
QStringList freeMinutes(const std::vector<int> &taken);

} // namespace ui
