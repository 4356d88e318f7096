#include "ui/dialogs/TaskCells.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace ui {

using namespace Qt::StringLiterals;

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
