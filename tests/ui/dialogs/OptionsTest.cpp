#include "app/Module1.h"
#include "tests/support/Test.h"
#include "ui/dialogs/Module2.h"
#include "ui/dialogs/frmOptions.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

using platform::MessageIcon;

namespace {

/// The options window over settings of its own. Before a test loads them, those in force are the
/// blanks of a first run.
class Options : public testing::Test
{
protected:
    Options()
    {
        app::sBestemmingsmap = QString();
        app::sSPCmap = QString();
    }

    void open(const QByteArray &settings = {})
    {
        if (!settings.isEmpty())
            makeFile(settingsPath(), settings);
        window = std::make_unique<ui::frmOptions>();
        window->show();
    }

    QString settingsPath() const { return host.settingsDirectory() + u"/Ostravelin.ini"_s; }
    auto *button(const QString &name) const { return window->findChild<QPushButton *>(name); }
    QCheckBox *header() const { return window->findChild<QCheckBox *>(u"Check1"_s); }
    QCheckBox *preXp() const { return window->findChild<QCheckBox *>(u"Check2"_s); }
    QLineEdit *destination() const { return window->findChild<QLineEdit *>(u"Text2"_s); }
    QLineEdit *spcFolder() const { return window->findChild<QLineEdit *>(u"Text3"_s); }

    void click(const QString &name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    void choose(const QString &name, const QString &folder)
    {
        host.folderChoices << folder;
        click(name);
    }
    bool canSave() const
    {
        EXPECT_EQ(button(u"cmdOK"_s)->isEnabled(), button(u"cmdApply"_s)->isEnabled());
        return button(u"cmdOK"_s)->isEnabled();
    }

    // The folders and the boxes that are ticked.
    QString shown() const
    {
        EXPECT_EQ(button(u"SPC_dir"_s)->isEnabled(), header()->isChecked());
        return destination()->text() + u'|' + spcFolder()->text() +
               (header()->isChecked() ? u"|header"_s : QString()) +
               (preXp()->isChecked() ? u"|preXP"_s : QString());
    }

    // The folders, without the blanks that fill them up, and the switches.
    static QString inForce()
    {
        return app::sBestemmingsmap.text().trimmed() + u'|' + app::sSPCmap.text().trimmed() + u'|' +
               app::sSPC.text() + u'|' + app::sPreXP.text();
    }

    FakeHost host;
    std::unique_ptr<ui::frmOptions> window;
};

} // namespace

TEST_F(Options, ShowTheSettingsFile)
{
    const std::tuple<QByteArray, QString, bool> cases[] = {
        // a settings file, what is shown of it, and whether it can be saved
        {"[Bestandsmappen]\nBestemmingsmap=/srv/audio\nSPCmap=/srv/spc\n[Opties]\nSPC=1\npreXP=0\n",
         u"/srv/audio|/srv/spc|header"_s, true},
        {"[Bestandsmappen]\nBestemmingsmap=/a\n[Opties]\nSPC=0\npreXP=1.4\n", u"/a|?|preXP"_s,
         true},
        {"[Bestandsmappen]\nBestemmingsmap=\n[Opties]\nSPC=on\npreXP=99999\n", u"|?"_s, true},
        {"[Bestandsmappen]\nBestemmingsmap=?\nSPCmap=/srv/spc\n[Opties]\nSPC=1\npreXP=1\n", u"|"_s,
         false},
        {"[Opties]\nSPC=1\n", u"|"_s, false},
    };
    for (const auto &[settings, expected, savable] : cases) {
        SCOPED_TRACE(settings.toStdString());
        open(settings);
        EXPECT_EQ(shown(), expected);
        EXPECT_EQ(canSave(), savable);
    }
}

TEST_F(Options, HaveTheirCaptionsAndAreNamedForScreenReaders)
{
    open();
    QStringList captions = {window->windowTitle()};
    for (const QString &name : {u"cmdOK"_s, u"cmdCancel"_s, u"cmdApply"_s})
        captions << button(name)->text();
    for (const QString &name : {u"Label2"_s, u"Label3"_s, u"Label7"_s, u"Label8"_s}) {
        const auto *label = window->findChild<QLabel *>(name);
        captions << label->text();
        EXPECT_EQ(label->buddy()->accessibleName() + u':', label->text());
    }
    EXPECT_EQ(captions.join(u' '), u"Ostravelin 1.8.1 &Save &Cancel &Submit "
                                   "Destination folder: SPC folder: SPC header: Pre-Windows XP:"_s);
}

TEST_F(Options, NoTabShowsASamplePage)
{
    open();
    auto *tabs = window->findChild<QTabBar *>(u"tbsOptions"_s);
    ASSERT_EQ(tabs->count(), 4);
    EXPECT_EQ(window->findChildren<QWidget *>(u"picOptions"_s).size(), 4);
    for (const int tab : {1, 2, 3, 0}) {
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
        EXPECT_EQ(tabs->currentIndex(), tab);
        EXPECT_TRUE(destination()->isVisible());
    }
    for (const QString &sample : {u"2"_s, u"3"_s, u"4"_s})
        EXPECT_EQ(window->findChild<QGroupBox *>(u"fraSample"_s + sample)->title(),
                  u"Sample "_s + sample);
}

TEST_F(Options, AFirstRunTakesAChosenDestinationBeforeAnythingCanBeSaved)
{
    open();
    destination()->setText(u"/typed"_s);
    EXPECT_FALSE(canSave());
    choose(u"Bestemmings_dir"_s, {});
    EXPECT_FALSE(canSave());
    EXPECT_EQ(destination()->text(), u"/typed"_s);

    header()->click();
    choose(u"SPC_dir"_s, u"/srv/spc"_s);
    EXPECT_FALSE(canSave());
    QTest::keyClick(destination(), Qt::Key_Return);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(QFile::exists(settingsPath()));

    choose(u"Bestemmings_dir"_s, u"/srv/audio"_s);
    EXPECT_TRUE(canSave());
}

TEST_F(Options, WithoutADestinationLaterOnAnyChosenFolderLetsSave)
{
    app::LoadSettings(); // "?" is in force from here
    for (const bool isKnown : {true, false}) {
        for (const QString &chooser : {u"Bestemmings_dir"_s, u"SPC_dir"_s}) {
            open();
            header()->click();
            EXPECT_FALSE(canSave());
            choose(chooser, u"/srv"_s);
            EXPECT_EQ(canSave(), isKnown) << chooser.toStdString();
        }
        app::sBestemmingsmap = QString(QChar::Null);
    }
}

TEST_F(Options, ChosenFoldersAreShownWithoutTheirNulAndOnlyTheSpcFolderIsInForceAtOnce)
{
    makeFile(settingsPath(),
             "[Bestandsmappen]\nBestemmingsmap=/old\nSPCmap=/spc\n[Opties]\nSPC=1\npreXP=0\n");
    app::LoadSettings();
    open();
    click(u"Bestemmings_dir"_s); // aborted
    click(u"SPC_dir"_s);
    EXPECT_EQ(host.messages, QStringList(2, u"Ostravelin 1.8.1 | Folder setting aborted!"_s));
    EXPECT_EQ(host.messageIcons, QList<MessageIcon>(2, MessageIcon::Information));
    EXPECT_EQ(shown(), u"/old|/spc|header"_s);
    EXPECT_EQ(inForce(), u"/old|/spc|1|0"_s);

    choose(u"Bestemmings_dir"_s, u"/srv/audio"_s);
    choose(u"SPC_dir"_s, u"/srv/spc"_s);
    EXPECT_EQ(host.folderQuestions, QStringList(4, u"Choose a folder"_s));
    EXPECT_EQ(host.lastFolderOwner, window.get());
    EXPECT_EQ(shown(), u"/srv/audio|/srv/spc|header"_s);
    EXPECT_EQ(inForce(), u"/old|/srv/spc"_s + QChar::Null + u"|1|0"_s);

    click(u"cmdApply"_s);
    EXPECT_EQ(inForce(), u"/srv/audio|/srv/spc|1|0"_s);
}

TEST_F(Options, SubmitWritesWhatStandsThereAndPutsItInForce)
{
    // folders and switches that are entered, and what is saved of them
    const std::tuple<QString, QString, bool, bool, QString> cases[] = {
        {u"/srv/audio"_s, u"/srv/spc"_s, true, false, u"/srv/audio|/srv/spc|1|0"_s},
        {u"/srv/audio"_s, u""_s, true, true, u"/srv/audio||0|1"_s},
        {u""_s, u"no such folder"_s, false, false, u"|no such folder|0|0"_s},
    };
    for (const auto &[folder, spc, isWithHeader, isPreXp, saved] : cases) {
        SCOPED_TRACE(saved.toStdString());
        open("[Bestandsmappen]\r\nBestemmingsmap=/old\r\n");
        destination()->setText(folder);
        spcFolder()->setText(spc);
        header()->setChecked(isWithHeader);
        preXp()->setChecked(isPreXp);
        click(u"cmdApply"_s);

        const QStringList parts = saved.split(u'|');
        EXPECT_EQ(fileBytes(settingsPath()),
                  u"[Bestandsmappen]\r\nBestemmingsmap=%1\r\nSPCmap=%2\r\n"
                  "[Opties]\r\nSPC=%3\r\npreXP=%4\r\n"_s.arg(parts[0], parts[1], parts[2], parts[3])
                      .toLatin1());
        EXPECT_EQ(inForce(), saved);
        EXPECT_EQ(header()->isChecked(), parts[2] == u"1"_s);
        EXPECT_TRUE(shown().startsWith(folder) && window->isVisible());
    }
}

TEST_F(Options, SaveAndEnterWriteAndClose)
{
    const std::function<void()> ways[] = {
        [this] { click(u"cmdOK"_s); },
        [this] { QTest::keyClick(destination(), Qt::Key_Return); },
        [this] { QTest::keyClick(button(u"Bestemmings_dir"_s), Qt::Key_Return); },
    };
    for (const auto &save : ways) {
        open("[Bestandsmappen]\nBestemmingsmap=/old\n");
        destination()->setText(u"/n"_s); // shorter than Cancel takes
        save();
        EXPECT_FALSE(window->isVisible());
        EXPECT_EQ(app::sBestemmingsmap.text().trimmed(), u"/n"_s);
        EXPECT_EQ(host.messages, QStringList{});
    }
}

TEST_F(Options, AFailedWriteIsNotReported)
{
    makeFile(host.settingsDirectory(), "a file in the folder's place");
    open();
    choose(u"Bestemmings_dir"_s, u"/srv/audio"_s);
    click(u"cmdOK"_s);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(host.messages, QStringList{});
    EXPECT_EQ(app::sBestemmingsmap.text().trimmed(), u"?"_s);
}

TEST_F(Options, CancelTheFrameAndEscEndTheProgramWithoutADestination)
{
    const std::function<void()> ways[] = {
        [this] { click(u"cmdCancel"_s); },
        [this] { QTest::keyClick(destination(), Qt::Key_Escape); },
        [this] { window->close(); },
    };
    const QByteArray settings = "[Bestandsmappen]\nBestemmingsmap=/old\n";
    for (const auto &leave : ways)
        for (const QString &folder : {u""_s, u"D:"_s, u"D:\\"_s, u"/srv"_s}) {
            SCOPED_TRACE(folder.toStdString());
            open(settings);
            destination()->setText(folder);
            leave();
            EXPECT_EQ(window->isVisible(), folder.size() < 3); // nothing runs after the real end
            EXPECT_EQ(fileBytes(settingsPath()), settings);
        }
    EXPECT_EQ(host.messages, QStringList(6, u"Ostravelin 1.8.1 | You have not specified a valid "
                                            "destination, Ostravelin will be closed!"_s));
    EXPECT_EQ(host.messageIcons, QList<MessageIcon>(6, MessageIcon::Critical));
    EXPECT_EQ(host.endings, QList<int>(6, 0));
}

TEST(BrowseForFolder, ReturnsTheFolderWithItsNulOrNothing)
{
    FakeHost host;
    const QString longest(254, u'a');
    for (const auto &[chosen, path] : {std::pair(u"/"_s, u"/"_s + QChar::Null),
                                       {longest, longest + QChar::Null},
                                       {longest + u'a', u""_s},
                                       {u""_s, u""_s}}) {
        host.folderChoices << chosen;
        EXPECT_EQ(ui::BrowseForFolder(nullptr, u"Choose"_s), path);
    }
}
