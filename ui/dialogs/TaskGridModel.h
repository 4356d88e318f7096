#pragma once

#include <QAbstractTableModel>

#include <array>
#include <vector>

namespace store {
class Recordset;
}

namespace ui {

/// The columns of the task list, in the order of the table's fields.
struct TaskColumn
{
    QString title;
    int twips; ///< width, 15 of them being one logical pixel; a column without width is hidden
};
inline constexpr int taskColumnCount = 5;
const std::array<TaskColumn, taskColumnCount> &taskColumns();

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
    using Row = std::array<QString, taskColumnCount>;

    const QString &text(const QModelIndex &index) const;
    bool isInactive(int row) const;

    std::vector<Row> m_rows;
};

} // namespace ui
