#include "ui/dialogs/Module2.h"

#include "platform/Host.h"

namespace ui {

// The characters of a path that a settings file gives back, and its end mark.
static constexpr qsizetype pathBufferSize = 255;

QString BrowseForFolder(QWidget *hwndOwner, const QString &title)
{
    const QString path = platform::host().chooseFolder(hwndOwner, title);
    if (path.isEmpty() || path.size() >= pathBufferSize)
        return {};
    return path + QChar::Null;
}

} // namespace ui
