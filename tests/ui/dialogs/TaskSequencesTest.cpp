#include "store/TaskStore.h"
#include "tests/support/Print.h"
#include "tests/ui/dialogs/TaskListTest.h"
#include "ui/dialogs/MinuteCombo.h"
#include "ui/dialogs/frmSchedule.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <random>
#include <set>

using namespace Qt::StringLiterals;
using store::sOpdrachtnaam;

namespace {

// What the editor shows of a task.
struct Task
{
    QString name;
    QString address;
    QString fileName;
    QString minute;
    bool active = false;

    QString row() const
    {
        return QStringList{name, address, fileName, minute, active ? u"True"_s : u"False"_s}.join(
            u'|');
    }
};

// The hours of a task, by the indexes of their boxes.
using Hours = std::set<int>;

bool areEqual(const QString &name, const QString &other)
{
    return name.compare(other, Qt::CaseInsensitive) == 0;
}

// The two tables as plain lists, changed as saving and deleting are to change them.
struct Tables
{
    std::vector<Task> tasks;
    std::vector<std::pair<QString, int>> slotRows; // task name and box index

    auto find(const QString &name)
    {
        return std::find_if(tasks.begin(), tasks.end(),
                            [&](const Task &task) { return areEqual(task.name, name); });
    }

    int rowOf(const QString &name) { return static_cast<int>(find(name) - tasks.begin()) + 1; }

    Hours hoursOf(const QString &name) const
    {
        Hours hours;
        for (const auto &[task, hour] : slotRows)
            if (areEqual(task, name))
                hours.insert(hour);
        return hours;
    }

    bool add(const Task &task, const Hours &hours)
    {
        if (find(task.name) != tasks.end())
            return false;
        tasks.push_back(task);
        addSlots(task.name, hours);
        return true;
    }

    void change(const QString &name, const Task &task, const Hours &hours)
    {
        *find(name) = task;
        std::erase_if(slotRows, [&](const auto &slot) { return areEqual(slot.first, task.name); });
        addSlots(task.name, hours);
    }

    void addSlots(const QString &name, const Hours &hours)
    {
        for (const int hour : hours)
            slotRows.emplace_back(name, hour);
    }

    QStringList taskRows() const
    {
        QStringList rows;
        for (const Task &task : tasks)
            rows << task.row();
        return rows;
    }

    QStringList rows() const
    {
        QStringList rows = taskRows();
        for (const auto &[name, hour] : slotRows)
            rows << u"%1|%2|%3"_s.arg(name).arg(hour / 24 + 1).arg(hour % 24);
        return rows;
    }
};

// The list with the real editor, worked by a user who acts at random.
class TaskSequences : public TaskListTest, public testing::WithParamInterface<unsigned>
{
protected:
    int pick(int count) { return std::uniform_int_distribution(0, count - 1)(random); }
    bool oneIn(int count) { return pick(count) == 0; }

    // Few names, so that they meet; some differ in case only.
    QString pickName()
    {
        const QString names[] = {u"News"_s,    u"NEWS"_s,    u"Kid's hour"_s, u"''"_s,
                                 u"été d'Ö"_s, u"ÉTÉ D'ö"_s, u"100% _*?"_s,   u"Noon"_s};
        return names[pick(std::size(names))];
    }

    QString pickText() { return QString(1 + pick(40), QChar(u'a' + pick(26))); }

    void changeAtRandom(Task &task, Hours &hours, const ui::MinuteCombo &freeMinutes)
    {
        if (task.name.isEmpty() || oneIn(3))
            task.name = pickName();
        if (task.address.isEmpty() || oneIn(3))
            task.address = u"http://a/"_s + pickText();
        if (task.fileName.isEmpty() || oneIn(3))
            task.fileName = pickText();
        // Late minutes stay free: a late one that two tasks share keeps the editor from opening.
        if (task.minute.isEmpty() || oneIn(3))
            task.minute = freeMinutes.itemText(pick(20));
        if (oneIn(3))
            task.active = !task.active;
        while (hours.empty() || oneIn(2))
            if (const int hour = pick(168); !hours.erase(hour))
                hours.insert(hour);
    }

    // One visit to the editor: what it shows is checked and changed, then saved or not.
    void useEditor(bool isNew)
    {
        ui::frmSchedule editor(list.get());
        editor.show();
        const auto text = [&](const QString &name) { return editor.findChild<QLineEdit *>(name); };
        const auto box = [&](const QString &name) { return editor.findChild<QCheckBox *>(name); };
        auto *minutes = editor.findChild<ui::MinuteCombo *>();
        const auto hourBox = [&](int hour) { return box(u"Check1_%1"_s.arg(hour)); };

        const QString edited = sOpdrachtnaam;
        Task task = isNew ? Task() : *tables.find(edited);
        Hours hours = isNew ? Hours() : tables.hoursOf(edited);
        const Task shown = {text(u"txtOpdrachtnaam"_s)->text(),
                            text(u"txtDownload_adres"_s)->text(), text(u"txtFilenaam"_s)->text(),
                            minutes->text(), box(u"CheckAktief"_s)->isChecked()};
        EXPECT_EQ(shown.row(), task.row());
        for (int hour = 0; hour < 168; ++hour)
            EXPECT_EQ(hourBox(hour)->isChecked(), hours.contains(hour)) << "hour " << hour;

        changeAtRandom(task, hours, *minutes);
        text(u"txtOpdrachtnaam"_s)->setText(task.name);
        text(u"txtDownload_adres"_s)->setText(task.address);
        text(u"txtFilenaam"_s)->setText(task.fileName);
        minutes->setText(task.minute);
        box(u"CheckAktief"_s)->setChecked(task.active);
        for (int hour = 0; hour < 168; ++hour)
            hourBox(hour)->setChecked(hours.contains(hour));

        selected = isNew ? 1 : tables.rowOf(edited);
        const bool saves = !oneIn(6);
        QTest::mouseClick(editor.findChild<QPushButton *>(saves ? u"Opslaan"_s : u"Annuleren"_s),
                          Qt::LeftButton);
        bool saved = saves;
        if (saves && isNew)
            saved = tables.add(task, hours);
        else if (saves)
            tables.change(edited, task, hours);
        if (saved)
            selected = tables.rowOf(task.name);
        EXPECT_EQ(editor.isVisible(), saves && !saved);
    }

    void deleteAtRandom(int row)
    {
        host.answers = {!oneIn(4)};
        selected = row;
        if (host.answers[0]) {
            tables.tasks.erase(tables.tasks.begin() + row - 1);
            selected = 1;
        }
        click(u"Verwijderen"_s);
    }

    void act()
    {
        if (!canChange() || oneIn(3)) {
            edit = [this] { useEditor(true); };
            click(u"Toevoegen"_s);
            return;
        }
        const int row = 1 + pick(static_cast<int>(tables.tasks.size()));
        clickRow(row);
        edit = [this] { useEditor(false); };
        if (oneIn(3))
            deleteAtRandom(row);
        else
            click(u"Wijzigen"_s);
    }

    void expectTables() const
    {
        QStringList grid;
        for (int row = 1; row <= names().size(); ++row)
            grid << QStringList{cell(row, 0), cell(row, 1), cell(row, 2), cell(row, 3),
                                cell(row, 4)}
                        .join(u'|');
        EXPECT_EQ(grid, tables.taskRows());
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
    for (const platform::MessageIcon icon : host.messageIcons)
        EXPECT_EQ(icon, platform::MessageIcon::Critical);
    EXPECT_EQ(host.endings, QList<int>{});
}

INSTANTIATE_TEST_SUITE_P(Seeds, TaskSequences, testing::Values(1U, 2U, 3U));
