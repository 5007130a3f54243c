#include "service/Config.h"

#include <QSslSocket>

using namespace Qt::StringLiterals;

namespace {

const auto builtInHome = "https://tarn.halvard.co/"_L1;

} // namespace

Config::Config()
    : m_homeURL(QUrl(builtInHome))
    , m_ssl(QSslConfiguration::defaultConfiguration())
{
    m_ssl.setProtocol(QSsl::TlsV1_2OrLater);
}

std::optional<Config> Config::fromOptions(const QString &workspaceURL, const QString &workspaceCA, QString *error)
{
    Config config;
    const QString url = workspaceURL.isEmpty() ? qEnvironmentVariable("TARN_WORKSPACE_URL") : workspaceURL;
    const QString ca = workspaceCA.isEmpty() ? qEnvironmentVariable("TARN_WORKSPACE_CA") : workspaceCA;

    if (!url.isEmpty()) {
        QUrl home(url, QUrl::StrictMode);
        if (!home.isValid() || home.scheme() != "https"_L1 || home.host().isEmpty() || !home.userInfo().isEmpty()
            || home.hasQuery() || home.hasFragment()) {
            *error = u"The workspace address must be an https URL such as https://127.0.0.1:8443/."_s;
            return std::nullopt;
        }
        if (!home.path().endsWith(u'/'))
            home.setPath(home.path() + u'/');
        config.m_homeURL = home;
    }
    if (!ca.isEmpty()) {
        const QList<QSslCertificate> certificates = QSslCertificate::fromPath(ca, QSsl::Pem);
        if (certificates.size() != 1 || certificates.first().isNull()) {
            *error = u"The workspace certificate file must hold one PEM certificate: "_s + ca;
            return std::nullopt;
        }
        config.m_extraCertificate = certificates.first();
        // Setting the list explicitly also stops on-demand loading of roots,
        // so the system's roots are copied in first (once, not per request).
        QList<QSslCertificate> roots = QSslConfiguration::systemCaCertificates();
        roots.append(certificates.first());
        config.m_ssl.setCaCertificates(roots);
    }
    return config;
}

bool Config::isServiceURL(const QUrl &url) const
{
    return url.isValid() && url.scheme() == "https"_L1 && url.host().compare(m_homeURL.host(), Qt::CaseInsensitive) == 0
        && url.port(443) == m_homeURL.port(443) && url.userInfo().isEmpty();
}

QUrl Config::resolve(const QString &path) const
{
    const QUrl relative(path, QUrl::StrictMode);
    if (!relative.isValid())
        return {};
    return m_homeURL.resolved(relative);
}
