#include "ui/dialogs/TaskGrid.h"

#include "store/Recordset.h"

#include <QAbstractItemView>
#include <QBrush>
#include <QHelpEvent>
#include <QToolTip>

namespace ui {

using namespace Qt::StringLiterals;

const QList<TaskColumn> &taskColumns()
{
    static const QList<TaskColumn> columns = {{u"Taskname"_s, 2200},
                                              {u"Download address"_s, 3950},
                                              {u"Filename"_s, 1800},
                                              {{}, 0}, // minutes
                                              {u"Active"_s, 650}};
    return columns;
}

void TaskGridModel::bind(store::Recordset &rows)
{
    beginResetModel();
    m_rows.clear();
    for (; !rows.atEnd(); rows.moveNext()) {
        QStringList texts;
        for (int field = 0; field < taskColumns().size(); ++field)
            texts << (rows.holdsValue(field) ? rows.value(field).toText() : QString());
        m_rows << texts;
    }
    if (!m_rows.isEmpty())
        rows.moveFirst();
    endResetModel();
}

int TaskGridModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TaskGridModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(taskColumns().size());
}

bool TaskGridModel::isInactive(int row) const
{
    return m_rows[row].last() == u"False"_s;
}

// Inactive tasks stand on red. Black on it is read well, unlike red on white or on a dark ground.
QVariant TaskGridModel::data(const QModelIndex &index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return m_rows[index.row()][index.column()];
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
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return taskColumns()[section].title;
}

bool TaskCells::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                          const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QString text;
    if (sizeHint(option, index).width() > option.rect.width())
        text = u"<span>"_s + index.data().toString().toHtmlEscaped() + u"</span>"_s;
    QToolTip::showText(event->globalPos(), text, view);
    return true;
}

void TaskCells::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->backgroundBrush.style() == Qt::NoBrush)
        return;
    constexpr int shade = 160; // percent
    option->palette.setColor(QPalette::Highlight, option->backgroundBrush.color().darker(shade));
    option->palette.setColor(QPalette::HighlightedText, Qt::white);
}

} // namespace ui
