#include "app/Check.h"
#include "app/Module1.h"
#include "platform/NativeHost.h"
#include "platform/RuntimeError.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>

// The entry procedure of the check: a companion of the program, without a window, that says whether
// every task's file is as new as it should be.

using namespace Qt::StringLiterals;
using platform::ErrorNumber;
using platform::RuntimeError;

namespace {

// What the command line asks for.
struct Request
{
    QString programFolder;  ///< empty: the one that this companion stands in
    QString settingsFolder; ///< empty: that of this user
    app::CheckMoment moment{QDateTime::currentDateTime(), std::chrono::minutes{15}};
    bool isQuiet = false;
};

// The system's own services, in the folders that the command line names.
class CheckHost : public platform::NativeHost
{
public:
    explicit CheckHost(const Request &request)
        : m_request(request)
    {}

    QString programFolder() const override
    {
        return m_request.programFolder.isEmpty() ? NativeHost::programFolder()
                                                 : m_request.programFolder;
    }
    QString settingsDirectory() const override
    {
        return m_request.settingsFolder.isEmpty() ? NativeHost::settingsDirectory()
                                                  : m_request.settingsFolder;
    }

private:
    const Request &m_request;
};

} // namespace

static constexpr auto description =
    "Says whether every active task of Ostravelin has its newest file: one line in all, then one\n"
    "line a task. It changes nothing, and may run at any time.\n"
    "\n"
    "The exit status is 0 when all is well, 1 when something is late, 2 when something is missing\n"
    "or the program does not run, 3 when the check could not be done.";

[[noreturn]] static void refuse(const QString &reason)
{
    throw RuntimeError(ErrorNumber::InvalidProcedureCall, reason);
}

static QString existingFolder(const QString &path)
{
    if (!QFileInfo(path).isDir())
        refuse(u"There is no folder "_s + path);
    return QDir::toNativeSeparators(QDir(path).absolutePath());
}

static QDateTime parsedMoment(const QString &text)
{
    for (const QString &form : {u"yyyy-MM-dd HH:mm:ss"_s, u"yyyy-MM-dd HH:mm"_s})
        if (const QDateTime moment = QDateTime::fromString(text, form); moment.isValid())
            return moment;
    refuse(u"--at is followed by a moment such as \"2026-03-02 07:00\", not by "_s + text);
}

static std::chrono::minutes parsedMinutes(const QString &text)
{
    bool isNumber = false;
    const int minutes = text.toInt(&isNumber);
    if (!isNumber || minutes < 0 || minutes > 24 * 60)
        refuse(u"--allow is followed by a number of minutes from 0 to 1440, not by "_s + text);
    return std::chrono::minutes{minutes};
}

// Nothing when all that was asked for is told by the command line's own answer.
static std::optional<Request> parsedRequest(const QStringList &arguments)
{
    const QCommandLineOption folder(u"folder"_s,
                                    u"The program folder, when it is another one than "
                                    "that of this command."_s,
                                    u"folder"_s);
    const QCommandLineOption settings(u"settings"_s,
                                      u"The folder of Ostravelin.ini, when the "
                                      "program runs as another user."_s,
                                      u"folder"_s);
    const QCommandLineOption allow(u"allow"_s, u"How long after its slot a file may come (15)."_s,
                                   u"minutes"_s);
    const QCommandLineOption at(u"at"_s, u"Check as of this moment: \"2026-03-02 07:00\"."_s,
                                u"moment"_s);
    const QCommandLineOption quiet(u"quiet"_s, u"Say nothing when all is well."_s);
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Show this."_s);
    const QCommandLineOption version(u"version"_s, u"Show the version."_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addOptions({folder, settings, allow, at, quiet, help, version});
    if (!parser.parse(arguments))
        refuse(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        refuse(u"Not known: "_s + parser.positionalArguments().join(u' '));
    if (parser.isSet(help) || parser.isSet(version)) {
        const QString answer = parser.isSet(help) ? parser.helpText() : app::WindowTitle() + u'\n';
        std::fputs(answer.toLocal8Bit().constData(), stdout);
        return std::nullopt;
    }
    Request request;
    if (parser.isSet(folder))
        request.programFolder = existingFolder(parser.value(folder));
    if (parser.isSet(settings))
        request.settingsFolder = existingFolder(parser.value(settings));
    if (parser.isSet(allow))
        request.moment.allowance = parsedMinutes(parser.value(allow));
    if (parser.isSet(at))
        request.moment.now = parsedMoment(parser.value(at));
    request.isQuiet = parser.isSet(quiet);
    return request;
}

// Monitoring programs take what is behind a "|" for measured values.
static void print(const QString &line)
{
    const QString plain = app::onOneLine(line).replace(u'|', u'/');
    std::puts(plain.toLocal8Bit().constData());
}

static void print(const app::Report &report, bool isQuiet)
{
    if (isQuiet && report.status == app::Status::Well)
        return;
    print(report.summary);
    for (const QString &line : report.lines)
        print(line);
}

static app::Status run()
{
    const auto request = parsedRequest(QCoreApplication::arguments());
    if (!request)
        return app::Status::Well;
    CheckHost host(*request);
    platform::installHost(host);
    const app::Report report = app::check(request->moment);
    print(report, request->isQuiet);
    return report.status;
}

int main(int argc, char **argv)
{
    qputenv("LC_ALL", "C.UTF-8"); // the toolkit tells of any that is not UTF-8, such as cron's
    const QCoreApplication application(argc, argv);
    try {
        return static_cast<int>(run());
    } catch (const std::exception &error) {
        print(u"Ostravelin NOT CHECKED: "_s + QString::fromUtf8(error.what()));
        return static_cast<int>(app::Status::NotChecked);
    }
}
