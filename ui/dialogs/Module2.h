#pragma once

#include <QString>

class QWidget;

// The program's second global unit: the folder chooser.
namespace ui {

/// Lets the user choose a folder of the file system, over the window hwndOwner. Returns its path
/// with one NUL character at its end, which is deliberate, or "" when the user chose none or one
/// whose path is longer than 254 characters.
QString BrowseForFolder(QWidget *hwndOwner, const QString &title);

} // namespace ui
