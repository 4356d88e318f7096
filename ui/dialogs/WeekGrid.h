#pragma once

#include <QList>
#include <QWidget>

#include <optional>

class QCheckBox;
class QGridLayout;
class QScrollArea;

namespace ui {

/// The hours of a week as check boxes: a column per day from Monday on, a row per hour from 00 on,
/// with labels. A click on a box toggles it, and a drag from there gives the same state to all
/// boxes of the rectangle that it spans. A click on a label toggles its whole column or row. The
/// arrow keys go to boxes and labels alike, and a blank does what a click does. For the tab key the
/// grid is one stop.
class WeekGrid : public QWidget
{
    Q_OBJECT

public:
    static constexpr int days = 7;
    static constexpr int hours = 24;
    static constexpr int boxCount = days * hours;

    /// The boxes' object names are the given one, "_" and the box's index.
    explicit WeekGrid(const QString &boxName);

    /// The boxes by their indexes, see boxIndex().
    const QList<QCheckBox *> &boxes() const { return m_boxes; }

    /// The labels of the days stay at the top of a pane that the grid is in while its hours scroll.
    void keepDaysInSight(QScrollArea *pane);

    /// The index of an hour's box; day 1 is Monday.
    static constexpr int boxIndex(int day, int hour) { return hour + hours * (day - 1); }
    static constexpr int dayOf(int boxIndex) { return boxIndex / hours + 1; }
    static constexpr int hourOf(int boxIndex) { return boxIndex % hours; }

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    /// What began with a press on a box.
    struct Drag
    {
        int from;
        bool ticks;         ///< whether boxes are ticked by it, or unticked
        QList<bool> before; ///< of each box, whether it was ticked
    };

    void addLabels();
    void addLabel(const QString &text, const QString &meaning, int row, int column);
    void equalizeColumns();
    void addBoxes(const QString &boxName);
    void addCell(QWidget *cell, int row, int column);
    void placeDays();
    void toggleAll(int row, int column);
    int boxAt(QPoint position) const;
    void beginDrag(int box);
    void dragTo(int box);
    bool moveFocus(QWidget *cell, int key);
    void makeTabStop(QWidget *cell);

    QScrollArea *m_pane = nullptr;
    QGridLayout *m_cells; // row 0 holds the labels of the days, column 0 those of the hours
    QList<QCheckBox *> m_boxes;
    QWidget *m_tabStop = nullptr;
    std::optional<Drag> m_drag;
};

} // namespace ui
