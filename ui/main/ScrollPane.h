#pragma once

#include <QScrollArea>

class QDialog;

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
void fitToDisplay(QDialog &window, QSize preferred);

} // namespace ui
