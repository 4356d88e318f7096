#include "tests/ui/dialogs/TaskEditorTest.h"

#include "store/TaskStore.h"
#include "ui/dialogs/FreeMinutes.h"
#include "ui/dialogs/MinuteCombo.h"

#include <QGroupBox>
#include <QLabel>
#include <QTest>

void TaskEditorTest::openEditor(const QString &name)
{
    store::bNieuweOpdracht = platform::toBoolean(name.isEmpty());
    store::sOpdrachtnaam = name;
    editor = std::make_unique<ui::frmSchedule>();
    editor->show();
    editor->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
}

void TaskEditorTest::type(QStringView textBox, const QString &text) const
{
    control<QLineEdit>(textBox)->clear();
    control<QLineEdit>(textBox)->insert(text);
}

QString TaskEditorTest::minute() const
{
    return control<ui::MinuteCombo>(u"ComboMinuten")->text();
}

void TaskEditorTest::chooseMinute(const QString &minute) const
{
    auto *combo = control<QComboBox>(u"ComboMinuten");
    combo->setCurrentIndex(combo->findText(minute));
}

QCheckBox *TaskEditorTest::box(int day, int hour) const
{
    return editor->findChild<QCheckBox *>(u"Check1_%1"_s.arg(hour + 24 * (day - 1)));
}

QList<int> TaskEditorTest::tickedBoxes() const
{
    QList<int> ticked;
    for (int index = 0; index < 168; ++index)
        if (box(1, index)->isChecked())
            ticked << index;
    return ticked;
}

void TaskEditorTest::clickBox(int day, int hour) const
{
    QTest::mouseClick(box(day, hour), Qt::LeftButton);
}

void TaskEditorTest::save() const
{
    QTest::mouseClick(control<QPushButton>(u"Opslaan"), Qt::LeftButton);
}

TEST(FreeMinutes, AreRemovedByTheirPositions)
{
    struct Case
    {
        std::vector<int> taken;
        QStringList missing;
        std::optional<ErrorNumber> error = {};
    };
    const std::vector<Case> cases = {
        {{59, 0}, {u"59"_s, u"0"_s}},
        {{30, 30}, {u"30"_s, u"31"_s}}, // kept: the second takes the next higher one
        {{59, 59}, {}, ErrorNumber::InvalidProcedureCall},
        {{60}, {}, ErrorNumber::InvalidProcedureCall},
        {{-1}, {}, ErrorNumber::InvalidProcedureCall},
    };
    for (const auto &[taken, missing, error] : cases) {
        QStringList expected;
        for (int minute = 0; minute < 60 && !error; ++minute)
            if (!missing.contains(QString::number(minute)))
                expected << QString::number(minute);
        QStringList minutes;
        EXPECT_EQ(errorOf([&, &all = taken] { minutes = ui::freeMinutes(all); }), error);
        EXPECT_EQ(minutes, expected);
    }
}

TEST_F(TaskEditorTest, OpensEmptyForANewTask)
{
    addTask(u"Early"_s, u"a"_s, u"a"_s, 0);
    openEditor();
    EXPECT_EQ(editor->windowTitle(), u"Ostravelin 1.8.1"_s);
    QStringList captions;
    for (const QGroupBox *frame : editor->findChildren<QGroupBox *>())
        captions << frame->title();
    for (const QLabel *label : editor->findChildren<QLabel *>())
        captions << label->text();
    for (const QPushButton *button : editor->findChildren<QPushButton *>())
        captions << button->text();
    captions.sort();
    EXPECT_EQ(captions.join(u' '), u"&Cancel &Save Active: Download address: Download time "
                                   "Filename: Hour Minutes: Task data Taskname:"_s);

    const std::vector<std::pair<QStringView, int>> lengths = {
        {u"txtOpdrachtnaam", 20}, {u"txtDownload_adres", 100}, {u"txtFilenaam", 50}};
    for (const auto &[name, length] : lengths) {
        EXPECT_EQ(text(name), QString());
        type(name, QString(length + 1, u'x'));
        EXPECT_EQ(text(name).size(), length);
    }
    EXPECT_FALSE(control<QCheckBox>(u"CheckAktief")->isChecked());
    EXPECT_EQ(tickedBoxes(), QList<int>());

    auto *combo = control<QComboBox>(u"ComboMinuten");
    EXPECT_EQ(minute(), QString());
    QTest::keyClicks(combo, u"0"_s); // neither typed nor in the list
    EXPECT_EQ(minute(), QString());
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(minute(), u"1"_s);
}

TEST_F(TaskEditorTest, FocusGoesToTheNameAtActivation)
{
    openEditor();
    EXPECT_EQ(editor->focusWidget(), control<QLineEdit>(u"txtOpdrachtnaam"));
    clickBox(1, 0);
    EXPECT_EQ(editor->focusWidget(), box(1, 0));
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(editor.get(), &activation);
    EXPECT_EQ(editor->focusWidget(), control<QLineEdit>(u"txtOpdrachtnaam"));
}

TEST_F(TaskEditorTest, ShowsAndKeepsAMinuteThatIsNotInTheList)
{
    addTask(u"Other"_s, u"a"_s, u"a"_s, 30);
    for (const QString &odd : {u"60"_s, u"-1"_s, u"30"_s}) {
        addTask(u"Odd"_s, u"a"_s, u"a"_s, odd.toInt());
        addSlot(u"Odd"_s, 1, 1);
        openEditor(u"Odd"_s);
        auto *combo = control<ui::MinuteCombo>(u"ComboMinuten");
        EXPECT_EQ(minute(), odd);
        EXPECT_EQ(combo->findText(odd), -1);
        const QImage shown = combo->grab().toImage();
        save();
        EXPECT_EQ(stored()[1], u"Odd|a|a|%1|True"_s.arg(odd));

        chooseMinute(u"0"_s);
        EXPECT_EQ(minute(), u"0"_s);
        combo->setText({});
        EXPECT_NE(combo->grab().toImage(), shown) << "the text was not to be seen";
        execute(u"DELETE FROM Opdrachtgegevens WHERE Opdrachtnaam = 'Odd'"_s);
    }
}

TEST_F(TaskEditorTest, OddRowsOfAnotherProgramTickWhatTheyCanOrRaise)
{
    const QString slot = u"INSERT INTO Tijden VALUES ('Odd', %1)"_s;
    const QString other = u"INSERT INTO Opdrachtgegevens VALUES ('Other', 'a', 'a', %1, 1)"_s;
    const QString task = u"UPDATE Opdrachtgegevens SET %1"_s;
    struct Case
    {
        QString statement;
        std::optional<ErrorNumber> error = {};
        QList<int> ticked = {};
    };
    const std::vector<Case> cases = {
        {slot.arg(u"NULL, NULL"_s)},
        {slot.arg(u"0, 1"_s)},
        {slot.arg(u"8, 1"_s)},
        {slot.arg(u"1, 24"_s), {}, {24}}, // kept: counts on into Tuesday
        {slot.arg(u"2, -1"_s), {}, {23}},
        {slot.arg(u"1, -1"_s), ErrorNumber::InvalidProcedureCall},
        {slot.arg(u"7, 24"_s), ErrorNumber::InvalidProcedureCall},
        {slot.arg(u"1, NULL"_s), ErrorNumber::InvalidUseOfNull},
        {slot.arg(u"1, 'x'"_s), ErrorNumber::TypeMismatch},
        {slot.arg(u"1, 40000"_s), ErrorNumber::Overflow},
        {task.arg(u"Download_adres = ''"_s)},
        {task.arg(u"Filenaam = NULL"_s), ErrorNumber::InvalidUseOfNull},
        {task.arg(u"Minuten = NULL"_s), ErrorNumber::InvalidUseOfNull},
        {task.arg(u"Opdrachtnaam = 'Gone'"_s), ErrorNumber::NoCurrentRow},
        {other.arg(60), ErrorNumber::InvalidProcedureCall},
        {other.arg(u"NULL"_s), ErrorNumber::InvalidUseOfNull},
    };
    for (const auto &[statement, error, ticked] : cases) {
        addTask(u"Odd"_s, u"a"_s, u"a"_s, 5);
        execute(statement);
        EXPECT_EQ(errorOf([this] { openEditor(u"Odd"_s); }), error) << statement.toStdString();
        EXPECT_TRUE(error || tickedBoxes() == ticked) << statement.toStdString();
        execute(u"DELETE FROM Opdrachtgegevens"_s);
        execute(u"DELETE FROM Tijden"_s);
    }
}

TEST_F(TaskEditorTest, AsksForWhatIsMissingOneAfterTheOther)
{
    openEditor();
    const std::vector<std::pair<QString, std::function<void()>>> missing = {
        {u"Your forgot to fill in the task name!!!!"_s, [&] { type(u"txtOpdrachtnaam", u" "_s); }},
        {u"Your forgot to fill in the download address!!!"_s,
         [&] { type(u"txtDownload_adres", u" "_s); }},
        {u"Your forgot to fill in the file name!!!"_s, [&] { type(u"txtFilenaam", u" "_s); }},
        {u"Your forgot to fill in the minutes!!!"_s, [&] { chooseMinute(u"12"_s); }},
        {u"There must be at least 1 download hour!!!"_s, [&] { clickBox(7, 23); }},
    };
    for (const auto &[message, mend] : missing) {
        host.messages.clear();
        save();
        EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | "_s + message});
        EXPECT_EQ(host.messageIcons.last(), platform::MessageIcon::Critical);
        EXPECT_TRUE(editor->isVisible());
        EXPECT_EQ(stored(), QStringList());
        mend();
    }
    save();
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(stored(), (QStringList{u" | | |12|False"_s, u" |7|23"_s}));
}

TEST_F(TaskEditorTest, SavesANewTaskAndShowsItAgain)
{
    const QString name = u"O'Neill's é ü "_s.leftJustified(20, u'\'');
    const QString address = u"http://a/'%1'?q=\"x\"&é="_s.leftJustified(100, u'\'');
    const QString file = u"mid day 'é'.mp3"_s.leftJustified(50, u'x');
    openEditor();
    type(u"txtOpdrachtnaam", name);
    type(u"txtDownload_adres", address);
    type(u"txtFilenaam", file);
    QTest::keyClick(control<QCheckBox>(u"CheckAktief"), Qt::Key_Space);
    chooseMinute(u"59"_s);
    clickBox(1, 0);
    clickBox(7, 23);
    QTest::keyClick(editor->focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(stored(),
              (QStringList{QStringList{name, address, file, u"59"_s, u"True"_s}.join(u'|'),
                           name + u"|1|0"_s, name + u"|7|23"_s}));
    EXPECT_EQ(store::sOpdrachtnaam, name);

    addTask(u"Other"_s, u"a"_s, u"a"_s, 3);
    addSlot(u"Other"_s, 2, 2);
    openEditor(name);
    EXPECT_EQ(text(u"txtOpdrachtnaam"), name);
    EXPECT_EQ(text(u"txtDownload_adres"), address);
    EXPECT_EQ(text(u"txtFilenaam"), file);
    EXPECT_TRUE(control<QCheckBox>(u"CheckAktief")->isChecked());
    EXPECT_EQ(control<QComboBox>(u"ComboMinuten")->currentIndex(), 58); // its own minute is there
    EXPECT_EQ(minute(), u"59"_s);
    EXPECT_EQ(tickedBoxes(), (QList{0, 167}));
    EXPECT_EQ(host.messages, QStringList());
}

TEST_F(TaskEditorTest, RefusesANewNameThatDiffersInCaseOnly)
{
    addTask(u"Café"_s, u"a"_s, u"a"_s, 1);
    openEditor();
    type(u"txtOpdrachtnaam", u"CAFÉ"_s);
    type(u"txtDownload_adres", u"b"_s);
    type(u"txtFilenaam", u"c"_s);
    chooseMinute(u"30"_s);
    clickBox(1, 3);
    save();
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | This taskname already exists, "
                                         "please choose another!!!"_s});
    EXPECT_EQ(host.messageIcons.last(), platform::MessageIcon::Critical);
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(stored(), QStringList{u"Café|a|a|1|True"_s});

    addSlot(u"Cafe"_s, 5, 5); // left by a deleted task: kept, the new one runs then as well
    type(u"txtOpdrachtnaam", u"Cafe"_s);
    save();
    EXPECT_EQ(stored(), (QStringList{u"Café|a|a|1|True"_s, u"Cafe|b|c|30|False"_s, u"Cafe|5|5"_s,
                                     u"Cafe|1|3"_s}));
}

TEST_F(TaskEditorTest, SavingAnEditedTaskReplacesItsSlots)
{
    addTask(u"News"_s, u"a"_s, u"a"_s, 1);
    addTask(u"Other"_s, u"a"_s, u"a"_s, 2);
    for (const QString &name : {u"News"_s, u"Other"_s, u"nEWS"_s})
        addSlot(name, 1, 1);
    openEditor(u"News"_s);
    type(u"txtOpdrachtnaam", u"NEWS"_s);
    QTest::keyClick(control<QCheckBox>(u"CheckAktief"), Qt::Key_Space);
    chooseMinute(u"3"_s);
    clickBox(7, 23);
    save();
    EXPECT_EQ(stored(), (QStringList{u"NEWS|a|a|3|False"_s, u"Other|a|a|2|True"_s, u"Other|1|1"_s,
                                     u"NEWS|1|1"_s, u"NEWS|7|23"_s}));
    EXPECT_EQ(store::sOpdrachtnaam, u"NEWS"_s);
}

TEST_F(TaskEditorTest, ARenamedTaskTakesAnyNameAndLeavesItsOldSlots)
{
    addTask(u"News"_s, u"a"_s, u"a"_s, 1);
    addTask(u"Other"_s, u"b"_s, u"b"_s, 2);
    addSlot(u"News"_s, 1, 1);
    addSlot(u"Other"_s, 2, 2);
    openEditor(u"News"_s);
    type(u"txtOpdrachtnaam", u"OTHER"_s);
    save();
    EXPECT_EQ(host.messages, QStringList());
    EXPECT_EQ(stored(), (QStringList{u"OTHER|a|a|1|True"_s, u"Other|b|b|2|True"_s, u"News|1|1"_s,
                                     u"OTHER|1|1"_s}));
}

TEST_F(TaskEditorTest, CancelEscAndTheFrameWriteNothing)
{
    addTask(u"News"_s, u"a"_s, u"a"_s, 1);
    addSlot(u"News"_s, 1, 1);
    const QStringList before = stored();
    const std::vector<std::function<void()>> endings = {
        [&] { QTest::mouseClick(control<QPushButton>(u"Annuleren"), Qt::LeftButton); },
        [&] { QTest::keyClick(editor->focusWidget(), Qt::Key_Escape); },
        [&] { editor->close(); },
    };
    for (const auto &end : endings) {
        openEditor(u"News"_s);
        type(u"txtOpdrachtnaam", u"New"_s);
        clickBox(2, 2);
        end();
        EXPECT_FALSE(editor->isVisible());
        EXPECT_EQ(store::sOpdrachtnaam, u"News"_s);
        EXPECT_EQ(stored(), before);
    }
}

TEST_F(TaskEditorTest, AFailingWriteLeavesTheOldTaskWholeAndEndsTheProgram)
{
    addTask(u"News"_s, u"a"_s, u"a"_s, 1);
    addSlot(u"News"_s, 1, 1);
    const QStringList before = stored();
    execute(u"CREATE TRIGGER Refusal BEFORE INSERT ON Tijden WHEN NEW.Dagen = 7 "
            "BEGIN SELECT RAISE(ABORT, 'refused'); END"_s);
    openEditor(u"News"_s);
    type(u"txtOpdrachtnaam", u"New"_s);
    clickBox(7, 7);
    save();
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 3709: refused"_s});
    EXPECT_EQ(host.endings, QList{1});
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(store::sOpdrachtnaam, u"News"_s);
}
