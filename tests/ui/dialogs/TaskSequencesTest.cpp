#include "tests/ui/dialogs/Editor.h"
#include "tests/ui/dialogs/TaskListTest.h"

#include <algorithm>
#include <random>

using store::sOpdrachtnaam;

namespace {

enum Field { Name, Address, FileName, Minute, Active };

bool areEqual(const QString &name, const QString &other)
{
    return name.compare(other, Qt::CaseInsensitive) == 0;
}

// The two tables as plain lists, changed as saving and deleting are to change them.
struct Tables
{
    QList<Task> tasks;
    QList<std::pair<QString, int>> slotRows; // task name and box index

    // The row, from 1, of the first task of that name.
    int rowOf(const QString &name) const
    {
        const auto isIt = [&](const Task &task) { return areEqual(task[Name], name); };
        return int(std::find_if(tasks.begin(), tasks.end(), isIt) - tasks.begin()) + 1;
    }

    Hours hoursOf(const QString &name) const
    {
        Hours hours;
        for (const auto &[task, hour] : slotRows)
            if (areEqual(task, name))
                hours << hour;
        std::sort(hours.begin(), hours.end());
        hours.erase(std::unique(hours.begin(), hours.end()), hours.end());
        return hours;
    }

    bool add(const Task &task, const Hours &hours)
    {
        if (rowOf(task[Name]) <= tasks.size())
            return false;
        tasks << task;
        addSlots(task[Name], hours);
        return true;
    }

    void change(const QString &name, const Task &task, const Hours &hours)
    {
        tasks[rowOf(name) - 1] = task;
        slotRows.removeIf([&](const auto &slot) { return areEqual(slot.first, task[Name]); });
        addSlots(task[Name], hours);
    }

    void addSlots(const QString &name, const Hours &hours)
    {
        for (const int hour : hours)
            slotRows.emplace_back(name, hour);
    }

    QStringList rows() const
    {
        QStringList rows;
        for (const Task &task : tasks)
            rows << task.join(u'|');
        for (const auto &[name, hour] : slotRows)
            rows << u"%1|%2|%3"_s.arg(name).arg(hour / 24 + 1).arg(hour % 24);
        return rows;
    }
};

// The list and the real editor, worked by a user who acts at random.
class TaskSequences : public TaskListTest, public testing::WithParamInterface<unsigned>
{
protected:
    int pick(int count) { return std::uniform_int_distribution(0, count - 1)(random); }
    bool oneIn(int count) { return pick(count) == 0; }

    void changeAtRandom(Task &task, Hours &hours, const ui::MinuteCombo &freeMinutes)
    {
        // Few names, so that they meet; some differ in case only.
        const QStringList names = {u"News"_s,    u"NEWS"_s,    u"Kid's hour"_s, u"''"_s,
                                   u"été d'Ö"_s, u"ÉTÉ D'ö"_s, u"100% _*?"_s};
        const auto change = [&](Field field, const QString &text) {
            if (task[field].isEmpty() || oneIn(3))
                task[field] = text;
        };
        change(Name, names[pick(int(names.size()))]);
        change(Address, u"http://a/"_s + QString(pick(40), u'x'));
        change(FileName, QString(1 + pick(40), u'f'));
        // Late minutes stay free: a late one that two tasks share keeps the editor from opening.
        change(Minute, freeMinutes.itemText(pick(20)));
        change(Active, oneIn(2) ? u"True"_s : u"False"_s);
        while (hours.empty() || oneIn(2))
            if (const int hour = pick(168); !hours.removeOne(hour))
                hours.insert(std::lower_bound(hours.begin(), hours.end(), hour), hour);
    }

    void useEditor(bool isNew)
    {
        Editor editor(list.get());
        const QString edited = sOpdrachtnaam;
        Task task =
            isNew ? Task{{}, {}, {}, {}, u"False"_s} : tables.tasks[tables.rowOf(edited) - 1];
        Hours hours = isNew ? Hours() : tables.hoursOf(edited);
        EXPECT_EQ(editor.task(), task);
        EXPECT_EQ(editor.hours(), hours);
        changeAtRandom(task, hours, *editor.minutes());
        editor.fill(task, hours);

        selected = isNew ? 1 : tables.rowOf(edited);
        if (oneIn(6)) {
            editor.reject();
            return;
        }
        editor.save();
        bool saved = true;
        if (isNew)
            saved = tables.add(task, hours);
        else
            tables.change(edited, task, hours);
        if (saved)
            selected = tables.rowOf(task[Name]);
        EXPECT_EQ(editor.result(), saved ? QDialog::Accepted : QDialog::Rejected);
    }

    void deleteAtRandom(int row)
    {
        const bool answer = !oneIn(4);
        selected = answer ? 1 : row;
        if (answer)
            tables.tasks.removeAt(row - 1);
        clickDelete(answer);
    }

    void act()
    {
        const bool isNew = !canChange() || oneIn(3);
        edit = [this, isNew] { useEditor(isNew); };
        if (isNew)
            return clickNew();
        const int row = 1 + pick(int(tables.tasks.size()));
        clickRow(row);
        if (oneIn(3))
            return deleteAtRandom(row);
        clickModify();
    }

    void expectTables() const
    {
        QList<Task> shown;
        for (int row = 1; row <= names().size(); ++row)
            shown << Task{cell(row, 0), cell(row, 1), cell(row, 2), cell(row, 3), cell(row, 4)};
        EXPECT_EQ(shown, tables.tasks);
        EXPECT_EQ(stored(), tables.rows());
        EXPECT_EQ(selectedRow(), tables.tasks.empty() ? 0 : selected);
        EXPECT_EQ(canChange(), !tables.tasks.empty());
    }

    std::mt19937 random{GetParam()};
    Tables tables;
    int selected = 1;
};

} // namespace

TEST_P(TaskSequences, LeaveTheTablesAsTheyShould)
{
    openList();
    for (int step = 1; step <= 60 && !HasFailure(); ++step) {
        SCOPED_TRACE(step);
        act();
        expectTables();
    }
    EXPECT_EQ(host.endings, QList<int>{});
}

INSTANTIATE_TEST_SUITE_P(Seeds, TaskSequences, testing::Values(1U, 2U, 3U));
