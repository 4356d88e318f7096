#include "tests/support/FakeHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <csignal>
#include <gtest/gtest.h>

namespace testing_support {

void FakeHost::sleep(std::chrono::milliseconds duration)
{
    sleeps << duration;
    if (onSleep)
        onSleep(duration);
    clock += std::chrono::floor<std::chrono::seconds>(duration);
    ticks = static_cast<std::int32_t>(static_cast<std::uint32_t>(ticks + duration.count()));
}

void FakeHost::openTextEditor(const QString &path, std::function<void()> onFailure)
{
    openedInEditor << path;
    if (!hasEditor)
        onFailure();
}

void FakeHost::showMessage(const QString &title, const QString &text, platform::MessageIcon icon)
{
    messages << title + QStringLiteral(" | ") + text;
    messageIcons << icon;
    if (onMessage)
        onMessage();
}

bool FakeHost::ask(const QString &title, const QString &question)
{
    questions << title + QStringLiteral(" | ") + question;
    return !answers.isEmpty() && answers.takeFirst();
}

QString FakeHost::chooseFolder(QWidget *owner, const QString &title)
{
    lastFolderOwner = owner;
    folderQuestions << title;
    return folderChoices.isEmpty() ? QString() : folderChoices.takeFirst();
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void makeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

FileSizeLimit::FileSizeLimit(rlim_t bytes)
{
    std::signal(SIGXFSZ, SIG_IGN); // so that writing fails instead
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit = {std::min(bytes, m_before.rlim_max), m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace testing_support
