#pragma once

#include <QStyledItemDelegate>

namespace ui {

/// Draws the cells of the task list. A coloured row keeps its colour, in a darker shade, when it is
/// selected. A text that has no room is cut, and shown whole as a tool tip.
class TaskCells : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace ui
