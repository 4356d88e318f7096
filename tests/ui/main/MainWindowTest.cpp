#include "tests/ui/main/MainFormTest.h"

#include <QGroupBox>

using MainWindow = MainFormTest;

TEST_F(MainWindow, HasItsControlsAndTitles)
{
    openForm();
    EXPECT_EQ(form->windowTitle(), u"Ostravelin 1.8.1"_s);
    EXPECT_EQ(formControl<QGroupBox>(u"Frame1"_s)->title(), u"Download Countdown"_s);
    for (const QString &name : {u"Label1"_s, u"Label2"_s, u"Label3"_s, u"Label4"_s, u"pBar"_s,
                                u"ctlDownload"_s, u"StatusBar1"_s, u"Shape1"_s, u"Shape2"_s,
                                u"Line1"_s, u"Line2"_s, u"Line3"_s, u"Line4"_s})
        EXPECT_TRUE(formControl<QWidget>(name)) << name.toStdString();
}

TEST_F(MainWindow, MenusAppearWithTheirWindowsAndOpenThem)
{
    QStringList opened;
    const auto note = [&](const QString &name) { return [&, name] { opened << name; }; };
    openForm({.taskList = note(u"list"_s),
              .forcedDownload = note(u"force"_s),
              .options = note(u"options"_s),
              .about = note(u"about"_s)});
    const std::pair<QString, QString> entries[] = {{u"mnuMutaties"_s, u"&Mutations"_s},
                                                   {u"mnuForceDownload"_s, u"&Forced download"_s},
                                                   {u"mnuOpties"_s, u"O&ptions"_s},
                                                   {u"mnuInfo"_s, u"&Info"_s}};
    for (const auto &[name, caption] : entries) {
        auto *entry = formControl<QAction>(name);
        EXPECT_EQ(entry->text(), caption);
        EXPECT_TRUE(entry->isVisible());
        entry->trigger();
    }
    EXPECT_EQ(opened, (QStringList{u"list"_s, u"force"_s, u"options"_s, u"about"_s}));

    openForm(ui::MenuWindows());
    for (const auto &[name, caption] : entries)
        EXPECT_FALSE(formControl<QAction>(name)->isVisible());
}

TEST_F(MainWindow, TheCountdownStandsStillWhileTheTaskListIsOpen)
{
    bool counted = true;
    openForm({.taskList = [&] {
        counted = countdown()->isActive();
        addTaskAt(moment(2026, 3, 4, 11), u"New"_s, u"/new"_s, u"new"_s);
    }});
    trigger(u"mnuMutaties"_s);
    EXPECT_FALSE(counted);
    EXPECT_TRUE(countdown()->isActive());
    EXPECT_EQ(form->DownloadEntry.Opdracht, u"New"_s);
}

TEST_F(MainWindow, AWindowOfADisabledEntryCannotBeUsedUntilTheEntryIsEnabled)
{
    QList<bool> usable;
    openForm({.options = [&] {
        QDialog window(form.get());
        const QDialog windowOverIt(&window);
        QTimer::singleShot(0, &window, [&] {
            for (const auto bVal : {platform::Boolean::False, platform::Boolean::True}) {
                form->mnuInstelling(bVal);
                usable << window.isEnabled() << windowOverIt.isEnabled();
            }
            window.close();
        });
        form->showModal(window);
    }});
    trigger(u"mnuOpties"_s);
    form->mnuInstelling(platform::Boolean::False); // the window is gone
    EXPECT_EQ(usable, (QList<bool>{false, false, true, true}));
}

TEST_F(MainWindow, OpensTheLogEvenBeforeItsFirstLine)
{
    openForm();
    auto *entry = formControl<QAction>(u"mnuLogbestand"_s);
    EXPECT_EQ(entry->text(), u"&Logfile"_s);
    entry->trigger();
    EXPECT_TRUE(QFile::exists(app::logFilePath()));
    EXPECT_EQ(host.openedInEditor, QStringList{app::logFilePath()});
    EXPECT_EQ(host.messages, QStringList{});

    host.hasEditor = false;
    entry->trigger();
    ASSERT_EQ(host.messages.size(), 1);
    EXPECT_TRUE(host.messages[0].contains(app::logFilePath()));
}

TEST_F(MainWindow, AnErrorInAMenuWindowIsReported)
{
    openForm({.about = [] { throw platform::RuntimeError(NoCurrentRow); }});
    trigger(u"mnuInfo"_s);
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 3021: No current row"_s});
    EXPECT_EQ(host.endings, QList{1});
}
