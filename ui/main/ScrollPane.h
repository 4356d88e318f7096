#pragma once

#include <QScrollArea>

namespace ui {

/// What of a window may scroll on a small display. With room enough it looks as if it were not
/// there; with less, its content comes closer together first, and scrolls then. A control that
/// gets the focus by the keyboard comes into sight.
class ScrollPane : public QScrollArea
{
    Q_OBJECT

public:
    /// Takes over the content.
    explicit ScrollPane(QWidget *content);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    void showFocus(const QWidget *focused);
};

/// Gives a window that is not shown yet the preferred size, or as much of it as its display has
/// room for beside panels and the window's frame.
void fitToDisplay(QWidget &window, QSize preferred);

/// Lays out the content inside the usual margins, of which those at the sides give way before
/// anything has to scroll sideways.
QLayout *betweenYieldingMargins(QLayout *content);

} // namespace ui
