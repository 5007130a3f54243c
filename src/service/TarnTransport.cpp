#include "service/TarnTransport.h"

#include "service/TarnAPIError.h"
#include "service/TarnDeleteLater.h"

#include <QCoroSignal>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

QString mediaTypeOf(const QNetworkReply &reply)
{
    const QString header = reply.header(QNetworkRequest::ContentTypeHeader).toString();
    return header.section(u';', 0, 0).trimmed().toLower();
}

// As browsers do: 303, and 301 or 302 after a POST, continue as a GET without a body.
bool redirectDropsBody(int status, TarnMethod method)
{
    return status == 303 || ((status == 301 || status == 302) && method == TarnMethod::Post);
}

QString timeoutText(std::chrono::seconds timeout)
{
    return u"The workspace did not answer within %1 s."_s.arg(timeout.count());
}

} // namespace

TarnTransport::TarnTransport(Config config, Redirects redirects, QObject *parent)
    : QObject(parent)
    , m_config(std::move(config))
    , m_redirects(redirects)
    , m_policy(m_config)
    , m_network(std::make_unique<QNetworkAccessManager>())
{
    m_network->setCookieJar(nullptr);
    // Redirects are judged here, one hop at a time, never by the network layer.
    m_network->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
}

TarnTransport::~TarnTransport() = default;

QCoro::Task<TarnReply> TarnTransport::send(Request request)
{
    const QPointer<TarnTransport> self(this);
    for (int hop = 0;; ++hop) {
        QNetworkRequest wire(request.url);
        wire.setTransferTimeout(static_cast<int>(std::chrono::milliseconds(m_config.answerTimeout()).count()));
        wire.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::PreferNetwork);
        wire.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
        wire.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
        wire.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        wire.setSslConfiguration(m_config.sslConfiguration());
        for (const auto &[name, value] : std::as_const(request.headers))
            wire.setRawHeader(name, value);
        if (request.json)
            wire.setHeader(QNetworkRequest::ContentTypeHeader, u"application/json"_s);

        const QByteArray verb = TarnMethods::verb(request.method);
        const QByteArray body = request.json.value_or(QByteArray());
        const TarnLaterPointer<QNetworkReply> reply(m_network->sendCustomRequest(wire, verb, body));
        if (!reply->isFinished())
            co_await qCoro(reply.get(), &QNetworkReply::finished);
        if (!self)
            throw TarnAPIError::transport(u"The request was cancelled."_s);

        const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        // Nothing else cancels a request here: the platform's text for the
        // transfer timeout says only "Operation canceled".
        if (!status.isValid() && reply->error() == QNetworkReply::OperationCanceledError)
            throw TarnAPIError::transport(timeoutText(m_config.answerTimeout()));
        if (!status.isValid() && reply->error() != QNetworkReply::NoError)
            throw TarnAPIError::transport(reply->errorString());
        if (status.isValid() && m_redirects == Redirects::toService && hop < TarnRedirectPolicy::maximumHops) {
            if (const std::optional<QUrl> target = m_policy.follow(*reply)) {
                if (redirectDropsBody(status.toInt(), request.method)) {
                    request.method = TarnMethod::Get;
                    request.json.reset();
                    request.headers.removeIf([](const auto &header) { return header.first == "X-CSRF-Token"; });
                }
                request.url = *target;
                continue;
            }
        }
        co_return TarnReply { status.isValid() ? status.toInt() : 0, reply->url(), reply->readAll(),
            mediaTypeOf(*reply) };
    }
}
