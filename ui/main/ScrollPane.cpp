#include "ui/main/ScrollPane.h"

#include <QApplication>
#include <QBoxLayout>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace ui {

ScrollPane::ScrollPane(QWidget *content)
{
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget *, const QWidget *focused) { showFocus(focused); });
}

QSize ScrollPane::sizeHint() const
{
    return widget()->sizeHint();
}

QSize ScrollPane::minimumSizeHint() const
{
    const int scrollBar = verticalScrollBar()->sizeHint().width();
    return {2 * scrollBar, 2 * scrollBar};
}

// Nothing moves away under a mouse that is pressed.
void ScrollPane::showFocus(const QWidget *focused)
{
    if (!focused || !widget()->isAncestorOf(focused) || QApplication::mouseButtons())
        return;
    const QSize margins = 2 * focused->size(); // what stands beside it is seen as well
    const QPoint centre = focused->mapTo(widget(), focused->rect().center());
    ensureVisible(centre.x(), centre.y(), std::min(margins.width(), viewport()->width() / 2),
                  std::min(margins.height(), viewport()->height() / 2));
}

// Before its first window has a frame, the toolkit reckons with the same.
static constexpr QSize usualFrame(10, 40);

void fitToDisplay(QWidget &window, QSize preferred)
{
    const QWidget *parent = window.parentWidget() ? window.parentWidget()->window() : &window;
    const QSize frame =
        usualFrame.expandedTo(parent->frameGeometry().size() - parent->geometry().size());
    window.resize(preferred.boundedTo(parent->screen()->availableSize() - frame));
}

QLayout *betweenYieldingMargins(QLayout *content)
{
    const auto usual = [](QStyle::PixelMetric margin) {
        return QApplication::style()->pixelMetric(margin);
    };
    const auto yielding = [](int width) { return new QSpacerItem(width, 0, QSizePolicy::Maximum); };
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, usual(QStyle::PM_LayoutTopMargin), 0,
                            usual(QStyle::PM_LayoutBottomMargin));
    row->addItem(yielding(usual(QStyle::PM_LayoutLeftMargin)));
    row->addLayout(content, 1);
    row->addItem(yielding(usual(QStyle::PM_LayoutRightMargin)));
    return row;
}

} // namespace ui
