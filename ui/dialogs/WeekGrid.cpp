#include "ui/dialogs/WeekGrid.h"

#include "ui/main/DisplayText.h"
#include "ui/main/Widgets.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QToolButton>

#include <algorithm>
#include <functional>
#include <utility>

namespace ui {

using namespace Qt::StringLiterals;

namespace {

// A check box without a text on a light ground of its own. Its marks are those of a light theme
// whatever theme is in force, so that they can be read on that ground. It leaves the mouse to the
// grid.
class HourBox : public QCheckBox
{
public:
    explicit HourBox(const QColor &ground, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QColor m_ground;
};

// The label of a day or an hour, which may shrink to its text.
class Label : public QToolButton
{
public:
    QSize minimumSizeHint() const override
    {
        constexpr int gap = 2; // to the next text
        return {fontMetrics().horizontalAdvance(text()) + gap, fontMetrics().height()};
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter(this).fillRect(rect(), palette().window()); // above the hours that scroll
        QToolButton::paintEvent(event);
    }
};

} // namespace

HourBox::HourBox(const QColor &ground, QWidget *parent)
    : QCheckBox(parent)
    , m_ground(ground)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

static QSize indicatorSize(const QStyle *style, const QWidget *widget)
{
    return {style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, widget),
            style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, widget)};
}

QSize HourBox::sizeHint() const
{
    return indicatorSize(style(), this) + QSize(12, 5);
}

QSize HourBox::minimumSizeHint() const
{
    return indicatorSize(style(), this);
}

void HourBox::paintEvent(QPaintEvent *)
{
    static const QPalette lightTheme(QColor(0xEF, 0xEF, 0xEF));
    QStylePainter painter(this);
    painter.fillRect(rect(), m_ground);

    QStyleOptionButton indicator;
    initStyleOption(&indicator);
    indicator.palette = lightTheme;
    indicator.rect = QStyle::alignedRect(layoutDirection(), Qt::AlignCenter,
                                         indicatorSize(style(), this), rect());
    painter.drawPrimitive(QStyle::PE_IndicatorCheckBox, indicator);

    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.palette = lightTheme;
        focus.backgroundColor = m_ground;
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

void HourBox::mousePressEvent(QMouseEvent *event)
{
    event->ignore();
}

void HourBox::mouseMoveEvent(QMouseEvent *event)
{
    event->ignore();
}

void HourBox::mouseReleaseEvent(QMouseEvent *event)
{
    event->ignore();
}

static QString dayName(int day)
{
    static const QStringList names = {u"Monday"_s, u"Tuesday"_s,  u"Wednesday"_s, u"Thursday"_s,
                                      u"Friday"_s, u"Saturday"_s, u"Sunday"_s};
    return names[day - 1];
}

WeekGrid::WeekGrid(const QString &boxName)
    : m_cells(new QGridLayout(this))
{
    m_cells->setContentsMargins(0, 0, 0, 0);
    m_cells->setSpacing(0);
    addLabels();
    addBoxes(boxName);
    makeTabStop(m_boxes.front());
}

void WeekGrid::addLabels()
{
    auto *corner = new QLabel(u"Hour"_s);
    corner->setAlignment(Qt::AlignCenter);
    corner->setAutoFillBackground(true);
    m_cells->addWidget(corner, 0, 0);
    for (int day = 1; day <= days; ++day)
        addLabel(dayName(day).first(3), dayName(day) + u", all hours"_s, 0, day);
    for (int hour = 0; hour < hours; ++hour)
        addLabel(twoDigits(hour), twoDigits(hour) + u", all days"_s, hour + 1, 0);
    equalizeColumns();
}

void WeekGrid::equalizeColumns()
{
    int widest = 0;
    for (int day = 1; day <= days; ++day)
        widest = std::max(widest, m_cells->itemAtPosition(0, day)->minimumSize().width());
    for (int day = 1; day <= days; ++day) {
        m_cells->setColumnMinimumWidth(day, widest);
        m_cells->setColumnStretch(day, 1);
    }
}

void WeekGrid::addLabel(const QString &text, const QString &meaning, int row, int column)
{
    auto *label = new Label;
    label->setText(text);
    label->setAccessibleName(meaning);
    label->setToolTip(meaning);
    label->setAutoRaise(true);
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(label, &QToolButton::clicked, this, [=, this] { toggleAll(row, column); });
    addCell(label, row, column);
}

void WeekGrid::addBoxes(const QString &boxName)
{
    constexpr QColor evenHour(0xFF, 0xFF, 0x80);
    constexpr QColor oddHour(0xFF, 0xFF, 0xC0);
    for (int index = 0; index < boxCount; ++index) {
        const int day = dayOf(index);
        const int hour = hourOf(index);
        auto *box = named<HourBox>(boxName + u'_' + QString::number(index),
                                   hour % 2 == 0 ? evenHour : oddHour);
        box->setAccessibleName(dayName(day) + u' ' + twoDigits(hour));
        m_boxes << box;
        addCell(box, hour + 1, day);
    }
}

void WeekGrid::addCell(QWidget *cell, int row, int column)
{
    cell->setFocusPolicy(Qt::ClickFocus);
    cell->installEventFilter(this);
    m_cells->addWidget(cell, row, column);
}

void WeekGrid::keepDaysInSight(QScrollArea *pane)
{
    m_pane = pane;
    connect(pane->verticalScrollBar(), &QScrollBar::valueChanged, this, &WeekGrid::placeDays);
}

void WeekGrid::placeDays()
{
    if (!m_pane)
        return;
    const int lastRow = m_boxes.back()->y();
    const int top = std::clamp(
        mapFrom(m_pane->widget(), QPoint(0, m_pane->verticalScrollBar()->value())).y(), 0, lastRow);
    for (int column = 0; column <= days; ++column) {
        QWidget *label = m_cells->itemAtPosition(0, column)->widget();
        label->move(label->x(), top);
        label->raise();
    }
}

// The layout has put the labels back to their places.
void WeekGrid::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeDays();
}

// Ticks the boxes of a row or column, or unticks them when all are ticked. 0 stands for every one.
void WeekGrid::toggleAll(int row, int column)
{
    QList<QCheckBox *> meant;
    for (int index = 0; index < boxCount; ++index)
        if ((row == 0 || row == hourOf(index) + 1) && (column == 0 || column == dayOf(index)))
            meant << m_boxes[index];
    const bool areTicked =
        std::all_of(meant.begin(), meant.end(), std::mem_fn(&QCheckBox::isChecked));
    for (QCheckBox *box : std::as_const(meant))
        box->setChecked(!areTicked);
}

bool WeekGrid::eventFilter(QObject *watched, QEvent *event)
{
    auto *cell = static_cast<QWidget *>(watched);
    if (event->type() == QEvent::FocusIn)
        makeTabStop(cell);
    return event->type() == QEvent::KeyPress &&
           moveFocus(cell, static_cast<QKeyEvent *>(event)->key());
}

// The one cell that the tab key reaches is the latest that had the focus.
void WeekGrid::makeTabStop(QWidget *cell)
{
    if (m_tabStop)
        m_tabStop->setFocusPolicy(Qt::ClickFocus);
    m_tabStop = cell;
    m_tabStop->setFocusPolicy(Qt::StrongFocus);
}

// Returns whether the key is one that moves the focus, which stays inside the grid.
bool WeekGrid::moveFocus(QWidget *cell, int key)
{
    int row = 0;
    int column = 0;
    int rowSpan = 0;
    int columnSpan = 0;
    m_cells->getItemPosition(m_cells->indexOf(cell), &row, &column, &rowSpan, &columnSpan);
    switch (key) {
    case Qt::Key_Left:
        --column;
        break;
    case Qt::Key_Right:
        ++column;
        break;
    case Qt::Key_Up:
        --row;
        break;
    case Qt::Key_Down:
        ++row;
        break;
    default:
        return false;
    }
    QLayoutItem *neighbour = m_cells->itemAtPosition(row, column);
    if (neighbour && neighbour->widget()->focusPolicy() != Qt::NoFocus) {
        window()->setAttribute(Qt::WA_KeyboardFocusChange); // the focus is to be seen
        neighbour->widget()->setFocus();
    }
    return true;
}

// The index of the box at the position, or -1.
int WeekGrid::boxAt(QPoint position) const
{
    return static_cast<int>(m_boxes.indexOf(childAt(position)));
}

void WeekGrid::mousePressEvent(QMouseEvent *event)
{
    const int box = boxAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && box >= 0)
        beginDrag(box);
}

void WeekGrid::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_drag)
        return;
    const QRect area = m_boxes.front()->geometry() | m_boxes.back()->geometry();
    const QPoint position = event->position().toPoint();
    dragTo(boxAt({std::clamp(position.x(), area.left(), area.right()),
                  std::clamp(position.y(), area.top(), area.bottom())}));
}

void WeekGrid::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_drag.reset();
}

void WeekGrid::beginDrag(int box)
{
    m_drag = Drag{.from = box, .ticks = !m_boxes[box]->isChecked(), .before = {}};
    for (const QCheckBox *each : std::as_const(m_boxes))
        m_drag->before << each->isChecked();
    dragTo(box);
}

// Boxes that the drag spanned before and spans no more are as they were.
void WeekGrid::dragTo(int box)
{
    const auto [firstDay, lastDay] = std::minmax({dayOf(m_drag->from), dayOf(box)});
    const auto [firstHour, lastHour] = std::minmax({hourOf(m_drag->from), hourOf(box)});
    for (int index = 0; index < boxCount; ++index) {
        const int day = dayOf(index);
        const int hour = hourOf(index);
        const bool isSpanned =
            day >= firstDay && day <= lastDay && hour >= firstHour && hour <= lastHour;
        m_boxes[index]->setChecked(isSpanned ? m_drag->ticks : m_drag->before[index]);
    }
}

} // namespace ui
