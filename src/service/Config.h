#pragma once

#include <QSslCertificate>
#include <QSslConfiguration>
#include <QString>
#include <QUrl>

#include <chrono>
#include <optional>

// Where the workspace service is and which certificate, beyond the system's,
// proves it. The company's service is built in; a local workspace (demos,
// tests) replaces it with `--workspace URL` or TARN_WORKSPACE_URL, plus one
// extra trusted certificate from `--workspace-ca FILE` or TARN_WORKSPACE_CA.
// Either way there is exactly one host, over https only.
class Config {
public:
    Config();

    // Option values win over the environment; an empty option means "not given".
    // On a bad URL or certificate file, answers nothing and says why in `error`.
    [[nodiscard]] static std::optional<Config> fromOptions(
        const QString &workspaceURL, const QString &workspaceCA, QString *error);

    // The service's base URL: absolute https with a path ending in "/".
    [[nodiscard]] const QUrl &homeURL() const { return m_homeURL; }
    [[nodiscard]] QString serviceHost() const { return m_homeURL.host(); }
    [[nodiscard]] const std::optional<QSslCertificate> &extraCertificate() const { return m_extraCertificate; }

    // True for https URLs on the service's own host and port: the only place
    // any request, redirect or callback of the client may go.
    [[nodiscard]] bool isServiceURL(const QUrl &url) const;

    // The TLS settings every request to the service carries, made once.
    [[nodiscard]] const QSslConfiguration &sslConfiguration() const { return m_ssl; }

    // `path` resolved against homeURL: "/api/session" replaces the base path,
    // "api/mobile/exchange" is appended to it. Invalid when the path does not
    // form a URL.
    [[nodiscard]] QUrl resolve(const QString &path) const;

    // How long the service may stay silent before a request gives up: a
    // minute, unless a caller that knows its network better says otherwise.
    [[nodiscard]] std::chrono::seconds answerTimeout() const { return m_answerTimeout; }
    void setAnswerTimeout(std::chrono::seconds timeout) { m_answerTimeout = timeout; }

private:
    QUrl m_homeURL;
    std::optional<QSslCertificate> m_extraCertificate;
    QSslConfiguration m_ssl;
    std::chrono::seconds m_answerTimeout { 60 };
};
