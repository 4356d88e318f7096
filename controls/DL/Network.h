#pragma once

#include <QByteArray>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>

namespace controls {

/// What a web server answers to one request, as far as it has come. Destroying it, at any moment,
/// ends it without another notice.
class Answer
{
public:
    virtual ~Answer() = default;

    /// What was asked for.
    virtual QUrl url() const = 0;

    /// The status, such as 200; 0 until it has come.
    virtual int status() const = 0;

    /// All values of a header, with commas between them; empty without that header.
    virtual QByteArray header(const QByteArray &name) const = 0;

    /// Where the server sends us on to; empty for nowhere.
    virtual QUrl redirectTarget() const = 0;

    /// Takes up to `size` bytes of the body. Gives how many: 0 when none wait at the moment.
    virtual qint64 read(char *bytes, qint64 size) = 0;

    /// Whether nothing more comes from the server: all is here, or the answer broke off.
    virtual bool isFinished() const = 0;
};

/// The web, for transfers.
class Network
{
public:
    virtual ~Network() = default;

    /// Asks for an address past any cache, without following where it may lead. The answer breaks
    /// off after a time `idle` without data. `notice` is called from the event loop, whenever more
    /// of the answer has come and when it is finished; it may destroy the answer.
    virtual std::unique_ptr<Answer> get(const QUrl &url, std::chrono::milliseconds idle,
                                        const std::function<void()> &notice) = 0;
};

/// A network of the caller's own. Raises FileNotFound when the part of the program that fetches
/// cannot be loaded.
std::unique_ptr<Network> makeNetwork();

/// Loads that part, and has all networks use the proxy settings of the system. Raises FileNotFound
/// like makeNetwork.
void prepareNetwork();

} // namespace controls
