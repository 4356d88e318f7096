#pragma once

#include <QIcon>

namespace ui {

/// The program's icon, in the sizes that windows and their lists show.
QIcon programIcon();

} // namespace ui
