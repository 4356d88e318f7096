#pragma once

#include "platform/Host.h"

namespace platform {

/// The host of a running program: the real clock, the real files, real message boxes.
class NativeHost : public Host
{
public:
    std::chrono::local_seconds now() const override;
    std::int32_t tickCount() const override;
    void sleep(std::chrono::milliseconds duration) override;
    void beep() override;
    QString programFolder() const override;
    QString settingsDirectory() const override;
    QString redirectedPath(const QString &path) const override;
    QString profileString(const QString &file, const QString &section, const QString &key,
                          const QString &defaultValue, int size) const override;
    bool writeProfileString(const QString &file, const QString &section, const QString &key,
                            const QString &value) override;
    void openTextEditor(const QString &path, std::function<void()> onFailure) override;
    int startBatch(const ConcatenationBatch &batch,
                   std::function<void(const QString &)> onFailure) override;
    std::uint32_t findBatchWindow(BatchWindowKind kind) const override;
    int closeBatchWindow(std::uint32_t window) override;
    void showMessage(const QString &title, const QString &text, MessageIcon icon) override;
    bool ask(const QString &title, const QString &question) override;
    QString chooseFolder(QWidget *owner, const QString &title) override;
    bool isOpenedByDesktop(const QString &folder) const override;
    void endProgram(int status) override;

private:
    int m_runningBatches = 0;
};

} // namespace platform
