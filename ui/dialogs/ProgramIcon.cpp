#include "ui/dialogs/ProgramIcon.h"

namespace ui {

using namespace Qt::StringLiterals;

QIcon programIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128})
        icon.addFile(u":/icons/ostravelin-%1.png"_s.arg(size), QSize(size, size));
    return icon;
}

} // namespace ui
