#pragma once

#include <QSslConfiguration>
#include <QString>

// The service's self-signed TLS identity, kept in its data folder: made on the
// first start (P-256 key, SAN 127.0.0.1 and localhost, ten years) and reused.
class WorkspaceCertificate {
public:
    // Loads key.pem and certificate.pem from `dataDir`, creating them when
    // either is missing. Check isValid(); error() says why it is not.
    explicit WorkspaceCertificate(const QString &dataDir);

    [[nodiscard]] bool isValid() const { return m_error.isEmpty(); }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] QString certificatePath() const { return m_certificatePath; }
    [[nodiscard]] QSslConfiguration serverConfiguration() const { return m_configuration; }

private:
    bool generate(const QString &keyPath);
    bool load(const QString &keyPath);

    QString m_certificatePath;
    QString m_error;
    QSslConfiguration m_configuration;
};
