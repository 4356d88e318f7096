#include "tests/ui/dialogs/Editor.h"

#include <QToolButton>
#include <QWindow>

namespace {

/// The week grid in the task editor, which takes the mouse as the window system tells it.
class WeekGrid : public TaskEditorTest
{
protected:
    WeekGrid() { openEditor(); }

    QCheckBox *box(int day, int hour) const { return editor->box(hour + 24 * (day - 1)); }
    QToolButton *label(const QString &text) const
    {
        for (auto *button : editor->findChildren<QToolButton *>())
            if (button->text() == text)
                return button;
        return nullptr;
    }
    QPoint centre(const QWidget *widget) const
    {
        return widget->mapTo(editor.get(), widget->rect().center());
    }
    void moveTo(QPoint position) const { QTest::mouseMove(editor->windowHandle(), position); }
    void clickOn(const QWidget *widget) const
    {
        QTest::mouseClick(editor->windowHandle(), Qt::LeftButton, {}, centre(widget));
    }

    /// The boxes of all hours from one to another on all days from one to another.
    static Hours range(int firstDay, int lastDay, int firstHour, int lastHour)
    {
        Hours boxes;
        for (int day = firstDay; day <= lastDay; ++day)
            for (int hour = firstHour; hour <= lastHour; ++hour)
                boxes << hour + 24 * (day - 1);
        return boxes;
    }
};

} // namespace

TEST_F(WeekGrid, HasAColumnPerDayAndARowPerHour)
{
    const QStringList days =
        u"Monday Tuesday Wednesday Thursday Friday Saturday Sunday"_s.split(u' ');
    for (int day = 1; day <= 7; ++day)
        for (int hour = 0; hour < 24; ++hour) {
            const QString hourText = u"%1"_s.arg(hour, 2, 10, QChar(u'0'));
            const QRect column = label(days[day - 1].first(3))->geometry();
            const QRect row = label(hourText)->geometry();
            EXPECT_EQ(box(day, hour)->geometry(),
                      QRect(column.x(), row.y(), column.width(), row.height()));
            EXPECT_EQ(box(day, hour)->accessibleName(), days[day - 1] + u' ' + hourText);
        }
    EXPECT_LT(label(u"00"_s)->x(), label(u"Mon"_s)->x());
    EXPECT_LT(label(u"Mon"_s)->x(), label(u"Tue"_s)->x());
    EXPECT_LT(label(u"Mon"_s)->y(), label(u"00"_s)->y());
    EXPECT_LT(label(u"00"_s)->y(), label(u"01"_s)->y());
}

TEST_F(WeekGrid, IsLightInEveryTheme)
{
    box(3, 1)->setChecked(true);
    const QImage even = box(3, 0)->grab().toImage();
    const QImage odd = box(3, 1)->grab().toImage();
    EXPECT_EQ(even.pixelColor(1, 1), QColor(0xFF, 0xFF, 0x80));
    EXPECT_EQ(odd.pixelColor(1, 1), QColor(0xFF, 0xFF, 0xC0));
    editor->setPalette(QPalette(QColor(0x20, 0x20, 0x20)));
    EXPECT_EQ(box(3, 0)->grab().toImage(), even);
    EXPECT_EQ(box(3, 1)->grab().toImage(), odd);
    box(3, 1)->setChecked(false);
    EXPECT_NE(box(3, 1)->grab().toImage(), odd); // the mark is seen
}

TEST_F(WeekGrid, ADragGivesABoxesRectangleOneState)
{
    clickOn(box(4, 10));
    EXPECT_EQ(editor->hours(), range(4, 4, 10, 10));
    clickOn(box(4, 10));
    EXPECT_EQ(editor->hours(), Hours());

    clickOn(box(6, 5));
    QTest::mousePress(editor->windowHandle(), Qt::LeftButton, {}, centre(box(2, 3)));
    moveTo(centre(box(6, 6))); // passes over boxes without telling
    EXPECT_EQ(editor->hours(), range(2, 6, 3, 6));
    moveTo(centre(box(4, 4))); // and back: what is left is as it was
    EXPECT_EQ(editor->hours(), range(2, 4, 3, 4) + range(6, 6, 5, 5));
    moveTo(centre(box(1, 2)));
    QTest::mouseRelease(editor->windowHandle(), Qt::LeftButton, {}, centre(box(1, 2)));
    moveTo(centre(box(7, 23)));
    EXPECT_EQ(editor->hours(), range(1, 2, 2, 3) + range(6, 6, 5, 5));

    // from a ticked box on it unticks, and beyond the last box it goes on
    QTest::mousePress(editor->windowHandle(), Qt::LeftButton, {}, centre(box(1, 2)));
    moveTo({editor->width() - 1, editor->height() - 1});
    EXPECT_EQ(editor->hours(), Hours());
}

TEST_F(WeekGrid, AClickOnALabelTogglesItsColumnOrRow)
{
    clickOn(box(7, 23));
    const std::pair<QString, Hours> clicks[] = {
        {u"Sun"_s, range(7, 7, 0, 23)},
        {u"07"_s, range(1, 6, 7, 7) + range(7, 7, 0, 23)},
        {u"Sun"_s, range(1, 6, 7, 7)},
        {u"07"_s, range(1, 7, 7, 7)}, // ticked in part counts as not ticked
        {u"07"_s, {}},
    };
    for (const auto &[text, ticked] : clicks) {
        clickOn(label(text));
        EXPECT_EQ(editor->hours(), ticked) << text.toStdString();
    }
}

TEST_F(WeekGrid, ArrowKeysMoveAndABlankToggles)
{
    editor->minutes()->setFocus();
    const Hours tuesday = range(2, 2, 0, 23);
    const std::tuple<QList<Qt::Key>, QString, Hours> walks[] = {
        // keys, the cell that they lead to, and what is ticked then
        {{Qt::Key_Tab}, u"Monday 00"_s, {}},
        {{Qt::Key_Right, Qt::Key_Down, Qt::Key_Space}, u"Tuesday 01"_s, {25}},
        {{Qt::Key_Up, Qt::Key_Up, Qt::Key_Up}, u"Tuesday, all hours"_s, {25}},
        {{Qt::Key_Space, Qt::Key_Left, Qt::Key_Left}, u"Monday, all hours"_s, tuesday},
        {{Qt::Key_Down, Qt::Key_Left}, u"00, all days"_s, tuesday},
        {{Qt::Key_Tab}, {}, tuesday}, // the Save button
        {{Qt::Key_Backtab}, u"00, all days"_s, tuesday},
    };
    for (const auto &[keys, name, ticked] : walks) {
        for (const Qt::Key key : keys)
            QTest::keyClick(editor->windowHandle(), key);
        EXPECT_EQ(editor->focusWidget()->accessibleName(), name);
        EXPECT_EQ(editor->hours(), ticked) << name.toStdString();
    }
}
