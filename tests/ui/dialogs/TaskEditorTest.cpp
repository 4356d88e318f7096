#include "tests/ui/dialogs/Editor.h"
#include "ui/dialogs/MinuteCombo.h"

#include <QClipboard>
#include <QGroupBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>

TEST(FreeMinutes, AreRemovedByTheirPositions)
{
    const QStringList free = ui::freeMinutes({59, 30, 30, 0}); // kept: 31 goes for the second 30
    EXPECT_EQ(free.size(), 56);
    EXPECT_EQ(free[0] + free[28] + u' ' + free[29] + free[55], u"129 3258"_s);
}

TEST_F(TaskEditorTest, OpensEmptyForANewTask)
{
    addTask(u"Early"_s, u"a"_s, u"a"_s, 0);
    openEditor();
    QStringList captions = {editor->windowTitle()};
    for (const QGroupBox *frame : editor->findChildren<QGroupBox *>())
        captions << frame->title();
    for (const QLabel *label : editor->findChildren<QLabel *>())
        captions << label->text();
    for (const QPushButton *button : editor->findChildren<QPushButton *>())
        captions << button->text();
    captions.sort();
    EXPECT_EQ(captions.join(u' '),
              u"&Cancel &Save Active: Download address: Download time Filename: "
              "Hour Minutes: Ostravelin 1.8.1 Task data Taskname:"_s);

    EXPECT_EQ(editor->task(), (Task{{}, {}, {}, {}, u"False"_s}));
    EXPECT_EQ(editor->hours(), Hours());
    for (const auto &[text, length] :
         {std::pair(editor->name(), 20), {editor->address(), 100}, {editor->fileName(), 50}}) {
        SCOPED_TRACE(length);
        text->insert(u"\n"_s + QString(length + 1, u'x'));
        EXPECT_EQ(text->text(), QString(length, u'x'));
        text->setCursorPosition(1);
        text->insert(u"é"_s); // into a full text
        EXPECT_EQ(text->text(), QString(length, u'x'));
        text->setText(u"\tde\r\n"_s);
        text->setCursorPosition(0);
        QApplication::clipboard()->setText(u"a \r\n b\u2028c\n"_s);
        text->paste();
        EXPECT_EQ(text->text(), length == 100 ? u"abcde"_s : u"a b cde"_s);
        text->clear();
    }

    auto *combo = editor->minutes();
    QTest::keyClicks(combo, u"0"_s); // neither typed nor in the list
    EXPECT_EQ(combo->text(), QString());
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(combo->text(), u"1"_s);

    EXPECT_EQ(editor->focusWidget(), editor->name());
    combo->setFocus();
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(editor.get(), &activation);
    EXPECT_EQ(editor->focusWidget(), editor->name());
}

TEST_F(TaskEditorTest, ShowsAndKeepsAMinuteThatIsNotInTheList)
{
    addTask(u"Other"_s, u"a"_s, u"a"_s, 30);
    for (const QString &odd : {u"60"_s, u"-1"_s, u"30"_s}) {
        SCOPED_TRACE(odd.toStdString());
        addTask(u"Odd"_s, u"a"_s, u"a"_s, odd.toInt());
        addSlot(u"Odd"_s, 1, 1);
        openEditor(u"Odd"_s);
        auto *combo = editor->minutes();
        EXPECT_EQ(combo->text(), odd);
        EXPECT_EQ(combo->accessibleDescription(), odd);
        const QImage shown = combo->grab().toImage();
        editor->save();
        EXPECT_EQ(stored()[1], u"Odd|a|a|%1|True"_s.arg(odd));

        combo->setCurrentIndex(0);
        EXPECT_EQ(combo->text(), u"0"_s);
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
    const std::tuple<QString, std::optional<ErrorNumber>, Hours> cases[] = {
        {slot.arg(u"NULL, NULL"_s), {}, {}},
        {slot.arg(u"0, 1"_s), {}, {}},
        {slot.arg(u"8, 1"_s), {}, {}},
        {slot.arg(u"1, 24"_s), {}, {24}}, // kept: counts on into Tuesday
        {slot.arg(u"2, -1"_s), {}, {23}},
        {slot.arg(u"1, -1"_s), InvalidProcedureCall, {}},
        {slot.arg(u"7, 24"_s), InvalidProcedureCall, {}},
        {slot.arg(u"1, NULL"_s), InvalidUseOfNull, {}},
        {task.arg(u"Minuten = NULL"_s), InvalidUseOfNull, {}},
        {task.arg(u"Opdrachtnaam = 'Gone'"_s), NoCurrentRow, {}},
        {other.arg(60), InvalidProcedureCall, {}},
        {other.arg(-1), InvalidProcedureCall, {}},
        {other.arg(u"NULL"_s), InvalidUseOfNull, {}},
    };
    for (const auto &[statement, error, ticked] : cases) {
        addTask(u"Odd"_s, u"a"_s, u"a"_s, 5);
        execute(statement);
        SCOPED_TRACE(statement.toStdString());
        EXPECT_EQ(errorOf([this] { openEditor(u"Odd"_s); }), error);
        EXPECT_EQ(error ? Hours() : editor->hours(), ticked);
        removeAll();
    }
}

TEST_F(TaskEditorTest, AsksForWhatIsMissingOrTakenOneAfterTheOther)
{
    addTask(u"Café"_s, u"a"_s, u"a"_s, 1);
    openEditor();
    const std::pair<QString, std::function<void()>> missing[] = {
        {u"Your forgot to fill in the task name!!!!"_s, [&] { editor->name()->insert(u"CAFÉ"_s); }},
        {u"Your forgot to fill in the download address!!!"_s,
         [&] { editor->address()->insert(u" "_s); }},
        {u"Your forgot to fill in the file name!!!"_s, [&] { editor->fileName()->insert(u" "_s); }},
        {u"Your forgot to fill in the minutes!!!"_s, [&] { editor->minutes()->setText(u"12"_s); }},
        {u"There must be at least 1 download hour!!!"_s, [&] { editor->box(167)->click(); }},
        {u"This taskname already exists, please choose another!!!"_s,
         [&] { editor->name()->setText(u" "_s); }},
    };
    for (const auto &[message, mend] : missing) {
        host.messages.clear();
        editor->save();
        EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | "_s + message});
        EXPECT_EQ(host.messageIcons.last(), platform::MessageIcon::Critical);
        EXPECT_TRUE(editor->isVisible());
        EXPECT_EQ(stored(), QStringList{u"Café|a|a|1|True"_s});
        mend();
    }
    editor->save();
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(stored(), (QStringList{u"Café|a|a|1|True"_s, u" | | |12|False"_s, u" |7|23"_s}));
}

TEST_F(TaskEditorTest, SavesANewTaskAndShowsItAgain)
{
    const QString name = u"O'Neill's é ü "_s.leftJustified(20, u'\'');
    const QString address = u"http://a/'%1'?q=\"x\"&é="_s.leftJustified(100, u'\'');
    const QString file = u"mid day 'é'.mp3"_s.leftJustified(50, u'x');
    const Task task = {name, address, file, u"59"_s, u"True"_s};
    openEditor();
    editor->fill(task, {0, 167});
    QTest::keyClick(editor->focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(editor->isVisible());
    EXPECT_EQ(stored(), (QStringList{task.join(u'|'), name + u"|1|0"_s, name + u"|7|23"_s}));
    EXPECT_EQ(store::sOpdrachtnaam, name);

    addTask(u"Other"_s, u"a"_s, u"a"_s, 3);
    addSlot(u"Other"_s, 2, 2);
    openEditor(name);
    EXPECT_EQ(editor->task(), task);
    EXPECT_EQ(editor->address()->cursorPosition(), 0); // to show the host
    EXPECT_EQ(editor->hours(), (Hours{0, 167}));
    EXPECT_EQ(editor->minutes()->currentIndex(), 58); // its own minute is there
    EXPECT_EQ(host.messages, QStringList());
}

TEST_F(TaskEditorTest, CancelEscTheFrameAndAFailedWriteLeaveTheOldTaskWhole)
{
    addTask(u"News"_s, u"a"_s, u"a"_s, 1);
    addSlot(u"News"_s, 1, 1);
    const QStringList before = stored();
    execute(u"CREATE TRIGGER Refusal BEFORE INSERT ON Tijden WHEN NEW.Dagen = 7 "
            "BEGIN SELECT RAISE(ABORT, 'refused'); END"_s);
    const std::function<void()> endings[] = {
        [&] { editor->cancel(); },
        [&] { QTest::keyClick(editor->focusWidget(), Qt::Key_Escape); },
        [&] { editor->close(); },
        [&] { editor->save(); },
    };
    for (const auto &end : endings) {
        EXPECT_EQ(host.endings, QList<int>{});
        openEditor(u"News"_s);
        editor->name()->setText(u"New"_s);
        editor->box(167)->click();
        end();
        EXPECT_EQ(editor->isVisible(), !host.endings.isEmpty());
        EXPECT_EQ(store::sOpdrachtnaam, u"News"_s);
        EXPECT_EQ(stored(), before);
    }
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 3709: refused"_s});
    EXPECT_EQ(host.endings, QList{1});
}

TEST_F(TaskEditorTest, OnASmallDisplayHoursScrollBelowTheirDaysAndTheButtonsStay)
{
    openEditor();
    auto *pane = editor->findChild<QScrollArea *>();
    const auto isSeen = [&](const QWidget *control) {
        const QPoint centre = control->mapTo(editor.get(), control->rect().center());
        return editor->childAt(centre) == control;
    };
    const auto *buttonOfSave = editor->findChild<QPushButton *>(u"Opslaan"_s);
    const int roomyRow = editor->box(0)->height();
    editor->resize(400, 600);
    EXPECT_LT(editor->box(0)->height(), roomyRow);
    editor->resize(400, 260);
    EXPECT_TRUE(isSeen(buttonOfSave));
    editor->box(0)->setFocus();
    for (int hour = 0; hour < 23; ++hour) {
        EXPECT_TRUE(isSeen(editor->box(hour))) << hour;
        QTest::keyClick(editor->focusWidget(), Qt::Key_Down);
    }
    EXPECT_TRUE(isSeen(editor->box(23)));
    for (const auto *label : editor->findChildren<QToolButton *>())
        EXPECT_TRUE(label->text() != u"Mon"_s || isSeen(label));
    EXPECT_GT(pane->verticalScrollBar()->value(), 0);
    const int minute = editor->minutes()->currentIndex();
    pane->ensureWidgetVisible(editor->minutes());
    QWheelEvent wheel({5, 5}, editor->minutes()->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(editor->minutes(), &wheel);
    EXPECT_EQ(editor->minutes()->currentIndex(), minute);
}
