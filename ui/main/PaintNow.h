#pragma once

#include <QWidget>

namespace ui {

/// Paints a part of the widget without waiting for the next round of messages. When its window
/// cannot be seen, that part is painted as soon as it can.
void paintNow(QWidget *widget, const QRegion &part);

} // namespace ui
