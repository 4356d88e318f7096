#pragma once

#include <QCheckBox>

namespace ui {

/// A check box without a text on a light ground of its own. Its marks are those of a light theme
/// whatever theme is in force, so that they can be read on that ground. It leaves the mouse to its
/// parent.
class HourBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit HourBox(const QColor &ground, QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QColor m_ground;
};

} // namespace ui
