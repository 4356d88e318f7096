#pragma once

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

namespace store {
class Recordset;
}

namespace ui {

/// A column of the task list.
struct TaskColumn
{
    QString title;
    int twips; ///< width, 15 of them being one logical pixel; a column without width is hidden
};

/// The columns in the order of the table's fields.
const QList<TaskColumn> &taskColumns();

/// The tasks as texts, for a grid: one row per row of a recordset, as it was when it was bound.
class TaskGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Takes over the rows of an open recordset, whose first row becomes the current one. An empty
    /// field gives an empty text.
    void bind(store::Recordset &rows);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    bool isInactive(int row) const;

    QList<QStringList> m_rows;
};

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
