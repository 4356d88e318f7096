#include "tests/ui/main/MainFormTest.h"

#include <QGroupBox>

using MainWindow = MainFormTest;

TEST_F(MainWindow, HasItsControlsTitlesAndMenus)
{
    QStringList opened;
    const auto note = [&](const QString &name) { return [&, name] { opened << name; }; };
    openForm({.taskList = note(u"list"_s),
              .forcedDownload = note(u"force"_s),
              .options = note(u"options"_s),
              .about = [] { throw platform::RuntimeError(NoCurrentRow); }});
    EXPECT_EQ(form->windowTitle(), u"Ostravelin 1.8.1"_s);
    EXPECT_EQ(formControl<QGroupBox>(u"Frame1"_s)->title(), u"Download Countdown"_s);
    for (const auto &name : {u"StatusBar1"_s, u"ctlDownload"_s, u"Shape1"_s, u"Shape2"_s,
                             u"Line1"_s, u"Line2"_s, u"Line3"_s, u"Line4"_s})
        EXPECT_TRUE(formControl<QWidget>(name)) << name.toStdString();
    const std::pair<QString, QString> entries[] = {{u"mnuMutaties"_s, u"&Mutations"_s},
                                                   {u"mnuForceDownload"_s, u"&Forced download"_s},
                                                   {u"mnuOpties"_s, u"O&ptions"_s},
                                                   {u"mnuInfo"_s, u"&Info"_s}};
    for (const auto &[name, caption] : entries) {
        EXPECT_EQ(formControl<QAction>(name)->text(), caption);
        EXPECT_TRUE(formControl<QAction>(name)->isVisible());
        trigger(name);
    }
    EXPECT_EQ(opened, (QStringList{u"list"_s, u"force"_s, u"options"_s}));
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 3021: No current row"_s});
    EXPECT_EQ(host.endings, QList{1});
    EXPECT_FALSE(countdown()->isActive());

    openForm(ui::MenuWindows());
    for (const auto &[name, caption] : entries)
        EXPECT_FALSE(formControl<QAction>(name)->isVisible());
}

TEST_F(MainWindow, TheCountdownStandsStillWhileTheTaskListIsOpen)
{
    bool counted = true;
    openForm({.taskList = [&] {
        counted = countdown()->isActive();
        addTaskAt(due, u"New"_s, u"/new"_s, u"new"_s);
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

TEST_F(MainWindow, OpensTheLogEvenBeforeItsFirstLine)
{
    openForm();
    EXPECT_EQ(formControl<QAction>(u"mnuLogbestand"_s)->text(), u"&Logfile"_s);
    trigger(u"mnuLogbestand"_s);
    EXPECT_TRUE(QFile::exists(app::logFilePath()));
    EXPECT_EQ(host.openedInEditor, QStringList{app::logFilePath()});
    EXPECT_EQ(host.messages, QStringList{});

    host.hasEditor = false;
    trigger(u"mnuLogbestand"_s);
    EXPECT_TRUE(host.messages.join(u'|').contains(app::logFilePath()));
}
