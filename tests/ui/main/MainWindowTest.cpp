#include "tests/ui/main/MainFormTest.h"

#include <QGroupBox>
#include <QMenuBar>
#include <QScrollArea>
#include <QScrollBar>

using MainWindow = MainFormTest;

TEST_F(MainWindow, HasItsTitlesAndMenus)
{
    QStringList opened;
    const auto note = [&](const QString &name) {
        opened << name + (countdown()->isActive() ? u" beside the countdown"_s : u""_s);
    };
    openForm({.taskList = [&] { note(u"list"_s); },
              .forcedDownload = [&] { note(u"force"_s); },
              .options = [&] { note(u"options"_s); },
              .about = [&] { note(u"about"_s); }});
    EXPECT_EQ(form->windowTitle(), u"Ostravelin 1.8.1"_s);
    EXPECT_EQ(formControl<QScrollArea>()->verticalScrollBar()->maximum(), 0); // all is in sight
    EXPECT_EQ(formControl<QGroupBox>(u"Frame1"_s)->title(), u"Download Countdown"_s);
    EXPECT_EQ(labelText(u"Label1"_s) + labelText(u"Label2"_s),
              u"88:8800"_s); // until the first tick
    const auto *batchWatch = formControl<QTimer>(u"Timer2"_s);
    EXPECT_EQ(batchWatch->interval(), 5000);
    EXPECT_FALSE(batchWatch->isActive());
    EXPECT_EQ(countdownInterval, 500);
    EXPECT_TRUE(countdown()->isActive());

    QStringList menus;
    for (const QAction *menu : form->menuBar()->actions()) {
        menus << menu->text();
        for (const QAction *entry : menu->menu()->actions())
            menus << entry->text();
    }
    EXPECT_EQ(menus.join(u' '), u"&Tasks &Mutations &Forced download &Configuration O&ptions &Help "
                                "&Info &Logfile"_s);
    const QString entries[] = {u"mnuLogbestand"_s, u"mnuMutaties"_s, u"mnuForceDownload"_s,
                               u"mnuOpties"_s, u"mnuInfo"_s};
    addTaskAt(due, u"New"_s, u"/new"_s, u"new"_s); // as in the task list
    for (const QString &name : entries)
        trigger(name);
    EXPECT_EQ(opened.join(u", "_s), u"list, force beside the countdown, "
                                    "options beside the countdown, about beside the countdown"_s);
    EXPECT_EQ(form->DownloadEntry.Opdracht, u"New"_s);
    EXPECT_EQ(host.openedInEditor, QStringList{app::logFilePath()});
    EXPECT_TRUE(QFile::exists(app::logFilePath()));
    EXPECT_EQ(host.messages, QStringList{});

    openForm(ui::MenuWindows());
    for (const QString &name : entries)
        EXPECT_EQ(formControl<QAction>(name)->isVisible(), name == entries[0]);
    host.hasEditor = false;
    trigger(u"mnuLogbestand"_s);
    EXPECT_TRUE(host.messages.join(u'|').contains(app::logFilePath()));
}

TEST_F(MainWindow, AnUnforeseenErrorStopsItIsToldOnceAndEndsTheProgram)
{
    openForm({.about = [] { throw std::runtime_error("unforeseen"); }});
    host.onMessage = [this] { trigger(u"mnuInfo"_s); };
    trigger(u"mnuInfo"_s);
    EXPECT_FALSE(countdown()->isActive());
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 51: unforeseen"_s});
    EXPECT_EQ(host.endings, QList{1});
    EXPECT_EQ(log(), QStringList{u"unforeseen"_s});
}

TEST_F(MainWindow, AWindowOfADisabledEntryCannotBeUsedUntilTheEntryIsEnabled)
{
    QList<bool> usable;
    openForm({.options = [&] {
        QDialog window(form.get());
        const QDialog windowOverIt(&window);
        QTimer::singleShot(0, &window, [&] {
            for (const auto bVal : {Boolean::False, Boolean::True}) {
                form->mnuInstelling(bVal);
                usable << window.isEnabled() << windowOverIt.isEnabled();
            }
            window.close();
        });
        form->showModal(window);
    }});
    trigger(u"mnuOpties"_s);
    form->mnuInstelling(Boolean::False); // the window is gone
    EXPECT_EQ(usable, (QList{false, false, true, true}));
}
