#pragma once

#include "platform/NativeHost.h"
#include "platform/RuntimeError.h"

#include <QStringList>
#include <QTemporaryDir>

namespace testing_support {

/// A host in force for a test's life: a clock and a tick counter that only the test and sleep()
/// move, folders of its own, and a record of what was asked of it. Settings files are real ones.
class FakeHost : public platform::NativeHost
{
public:
    FakeHost() { platform::installHost(*this); }

    std::chrono::local_seconds clock{};
    std::int32_t ticks = 0;
    std::function<void(std::chrono::milliseconds)> onSleep; ///< called before the clock moves

    QList<std::chrono::milliseconds> sleeps;
    int beeps = 0;
    QStringList messages;            ///< "title | text"
    std::function<void()> onMessage; ///< called while a message is shown
    QList<platform::MessageIcon> messageIcons;
    QList<bool> answers;       ///< the user's next answers to questions; No when there is none
    QStringList questions;     ///< "title | question"
    QStringList folderChoices; ///< the user's next choices of a folder; "" cancels
    QStringList folderQuestions;
    QString openedByDesktop; ///< a folder
    QWidget *lastFolderOwner = nullptr;
    QStringList openedInEditor;
    bool hasEditor = true;
    QList<std::uint32_t> closedBatchWindows;
    bool failsToBeepAndToFindBatches = false; ///< with an overflow
    QList<int> endings;                       ///< the statuses that the program was to end with

    /// A folder of the test's own; "program" and "settings" are in it.
    QString folder() const { return m_folder.path(); }

    std::chrono::local_seconds now() const override { return clock; }
    std::int32_t tickCount() const override { return ticks; }
    void sleep(std::chrono::milliseconds duration) override
    {
        sleeps << duration;
        if (onSleep)
            onSleep(duration);
        clock += std::chrono::floor<std::chrono::seconds>(duration);
        ticks = static_cast<std::int32_t>(static_cast<std::uint32_t>(ticks + duration.count()));
    }
    void beep() override
    {
        ++beeps;
        failIfTold();
    }
    std::uint32_t findBatchWindow(platform::BatchWindowKind kind) const override
    {
        failIfTold();
        return NativeHost::findBatchWindow(kind);
    }
    int closeBatchWindow(std::uint32_t window) override
    {
        closedBatchWindows << window;
        return NativeHost::closeBatchWindow(window);
    }
    QString programFolder() const override { return folder() + QStringLiteral("/program"); }
    QString settingsDirectory() const override { return folder() + QStringLiteral("/settings"); }
    void openTextEditor(const QString &path, std::function<void()> onFailure) override
    {
        openedInEditor << path;
        if (!hasEditor)
            onFailure();
    }
    void showMessage(const QString &title, const QString &text, platform::MessageIcon icon) override
    {
        messages << title + QStringLiteral(" | ") + text;
        messageIcons << icon;
        if (onMessage)
            onMessage();
    }
    bool ask(const QString &title, const QString &question) override
    {
        questions << title + QStringLiteral(" | ") + question;
        return !answers.isEmpty() && answers.takeFirst();
    }
    QString chooseFolder(QWidget *owner, const QString &title) override
    {
        lastFolderOwner = owner;
        folderQuestions << title;
        return folderChoices.isEmpty() ? QString() : folderChoices.takeFirst();
    }
    bool isOpenedByDesktop(const QString &folder) const override
    {
        return folder == openedByDesktop;
    }
    void endProgram(int status) override { endings << status; }

private:
    void failIfTold() const
    {
        if (failsToBeepAndToFindBatches)
            throw platform::RuntimeError(platform::ErrorNumber::Overflow);
    }

    QTemporaryDir m_folder;
};

/// A moment of the local clock.
constexpr std::chrono::local_seconds moment(int year, unsigned month, unsigned day, int hour = 0,
                                            int minute = 0, int second = 0)
{
    using namespace std::chrono;
    return local_days{year_month_day{std::chrono::year{year}, std::chrono::month{month},
                                     std::chrono::day{day}}} +
           hours{hour} + minutes{minute} + seconds{second};
}

} // namespace testing_support
