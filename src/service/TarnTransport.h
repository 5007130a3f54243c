#pragma once

#include "service/Config.h"
#include "service/TarnMethod.h"
#include "service/TarnRedirectPolicy.h"
#include "service/TarnReply.h"

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QUrl>

#include <memory>
#include <optional>
#include <utility>

class QNetworkAccessManager;

// The one way this client sends HTTP: a connection pool of its own with no
// cookie jar (the session cookie is written by hand), the service's trusted
// certificates, the configured answer timeout, and a redirect rule chosen by its owner.
// Every reply is awaited here and read in full, so no network object leaves
// this class.
class TarnTransport : public QObject {
    Q_OBJECT

public:
    enum class Redirects {
        toService, // follow redirects to https on the service's host; answer any other 3xx as it stands
        never, // answer every 3xx as it stands
    };

    struct Request {
        QUrl url;
        TarnMethod method = TarnMethod::Get;
        QList<std::pair<QByteArray, QByteArray>> headers;
        std::optional<QByteArray> json; // sent as "application/json" when present
    };

    TarnTransport(Config config, Redirects redirects, QObject *parent = nullptr);
    ~TarnTransport() override;

    // Sends and reads the whole answer. A network failure (offline, TLS)
    // throws TarnAPIError::transport with the platform's text; no answer
    // within the configured time throws it with "The workspace did not
    // answer within 60 s." (the configured seconds).
    QCoro::Task<TarnReply> send(Request request);

private:
    Config m_config;
    Redirects m_redirects;
    TarnRedirectPolicy m_policy;
    std::unique_ptr<QNetworkAccessManager> m_network;
};
