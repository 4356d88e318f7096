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
        for (app::FixedText<200> *folder : {&app::sBestemmingsmap, &app::sSPCmap})
            *folder = QString();
    }

    void open(const QByteArray &settings = {})
    {
        if (!settings.isEmpty())
            makeFile(settingsPath(), settings);
        window = std::make_unique<ui::frmOptions>();
        window->show();
    }

    QString settingsPath() const { return host.settingsDirectory() + u"/Ostravelin.ini"_s; }
    QPushButton *button(const QString &name) const
    {
        return window->findChild<QPushButton *>(name);
    }
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
        EXPECT_TRUE(button(u"cmdCancel"_s)->isEnabled());
        return button(u"cmdOK"_s)->isEnabled();
    }

    FakeHost host;
    std::unique_ptr<ui::frmOptions> window;
};

QString padded(const QString &folder)
{
    return folder.leftJustified(200);
}

} // namespace

TEST_F(Options, ShowTheSettingsFile)
{
    struct Shown
    {
        QString destination, spcFolder;
        bool header, preXp, savable;
    };
    const std::pair<QByteArray, Shown> cases[] = {
        {"[Bestandsmappen]\nBestemmingsmap=/srv/audio\nSPCmap=/srv/spc\n[Opties]\nSPC=1\npreXP=0\n",
         {u"/srv/audio"_s, u"/srv/spc"_s, true, false, true}},
        {"[Bestandsmappen]\nBestemmingsmap=/a\n[Opties]\nSPC=0\npreXP=1.4\n",
         {u"/a"_s, u"?"_s, false, true, true}},
        {"[Bestandsmappen]\nBestemmingsmap=\n[Opties]\nSPC=on\npreXP=99999\n",
         {u""_s, u"?"_s, false, false, true}},
        {"[Bestandsmappen]\nBestemmingsmap=?\nSPCmap=/srv/spc\n[Opties]\nSPC=1\npreXP=1\n",
         {u""_s, u""_s, false, false, false}},
        {"[Opties]\nSPC=1\n", {u""_s, u""_s, false, false, false}},
    };
    for (const auto &[settings, shown] : cases) {
        SCOPED_TRACE(settings.toStdString());
        open(settings);
        EXPECT_EQ(window->windowTitle(), u"Ostravelin 1.8.1"_s);
        EXPECT_EQ(destination()->text(), shown.destination);
        EXPECT_EQ(spcFolder()->text(), shown.spcFolder);
        EXPECT_EQ(header()->isChecked(), shown.header);
        EXPECT_EQ(button(u"SPC_dir"_s)->isEnabled(), shown.header);
        EXPECT_EQ(preXp()->isChecked(), shown.preXp);
        EXPECT_EQ(canSave(), shown.savable);
    }
}

TEST_F(Options, HaveTheirCaptionsAndAreNamedForScreenReaders)
{
    open();
    const std::pair<QString, QString> labels[] = {{u"Label2"_s, u"Destination folder:"_s},
                                                  {u"Label3"_s, u"SPC folder:"_s},
                                                  {u"Label7"_s, u"SPC header:"_s},
                                                  {u"Label8"_s, u"Pre-Windows XP:"_s}};
    for (const auto &[name, caption] : labels) {
        const auto *label = window->findChild<QLabel *>(name);
        EXPECT_EQ(label->text(), caption);
        EXPECT_EQ(label->buddy()->accessibleName() + u':', caption);
    }
    EXPECT_EQ(button(u"cmdOK"_s)->text(), u"&Save"_s);
    EXPECT_EQ(button(u"cmdCancel"_s)->text(), u"&Cancel"_s);
    EXPECT_EQ(button(u"cmdApply"_s)->text(), u"&Submit"_s);
}

TEST_F(Options, NoTabShowsASamplePage)
{
    open();
    auto *tabs = window->findChild<QTabBar *>(u"tbsOptions"_s);
    const auto pages = window->findChildren<QWidget *>(u"picOptions"_s);
    ASSERT_EQ(pages.size(), 4);
    ASSERT_EQ(tabs->count(), 4);
    for (int tab = 3; tab >= 0; --tab) {
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
        EXPECT_EQ(tabs->currentIndex(), tab);
        EXPECT_TRUE(destination()->isVisible());
        for (const int sample : {2, 3, 4}) {
            auto *frame = window->findChild<QGroupBox *>(u"fraSample%1"_s.arg(sample));
            EXPECT_EQ(frame->title(), u"Sample %1"_s.arg(sample));
            EXPECT_FALSE(frame->isVisible());
        }
    }
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
             "[Bestandsmappen]\nBestemmingsmap=/old\nSPCmap=/spc\n[Opties]\nSPC=1\n");
    app::LoadSettings();
    open();
    click(u"Bestemmings_dir"_s); // aborted
    click(u"SPC_dir"_s);
    EXPECT_EQ(host.messages, QStringList(2, u"Ostravelin 1.8.1 | Folder setting aborted!"_s));
    EXPECT_EQ(host.messageIcons, QList<MessageIcon>(2, MessageIcon::Information));
    EXPECT_EQ(destination()->text(), u"/old"_s);
    EXPECT_EQ(spcFolder()->text(), u"/spc"_s);
    EXPECT_EQ(app::sSPCmap.text(), padded(u"/spc"_s));

    choose(u"Bestemmings_dir"_s, u"/srv/audio"_s);
    choose(u"SPC_dir"_s, u"/srv/spc"_s);
    EXPECT_EQ(host.folderQuestions, QStringList(4, u"Choose a folder"_s));
    EXPECT_EQ(host.lastFolderOwner, window.get());
    EXPECT_EQ(destination()->text(), u"/srv/audio"_s);
    EXPECT_EQ(spcFolder()->text(), u"/srv/spc"_s);
    EXPECT_EQ(app::sBestemmingsmap.text(), padded(u"/old"_s));
    EXPECT_EQ(app::sSPCmap.text(), padded(u"/srv/spc"_s + QChar::Null));

    click(u"cmdApply"_s);
    EXPECT_EQ(app::sBestemmingsmap.text(), padded(u"/srv/audio"_s));
    EXPECT_EQ(app::sSPCmap.text(), padded(u"/srv/spc"_s));
}

TEST_F(Options, SubmitWritesWhatStandsThereAndPutsItInForce)
{
    struct Entered
    {
        QString destination, spcFolder;
        bool header, preXp;
    };
    const std::pair<Entered, QByteArray> cases[] = {
        {{u"/srv/audio"_s, u"/srv/spc"_s, true, false},
         "Bestemmingsmap=/srv/audio\r\nSPCmap=/srv/spc\r\n[Opties]\r\nSPC=1\r\npreXP=0\r\n"},
        {{u"/srv/audio"_s, u""_s, true, true},
         "Bestemmingsmap=/srv/audio\r\nSPCmap=\r\n[Opties]\r\nSPC=0\r\npreXP=1\r\n"},
        {{u""_s, u"no such folder"_s, false, false},
         "Bestemmingsmap=\r\nSPCmap=no such folder\r\n[Opties]\r\nSPC=0\r\npreXP=0\r\n"},
    };
    for (const auto &[entered, written] : cases) {
        SCOPED_TRACE(written.toStdString());
        open("[Bestandsmappen]\r\nBestemmingsmap=/old\r\n");
        destination()->setText(entered.destination);
        spcFolder()->setText(entered.spcFolder);
        header()->setChecked(entered.header);
        preXp()->setChecked(entered.preXp);
        click(u"cmdApply"_s);

        EXPECT_EQ(fileBytes(settingsPath()), "[Bestandsmappen]\r\n" + written);
        EXPECT_EQ(app::sBestemmingsmap.text(), padded(entered.destination));
        EXPECT_EQ(app::sSPCmap.text(), padded(entered.spcFolder));
        const bool headerKept = entered.header && !entered.spcFolder.isEmpty();
        EXPECT_EQ(app::sSPC.text(), headerKept ? u"1"_s : u"0"_s);
        EXPECT_EQ(app::sPreXP.text(), entered.preXp ? u"1"_s : u"0"_s);
        EXPECT_EQ(header()->isChecked(), headerKept);
        EXPECT_EQ(button(u"SPC_dir"_s)->isEnabled(), headerKept);
        EXPECT_TRUE(window->isVisible());
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
        EXPECT_EQ(app::sBestemmingsmap.text(), padded(u"/n"_s));
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
    EXPECT_EQ(app::sBestemmingsmap.text(), padded(u"?"_s));
}

TEST_F(Options, CancelTheFrameAndEscEndTheProgramWithoutADestination)
{
    const std::function<void()> ways[] = {
        [this] { click(u"cmdCancel"_s); },
        [this] { QTest::keyClick(destination(), Qt::Key_Escape); },
        [this] { window->close(); },
    };
    const std::pair<QString, bool> cases[] = {
        {u""_s, true}, {u"D:"_s, true}, {u"D:\\"_s, false}, {u"/srv"_s, false}};
    const QByteArray settings = "[Bestandsmappen]\nBestemmingsmap=/old\n";
    for (const auto &leave : ways)
        for (const auto &[folder, ends] : cases) {
            SCOPED_TRACE(folder.toStdString());
            host.messages.clear();
            host.messageIcons.clear();
            host.endings.clear();
            open(settings);
            destination()->setText(folder);
            leave();
            if (ends) {
                EXPECT_EQ(host.messages,
                          QStringList{u"Ostravelin 1.8.1 | You have not specified a valid "
                                      "destination, Ostravelin will be closed!"_s});
                EXPECT_EQ(host.messageIcons, QList{MessageIcon::Critical});
                EXPECT_EQ(host.endings, QList{0});
            } else {
                EXPECT_TRUE(host.endings.isEmpty());
            }
            EXPECT_EQ(window->isVisible(), ends); // nothing runs after the real end
            EXPECT_EQ(fileBytes(settingsPath()), settings);
        }
}

TEST(BrowseForFolder, ReturnsTheFolderWithItsNulOrNothing)
{
    FakeHost host;
    const std::pair<QString, QString> cases[] = {
        {u"/srv/audio"_s, u"/srv/audio"_s + QChar::Null},
        {u"/"_s, u"/"_s + QChar::Null},
        {QString(254, u'a'), QString(254, u'a') + QChar::Null},
        {QString(255, u'a'), u""_s},
        {u""_s, u""_s},
    };
    for (const auto &[chosen, path] : cases) {
        host.folderChoices << chosen;
        EXPECT_EQ(ui::BrowseForFolder(nullptr, u"Choose"_s), path);
    }
}
