#pragma once

#include <functional>

namespace ui {

/// The windows that the main window's menus open. Each is shown modally until the user closes it.
/// A menu entry without its window is not shown.
struct MenuWindows
{
    std::function<void()> taskList = {};
    std::function<void()> forcedDownload = {};
    std::function<void()> options = {};
    std::function<void()> about = {};
};

} // namespace ui
