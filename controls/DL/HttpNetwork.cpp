#include "controls/DL/HttpNetwork.h"

#include "controls/DL/Network.h"

#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>

#include <algorithm>

namespace controls {

// What may wait for its reader, so that memory stays bounded. With 1 MiB a download takes 3 %
// longer, with 2 MiB it needs 3 MiB more memory and is 2 % faster.
constexpr qint64 ReadBufferBytes = qint64{1536} * 1024;

static QNetworkRequest requestFor(const QUrl &url, std::chrono::milliseconds idle)
{
    QNetworkRequest request(url);
    request.setRawHeader("Accept-Encoding", "identity"); // so that the stack decodes nothing
    request.setRawHeader("Cache-Control", "no-cache");
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // Left to itself, the stack now and then asks for a redirected address twice.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    // The bounded read buffer holds for HTTP/1 only.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setTransferTimeout(static_cast<int>(idle.count()));
    return request;
}

namespace {

class HttpAnswer : public Answer
{
public:
    HttpAnswer(QNetworkReply *reply, const std::function<void()> &notice)
        : m_reply(reply)
    {
        m_reply->setReadBufferSize(ReadBufferBytes);
        // Queued: whoever destroys this answer from a notice never does so under the reply's feet.
        QObject::connect(reply, &QNetworkReply::readyRead, &m_receiver, notice,
                         Qt::QueuedConnection);
        QObject::connect(reply, &QNetworkReply::finished, &m_receiver, notice,
                         Qt::QueuedConnection);
    }

    QUrl url() const override { return m_reply->url(); }

    int status() const override
    {
        return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    }

    QByteArray header(const QByteArray &name) const override { return m_reply->rawHeader(name); }

    QUrl redirectTarget() const override
    {
        const QUrl target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        return target.isEmpty() ? target : m_reply->url().resolved(target);
    }

    // A reply that ran into its time limit has closed itself.
    qint64 read(char *bytes, qint64 size) override
    {
        return m_reply->isOpen() ? std::max(m_reply->read(bytes, size), qint64{0}) : 0;
    }

    bool isFinished() const override { return m_reply->isFinished(); }

private:
    const std::unique_ptr<QNetworkReply> m_reply;
    QObject m_receiver; ///< of the notices, so that they end with this answer
};

class HttpNetwork : public Network
{
public:
    std::unique_ptr<Answer> get(const QUrl &url, std::chrono::milliseconds idle,
                                const std::function<void()> &notice) override
    {
        return std::make_unique<HttpAnswer>(m_manager.get(requestFor(url, idle)), notice);
    }

private:
    QNetworkAccessManager m_manager;
};

} // namespace
} // namespace controls

controls::Network *newHttpNetwork()
{
    return new controls::HttpNetwork;
}

void useSystemProxies()
{
    QNetworkProxyFactory::setUseSystemConfiguration(true);
}
