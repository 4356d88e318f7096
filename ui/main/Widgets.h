#pragma once

#include <QLabel>

// What several windows are made with.
namespace ui {

/// Makes a control under its name. The arguments are those of its constructor; whatever layout or
/// parent takes it in owns it.
template <typename Control, typename... Arguments>
Control *named(const QString &name, Arguments... arguments)
{
    auto *control = new Control(arguments...);
    control->setObjectName(name);
    return control;
}

/// Paints a part of the widget without waiting for the next round of messages. When its window
/// cannot be seen, that part is painted as soon as it can.
void paintNow(QWidget *widget, const QRegion &part);

/// A label of one line of plain text that never asks for more room when its text grows: what has
/// no room is cut, and the whole text is its tool tip then.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    ElidedLabel();

    /// The text that the label would like to have room for.
    void setUsualText(const QString &text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isCut() const;

    QString m_usualText;
};

} // namespace ui
