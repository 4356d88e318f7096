#pragma once

#include <QStyledItemDelegate>

namespace ui {

/// Shows cells whose text has no room in them cut, with the whole text as a tool tip.
class ElidedTexts : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
};

} // namespace ui
