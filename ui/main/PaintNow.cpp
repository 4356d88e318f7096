#include "ui/main/PaintNow.h"

#include <QWindow>

namespace ui {

void paintNow(QWidget *widget, const QRegion &part)
{
    const QWindow *window = widget->window()->windowHandle();
    if (window && window->isExposed())
        widget->repaint(part);
    else
        widget->update(part);
}

} // namespace ui
