#include "app/Module1.h"
#include "tests/support/Test.h"
#include "ui/dialogs/frmOptions.h"

#include <QCheckBox>
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
    Options() { app::sBestemmingsmap = app::sSPCmap = app::FixedText<200>(); }

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

    // The folders, the boxes that are ticked, and whether all that can be saved.
    QString shown() const
    {
        EXPECT_EQ(button(u"SPC_dir"_s)->isEnabled(), header()->isChecked());
        EXPECT_EQ(button(u"cmdOK"_s)->isEnabled(), button(u"cmdApply"_s)->isEnabled());
        return destination()->text() + u'|' + spcFolder()->text() +
               (header()->isChecked() ? u"|header"_s : QString()) +
               (preXp()->isChecked() ? u"|preXP"_s : QString()) +
               (button(u"cmdOK"_s)->isEnabled() ? u"|savable"_s : QString());
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
    const std::pair<QByteArray, QString> cases[] = {
        {"[Bestandsmappen]\nBestemmingsmap=/srv/audio\nSPCmap=/srv/spc\n[Opties]\nSPC=1\npreXP=0\n",
         u"/srv/audio|/srv/spc|header|savable"_s},
        {"[Bestandsmappen]\nBestemmingsmap=/a\n[Opties]\nSPC=0\npreXP=1.4\n",
         u"/a|?|preXP|savable"_s},
        {"[Bestandsmappen]\nBestemmingsmap=\n[Opties]\nSPC=on\npreXP=99999\n", u"|?|savable"_s},
        {"[Bestandsmappen]\nBestemmingsmap=/a\n[Opties]\nSPC=1 ; on\npreXP=+.6e0x\n",
         u"/a|?|header|preXP|savable"_s},
        {"[Bestandsmappen]\nBestemmingsmap=/a\tb\n[Opties]\nSPC=-1\npreXP=x 1\n",
         u"/a b|?|savable"_s},
        {"[Bestandsmappen]\nBestemmingsmap=?\nSPCmap=/srv/spc\n[Opties]\nSPC=1\npreXP=1\n", u"|"_s},
    };
    for (const auto &[settings, expected] : cases) {
        open(settings);
        EXPECT_EQ(shown(), expected) << settings.toStdString();
    }
}

TEST_F(Options, HaveTheirCaptionsAndNeverShowASamplePage)
{
    open();
    QStringList captions = {window->windowTitle()};
    for (const QString &name : {u"cmdOK"_s, u"cmdCancel"_s, u"cmdApply"_s})
        captions << button(name)->text();
    for (const auto *label : window->findChildren<QLabel *>()) {
        captions << label->text();
        EXPECT_EQ(label->buddy()->accessibleName() + u':', label->text()); // for screen readers
    }
    EXPECT_EQ(captions.join(u' '), u"Ostravelin 1.8.1 &Save &Cancel &Submit "
                                   "Destination folder: SPC folder: SPC header: Pre-Windows XP:"_s);

    auto *tabs = window->findChild<QTabBar *>();
    for (const int tab : {1, 2, 3, 0}) {
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
        EXPECT_EQ(tabs->currentIndex(), tab);
        EXPECT_TRUE(destination()->isVisible());
    }
}

TEST_F(Options, AFirstRunTakesAChosenDestinationBeforeAnythingCanBeSaved)
{
    open();
    destination()->setText(u"/typed"_s);
    header()->click();
    choose(u"Bestemmings_dir"_s, {});
    choose(u"SPC_dir"_s, u"/srv/spc"_s);
    EXPECT_EQ(shown(), u"/typed|/srv/spc|header"_s);
    QTest::keyClick(destination(), Qt::Key_Return);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(QFile::exists(settingsPath()));

    choose(u"Bestemmings_dir"_s, u"/srv/audio"_s);
    EXPECT_EQ(shown(), u"/srv/audio|/srv/spc|header|savable"_s);
    makeFile(host.settingsDirectory(), "a file in the folder's place");
    click(u"cmdOK"_s); // a failed write is not reported
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Folder setting aborted!"_s});
    EXPECT_EQ(inForce(), u"?|?|?|?"_s);
}

TEST_F(Options, WithoutADestinationLaterOnAnyChosenFolderLetsSave)
{
    app::LoadSettings(); // "?" is in force from here
    for (const QString &savable : {u"|savable"_s, u""_s}) {
        SCOPED_TRACE(savable.toStdString());
        open();
        choose(u"Bestemmings_dir"_s, u"/srv"_s);
        EXPECT_EQ(shown(), u"/srv|"_s + savable);
        open();
        header()->click();
        choose(u"SPC_dir"_s, u"/srv"_s);
        EXPECT_EQ(shown(), u"|/srv|header"_s + savable);
        app::sBestemmingsmap = QString(QChar::Null);
    }
}

TEST_F(Options, ChosenFoldersAreShownWithoutTheirNulAndOnlyTheSpcFolderIsInForceAtOnce)
{
    open("[Bestandsmappen]\nBestemmingsmap=/old\nSPCmap=/spc\n[Opties]\nSPC=1\npreXP=0\n");
    app::LoadSettings();
    click(u"Bestemmings_dir"_s); // aborted
    click(u"SPC_dir"_s);
    EXPECT_EQ(host.messages, QStringList(2, u"Ostravelin 1.8.1 | Folder setting aborted!"_s));
    EXPECT_EQ(host.messageIcons, QList<MessageIcon>(2, MessageIcon::Information));
    EXPECT_EQ(shown(), u"/old|/spc|header|savable"_s);
    EXPECT_EQ(inForce(), u"/old|/spc|1|0"_s);

    host.openedByDesktop = u"/srv/far"_s;
    choose(u"Bestemmings_dir"_s, u"/srv/far"_s);
    EXPECT_TRUE(host.messages.value(2).contains(u" | Files cannot be kept in this folder: "_s));
    EXPECT_EQ(shown(), u"/old|/spc|header|savable"_s);

    choose(u"Bestemmings_dir"_s, u"/srv/audio"_s);
    choose(u"SPC_dir"_s, u"/srv/spc"_s);
    EXPECT_EQ(host.folderQuestions, QStringList(5, u"Choose a folder"_s));
    EXPECT_EQ(host.lastFolderOwner, window.get());
    EXPECT_EQ(shown(), u"/srv/audio|/srv/spc|header|savable"_s);
    EXPECT_EQ(inForce(), u"/old|/srv/spc"_s + QChar::Null + u"|1|0"_s);
}

TEST_F(Options, SubmitSaveAndEnterWriteWhatStandsThereAndPutItInForce)
{
    const std::tuple<QString, Qt::Key, QString, QString, bool, bool, QString> cases[] = {
        // what is pressed, with which key; the folders and switches, and what is saved of them
        {u"cmdApply"_s, Qt::Key_Space, u"/n"_s, u""_s, true, true, u"/n||0|1"_s},
        {u"cmdOK"_s, Qt::Key_Space, u"/n"_s, u"/spc"_s, true, false, u"/n|/spc|1|0"_s},
        {u"Text2"_s, Qt::Key_Return, u""_s, u"none"_s, false, false, u"|none|0|0"_s},
        {u"SPC_dir"_s, Qt::Key_Return, u"/a"_s, u"/b"_s, true, true, u"/a|/b|1|1"_s},
    };
    for (const auto &[control, key, folder, spc, isWithHeader, isPreXp, saved] : cases) {
        SCOPED_TRACE(control.toStdString());
        open("[Bestandsmappen]\r\nBestemmingsmap=/old\r\n");
        destination()->setText(folder);
        spcFolder()->setText(spc);
        header()->setChecked(isWithHeader);
        preXp()->setChecked(isPreXp);
        QTest::keyClick(window->findChild<QWidget *>(control), key);
        const QStringList parts = saved.split(u'|');
        EXPECT_EQ(fileBytes(settingsPath()),
                  u"[Bestandsmappen]\r\nBestemmingsmap=%1\r\nSPCmap=%2\r\n"
                  "[Opties]\r\nSPC=%3\r\npreXP=%4\r\n"_s.arg(parts[0], parts[1], parts[2], parts[3])
                      .toLatin1());
        EXPECT_EQ(inForce(), saved);
        EXPECT_EQ(header()->isChecked(), parts[2] == u"1"_s);
        EXPECT_EQ(window->isVisible(), control == u"cmdApply"_s);
    }
    EXPECT_EQ(host.messages, QStringList{});
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
        for (const QString &folder : {u"D:"_s, u"D:\\"_s}) {
            SCOPED_TRACE(testing::Message() << &leave - ways << folder.toStdString());
            open(settings);
            destination()->setText(folder);
            leave();
            EXPECT_EQ(window->isVisible(), folder == u"D:"_s); // nothing runs after the real end
            EXPECT_EQ(fileBytes(settingsPath()), settings);
        }
    EXPECT_EQ(host.messages, QStringList(3, u"Ostravelin 1.8.1 | You have not specified a valid "
                                            "destination, Ostravelin will be closed!"_s));
    EXPECT_EQ(host.messageIcons, QList<MessageIcon>(3, MessageIcon::Critical));
    EXPECT_EQ(host.endings, QList<int>(3, 0));
}

TEST(BrowseForFolder, ReturnsNothingForAPathThatIsTooLong)
{
    FakeHost host;
    const QString longest(254, u'a');
    host.folderChoices = {longest, longest + u'a'};
    EXPECT_EQ(ui::BrowseForFolder(nullptr, u"Choose"_s), longest + QChar::Null);
    EXPECT_EQ(ui::BrowseForFolder(nullptr, u"Choose"_s), u""_s);
}
