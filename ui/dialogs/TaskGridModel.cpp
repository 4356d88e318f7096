#include "ui/dialogs/TaskGridModel.h"

#include "store/Recordset.h"

#include <QBrush>

namespace ui {

using namespace Qt::StringLiterals;

const std::array<TaskColumn, taskColumnCount> &taskColumns()
{
    static const std::array<TaskColumn, taskColumnCount> columns{{{u"Taskname"_s, 2200},
                                                                  {u"Download address"_s, 3950},
                                                                  {u"Filename"_s, 1800},
                                                                  {{}, 0},
                                                                  {u"Active"_s, 650}}};
    return columns;
}

static constexpr std::size_t activeColumn = 4;

void TaskGridModel::bind(store::Recordset &rows)
{
    beginResetModel();
    m_rows.clear();
    for (; !rows.atEnd(); rows.moveNext()) {
        Row &row = m_rows.emplace_back();
        for (int field = 0; field < taskColumnCount; ++field)
            if (rows.holdsValue(field))
                row[static_cast<std::size_t>(field)] = rows.value(field).toText();
    }
    if (!m_rows.empty())
        rows.moveFirst();
    endResetModel();
}

int TaskGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TaskGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : taskColumnCount;
}

const QString &TaskGridModel::text(const QModelIndex &index) const
{
    return m_rows[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
}

bool TaskGridModel::isInactive(int row) const
{
    return m_rows[static_cast<std::size_t>(row)][activeColumn] == u"False"_s;
}

// Inactive tasks stand on red. Black on it is read well, unlike red on white or on a dark ground.
QVariant TaskGridModel::data(const QModelIndex &index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return text(index);
    case Qt::BackgroundRole:
        return isInactive(index.row()) ? QBrush(QColor(0xFF, 0x00, 0x00)) : QVariant();
    case Qt::ForegroundRole:
        return isInactive(index.row()) ? QBrush(Qt::black) : QVariant();
    default:
        return {};
    }
}

QVariant TaskGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return taskColumns()[static_cast<std::size_t>(section)].title;
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default:
        return {};
    }
}

} // namespace ui
