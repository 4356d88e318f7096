#pragma once

#include <QLabel>

namespace ui {

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
