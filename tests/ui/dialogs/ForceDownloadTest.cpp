#include "tests/ui/main/MainFormTest.h"
#include "ui/dialogs/frmForceDownload.h"

#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>

namespace {

// The window over the main window and a task that is due later that morning.
class ForceDownload : public MainFormTest
{
protected:
    ForceDownload() { addTaskAt(due, u"Hourly"_s, u"/radio/latest.mp2"_s, u"news.mp2"_s); }

    void openWindow()
    {
        openForm();
        window = std::make_unique<ui::frmForceDownload>(form->DownloadEntry);
        window->show();
    }

    auto *combo() const { return window->findChild<QComboBox *>(); }
    auto *button() const { return window->findChild<QPushButton *>(); }

    void force(const QString &name) const
    {
        combo()->setCurrentText(name);
        QTest::mouseClick(button(), Qt::LeftButton);
        EXPECT_FALSE(window->isVisible());
    }

    std::unique_ptr<ui::frmForceDownload> window;
};

} // namespace

TEST_F(ForceDownload, OffersTheTasksAndReportsOneThatIsGone)
{
    addTask(u"Kid''s été"_s, u"http://a/b"_s, u"b"_s, 0, false);
    openWindow();
    const QStringList texts = {window->windowTitle(), window->findChild<QGroupBox *>()->title(),
                               button()->text(), combo()->currentText()};
    EXPECT_EQ(texts.join(u'|'), u"Ostravelin 1.8.1|Forced download|Download Now|"_s);
    EXPECT_FALSE(button()->isEnabled());
    EXPECT_FALSE(store::rsOpdrachten->isOpen());
    for (const QString &name : {u"Hourly"_s, u"Kid's été"_s}) {
        QTest::keyClick(combo(), Qt::Key_Down);
        EXPECT_EQ(combo()->currentText(), name);
        EXPECT_TRUE(button()->isEnabled());
    }
    EXPECT_EQ(combo()->count(), 2);

    removeAll();
    QTest::keyClick(combo(), Qt::Key_Return);
    EXPECT_EQ(host.messages, QStringList{u"Ostravelin 1.8.1 | Error 3021: No current row"_s});
    EXPECT_FALSE(store::rsOpdrachten->isOpen());
    window->close();
    EXPECT_EQ(form->DownloadEntry.DownloadTime, due);
    EXPECT_EQ(ui::ForcedDownload, Boolean::False);
}

TEST_F(ForceDownload, TakesThePlaceOfThePendingDownload)
{
    const QByteArray audio(123456, 'a');
    addTask(u"Kid''s été"_s, Station::url(u"/kids/raw.mp2"_s), u"kids.mp2"_s, 0, false);
    station.answer(u"/kids/raw.mp2"_s, {.body = audio});
    openWindow();
    onProgress([this] { host.ticks = 1250; });
    force(u"Kid's été"_s);
    EXPECT_EQ(form->DownloadEntry.DownloadTime, moment(2026, 3, 4, 10, 0, 5));
    runDownload();
    EXPECT_EQ(log(), QStringList{u"Kid's été - 123.456 kB - 98.76 kB/s - Forced"_s});
    EXPECT_EQ(fileBytes(destination(u"kids.mp2"_s)), audio);
    EXPECT_EQ(form->DownloadEntry.Opdracht, u"Hourly"_s);
}

TEST_F(ForceDownload, StartsNothingWhileNothingIsScheduled)
{
    setTasks(u"Aktief = 0"_s);
    openWindow();
    force(u"Hourly"_s);
    EXPECT_EQ(form->DownloadEntry.Opdracht, u"Hourly"_s);
    host.clock += 5s;
    tick();
    EXPECT_EQ(host.beeps, 0);
}
