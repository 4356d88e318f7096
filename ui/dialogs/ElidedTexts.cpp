#include "ui/dialogs/ElidedTexts.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace ui {

using namespace Qt::StringLiterals;

bool ElidedTexts::helpEvent(QHelpEvent *event, QAbstractItemView *view,
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

} // namespace ui
