#include "tests/ui/main/MainFormTest.h"
#include "ui/dialogs/frmForceDownload.h"

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>

namespace {

// The window as the main window's menu opens it, over a task that is due later that morning.
class ForceDownload : public MainFormTest
{
protected:
    ForceDownload() { addTaskAt(due, u"Hourly"_s, u"/radio/latest.mp2"_s, u"news.mp2"_s); }

    void openMain()
    {
        openForm({.forcedDownload = [this] {
            ui::frmForceDownload choice(form->DownloadEntry, form.get());
            form->showModal(choice);
        }});
    }

    // Opens the window, lets the user act in it, and leaves it.
    void inWindow(const std::function<void()> &act)
    {
        QTimer::singleShot(0, form.get(), [&] {
            window = QApplication::activeModalWidget();
            ASSERT_TRUE(window);
            combo = window->findChild<QComboBox *>(u"ComboOpdracht"_s);
            button = window->findChild<QPushButton *>(u"CmdForceDownload"_s);
            act();
            window->close();
        });
        trigger(u"mnuForceDownload"_s);
    }

    void force(const QString &name)
    {
        inWindow([&] {
            combo->setCurrentText(name);
            QTest::mouseClick(button, Qt::LeftButton);
            EXPECT_FALSE(window->isVisible());
        });
    }

    QWidget *window = nullptr;
    QComboBox *combo = nullptr;
    QPushButton *button = nullptr;
};

} // namespace

TEST_F(ForceDownload, OffersTheTasksAndStartsWithNoneChosen)
{
    addTask(u"Kid''s été"_s, u"http://a/b"_s, u"b"_s, 0, false);
    openMain();
    inWindow([this] {
        const QString frame = window->findChild<QGroupBox *>(u"Frame1"_s)->title();
        const QStringList texts = {window->windowTitle(), frame, button->text(),
                                   combo->currentText()};
        EXPECT_EQ(texts.join(u'|'), u"Ostravelin 1.8.1|Forced download|Download Now|"_s);
        EXPECT_FALSE(button->isEnabled());
        EXPECT_FALSE(store::rsOpdrachten->isOpen());

        QStringList names;
        for (int entry = 0; entry < combo->count(); ++entry) {
            QTest::keyClick(combo, Qt::Key_Down);
            names << combo->currentText();
            EXPECT_TRUE(button->isEnabled());
        }
        EXPECT_EQ(names, (QStringList{u"Hourly"_s, u"Kid's été"_s}));
    });
    EXPECT_EQ(form->DownloadEntry.Opdracht, u"Hourly"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadTime, due);
    EXPECT_EQ(ui::ForcedDownload, Boolean::False);
}

TEST_F(ForceDownload, TakesThePlaceOfThePendingDownload)
{
    const QByteArray audio(123456, 'a');
    addTask(u"Kid''s été"_s, Station::url(u"/kids/raw.mp2"_s), u"kids.mp2"_s, 0, false);
    station.answer(u"/kids/raw.mp2"_s, {.body = audio});
    openMain();
    onProgress([this] { host.ticks = 1250; });
    force(u"Kid's été"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadTime, moment(2026, 3, 4, 10, 0, 5));
    host.clock = moment(2026, 3, 4, 10, 0, 4);
    tick();
    EXPECT_TRUE(station.requests().empty());

    runDownload();
    EXPECT_EQ(log(), QStringList{u"Kid's été - 123.456 kB - 98.76 kB/s - Forced"_s});
    EXPECT_EQ(fileBytes(destination(u"kids.mp2"_s)), audio);
    EXPECT_EQ(form->DownloadEntry.Opdracht, u"Hourly"_s);
    EXPECT_EQ(ui::ForcedDownload, Boolean::False);
}

TEST_F(ForceDownload, StartsNothingWhileNothingIsScheduled)
{
    setTasks(u"Aktief = 0"_s);
    openMain();
    force(u"Hourly"_s);
    EXPECT_EQ(form->DownloadEntry.Opdracht, u"Hourly"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadFlag, Boolean::False);
    host.clock += 5s;
    tick();
    EXPECT_TRUE(station.requests().empty());
    EXPECT_EQ(host.beeps, 0);
}

TEST_F(ForceDownload, ATaskThatIsGoneIsReported)
{
    openMain();
    inWindow([this] {
        QTest::keyClick(combo, Qt::Key_Down);
        removeAll();
        QTest::keyClick(combo, Qt::Key_Return);
    });
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 3021: No current row"_s});
    EXPECT_FALSE(store::rsOpdrachten->isOpen());
}
