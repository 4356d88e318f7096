#pragma once

#include <QProxyStyle>

namespace ui {

/// The desktop's own style, apart from the two things that it would read from picture files for
/// the main window: with the first such file the toolkit looks through the libraries of all picture
/// formats, which takes a twentieth of the program's start. They are drawn here, to the same
/// effect. Make it when the application is there, so that it finds the desktop's style.
class ProgramStyle : public QProxyStyle
{
    Q_OBJECT

public:
    QIcon standardIcon(StandardPixmap icon, const QStyleOption *option,
                       const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
};

} // namespace ui
