#include "tests/ui/main/MainFormTest.h"

#include "app/Module1.h"
#include "store/OpenRecordset.h"
#include "store/TaskStore.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>

MainFormTest::MainFormTest()
{
    QDir().mkpath(host.programFolder() + u"/database"_s);
    QDir().mkpath(destination({}));
    QFile::copy(QStringLiteral(EMPTY_DATABASE),
                host.programFolder() + u"/database/ostravelin.mdb"_s);
    makeFile(host.settingsDirectory() + u"/Ostravelin.ini"_s,
             "[Bestandsmappen]\nBestemmingsmap=" + destination({}).toUtf8() + '\n');
    app::LoadSettings();
    store::OpenDatabase(host.programFolder());
    host.clock = moment(2026, 3, 4, 10);
    host.onSleep = [this](auto) { statusesDuringPauses << status(); };
    station.routeHere();
}

MainFormTest::~MainFormTest()
{
    form.reset();
    store::rsOpdrachten.reset();
    store::dbConnection.close();
    ui::ForcedDownload = platform::Boolean::False;
}

void MainFormTest::execute(const QString &statement)
{
    store::dbConnection.execute(statement);
}

void MainFormTest::addTask(const QString &name, const QString &address, const QString &fileName,
                           int minute, bool active)
{
    execute(u"INSERT INTO Opdrachtgegevens VALUES ('%1', '%2', '%3', %4, %5)"_s
                .arg(name, address, fileName)
                .arg(minute)
                .arg(active));
}

void MainFormTest::addSlot(const QString &name, int day, int hour)
{
    execute(u"INSERT INTO Tijden VALUES ('%1', %2, %3)"_s.arg(name).arg(day).arg(hour));
}

void MainFormTest::removeAll()
{
    execute(u"DELETE FROM Opdrachtgegevens"_s);
    execute(u"DELETE FROM Tijden"_s);
}

void MainFormTest::addTaskAt(std::chrono::local_seconds slot, const QString &name,
                             const QString &path, const QString &fileName)
{
    const auto day = std::chrono::floor<std::chrono::days>(slot);
    const std::chrono::hh_mm_ss time(slot - day);
    addTask(name, Station::url(path), fileName, static_cast<int>(time.minutes().count()));
    addSlot(name, static_cast<int>(std::chrono::weekday{day}.iso_encoding()),
            static_cast<int>(time.hours().count()));
}

QStringList MainFormTest::stored()
{
    QStringList stored;
    store::Recordset records(store::dbConnection);
    for (const QString &table : {u"Opdrachtgegevens"_s, u"Tijden"_s}) {
        const store::OpenRecordset rows(records, table);
        for (; !rows->atEnd(); rows->moveNext()) {
            QStringList fields;
            for (int field = 0; field < rows->fieldNames().size(); ++field)
                fields << rows->value(field).toText();
            stored << fields.join(u'|');
        }
    }
    return stored;
}

void MainFormTest::openForm(ui::MenuWindows windows)
{
    form = std::make_unique<ui::MainForm>(std::move(windows));
    formControl<QTimer>(u"Timer1"_s)->setInterval(std::chrono::hours(1));
    form->show();
}

void MainFormTest::onProgress(std::function<void()> act)
{
    QObject::connect(formControl<controls::DL>(), &controls::DL::Progress, form.get(),
                     std::move(act));
}

void MainFormTest::tick()
{
    QMetaObject::invokeMethod(formControl<QTimer>(u"Timer1"_s), "timeout");
}

void MainFormTest::runRecomputeLater()
{
    auto *timer = formControl<QTimer>(u"RecomputeLater"_s);
    if (timer->isActive())
        QMetaObject::invokeMethod(timer, "timeout");
}

void MainFormTest::lookUpBeforeDue()
{
    host.clock = due - 1s;
    host.sleeps.clear();
    statusesDuringPauses.clear();
    form->ZoekVolgende();
}

void MainFormTest::runDownload()
{
    QSignalSpy completed(formControl<controls::DL>(), &controls::DL::Completed);
    host.clock = form->DownloadEntry.DownloadTime;
    tick();
    if (completed.isEmpty())
        completed.wait();
    ASSERT_EQ(completed.size(), 1);
}

QString MainFormTest::labelText(const QString &name) const
{
    return formControl<QLabel>(name)->text();
}

QString MainFormTest::labelColour(const QString &name) const
{
    const auto *label = formControl<QLabel>(name);
    return label->palette().color(label->foregroundRole()).name();
}

bool MainFormTest::canUse(const QString &entry) const
{
    if (const auto *menu = formControl<QMenu>(entry))
        return menu->menuAction()->isEnabled();
    return formControl<QAction>(entry)->isEnabled();
}

bool MainFormTest::waitsForRecompute() const
{
    return formControl<QTimer>(u"RecomputeLater"_s)->isActive();
}

QStringList MainFormTest::log() const
{
    QStringList lines = QString::fromUtf8(fileBytes(app::logFilePath())).split(u"\r\n"_s);
    lines.removeLast();
    for (QString &line : lines)
        line.remove(0, u"dd-mm-yy hh:mm:ss - "_s.size());
    return lines;
}

QString MainFormTest::destination(const QString &name) const
{
    return host.folder() + u"/audio/"_s + name;
}

QStringList MainFormTest::destinationFiles() const
{
    return filesIn(destination({}));
}
