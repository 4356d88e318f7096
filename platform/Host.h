#pragma once

#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>

class QWidget;

namespace platform {

/// The concatenation of two files into a third, all in one folder, as a process of its own.
struct ConcatenationBatch
{
    QString folder;    ///< with a separator at its end
    QString batchFile; ///< the name of the batch that holds the command
    QString header;    ///< the name of the file whose bytes come first
    QString audio;     ///< the name of the file whose bytes follow
    QString output;    ///< the name of the resulting file, which may be one that exists
};

/// By what a batch is known from outside.
enum class BatchWindowKind {
    Running, ///< the console window of a command that runs
    Finished ///< the console window of the batch, once it has ended
};

enum class MessageIcon { Information, Critical };

/// The services of the operating system that the program depends on, and that a test replaces by
/// ones with a clock of its own and prepared answers.
class Host
{
public:
    virtual ~Host() = default;

    /// The local wall clock, in whole seconds.
    virtual std::chrono::local_seconds now() const = 0;

    /// Milliseconds since some fixed moment, as a signed 32-bit count that wraps.
    virtual std::int32_t tickCount() const = 0;

    /// Blocks the thread.
    virtual void sleep(std::chrono::milliseconds duration) = 0;

    /// The standard audible signal.
    virtual void beep() = 0;

    /// The folder that holds the executable, without a separator at its end.
    virtual QString programFolder() const = 0;

    /// The folder of settings files, without a separator at its end: the Windows directory, or the
    /// user's configuration directory where there is none.
    virtual QString settingsDirectory() const = 0;

    /// Where this user's settings file of that path is: there, or, where the system lets only
    /// administrators write, in the place to which it redirects the files of older programs.
    virtual QString redirectedPath(const QString &path) const = 0;

    /// The value of a key in a settings file of the settings directory: at most size - 1
    /// characters of it, or of `defaultValue` when file, section or key is missing. A file that
    /// was redirected and is not there yet is read where it was redirected from.
    virtual QString profileString(const QString &file, const QString &section, const QString &key,
                                  const QString &defaultValue, int size) const = 0;

    /// Stores a value in the redirected file; file, section and key are made where they are
    /// missing. Returns whether the file was written.
    virtual bool writeProfileString(const QString &file, const QString &section, const QString &key,
                                    const QString &value) = 0;

    /// Opens a text file in the system's text editor and returns at once. `onFailure` is called,
    /// now or later, when no editor could be started.
    virtual void openTextEditor(const QString &path, std::function<void()> onFailure) = 0;

    /// Starts the batch without a visible window, returns at once, and returns its task identifier.
    /// A file that the output replaces is kept until the new one is whole. `onFailure` is told,
    /// later and in plain words, why a started batch did not make its output. Raises what keeps the
    /// batch from starting.
    virtual int startBatch(const ConcatenationBatch &batch,
                           std::function<void(const QString &reason)> onFailure) = 0;

    /// The handle of the window, or 0 when there is none. Where none shows, the batch's process
    /// stands for it; one that could not be started has ended.
    virtual std::uint32_t findBatchWindow(BatchWindowKind kind) const = 0;

    /// Closes a window of a batch, and returns its answer.
    virtual int closeBatchWindow(std::uint32_t window) = 0;

    /// Shows a modal message with an OK button.
    virtual void showMessage(const QString &title, const QString &text, MessageIcon icon) = 0;

    /// Asks a modal question. Returns whether the answer is Yes; No is the default, and what
    /// closing the box means.
    virtual bool ask(const QString &title, const QString &question) = 0;

    /// Lets the user choose a folder that exists, over the window that asks. Returns its path in
    /// native separators, or "" when the user chose none.
    virtual QString chooseFolder(QWidget *owner, const QString &title) = 0;

    /// Whether the folder is a place elsewhere that the desktop has opened for its user, and not
    /// the system: it may stop answering after a while, and whoever asks for a file of it then
    /// waits for ever.
    virtual bool isOpenedByDesktop(const QString &folder) const = 0;

    /// Ends the process at once, without running anything that is still on the stack.
    virtual void endProgram(int status) = 0;
};

/// The host in force. There must be one before the first call.
Host &host();

/// Puts `newHost` in force. It is not owned and must live as long as it is in force.
void installHost(Host &newHost);

} // namespace platform
