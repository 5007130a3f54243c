#include "workspace/WorkspaceCertificate.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSslCertificate>
#include <QSslKey>

#include <openssl/bio.h>
#include <openssl/bn.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

template <auto Free> struct Deleter {
    template <typename T> void operator()(T *p) const { Free(p); }
};
using Key = std::unique_ptr<EVP_PKEY, Deleter<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Deleter<X509_free>>;
using Memory = std::unique_ptr<BIO, Deleter<BIO_free>>;

constexpr long tenYears = 10L * 365 * 24 * 3600;

bool addExtension(X509 *cert, int nid, const char *value)
{
    X509V3_CTX ctx;
    X509V3_set_ctx_nodb(&ctx);
    X509V3_set_ctx(&ctx, cert, cert, nullptr, nullptr, 0);
    X509_EXTENSION *ext = X509V3_EXT_conf_nid(nullptr, &ctx, nid, value);
    if (!ext)
        return false;
    const bool added = X509_add_ext(cert, ext, -1) == 1;
    X509_EXTENSION_free(ext);
    return added;
}

QByteArray drain(BIO *bio)
{
    char *data = nullptr;
    const long size = BIO_get_mem_data(bio, &data);
    return QByteArray(data, static_cast<qsizetype>(size));
}

// The key must never be readable by others, so the file is narrowed before
// the first byte goes in rather than after.
bool writePrivate(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    if (!file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        return false;
    return file.write(bytes) == bytes.size() && file.flush();
}

bool writePublic(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

} // namespace

WorkspaceCertificate::WorkspaceCertificate(const QString &dataDir)
{
    const QDir dir(dataDir);
    const QString keyPath = dir.filePath(u"key.pem"_s);
    m_certificatePath = dir.filePath(u"certificate.pem"_s);

    if (!QFile::exists(keyPath) || !QFile::exists(m_certificatePath)) {
        if (!generate(keyPath))
            return;
    }
    load(keyPath);
}

bool WorkspaceCertificate::generate(const QString &keyPath)
{
    Key key(EVP_EC_gen("P-256"));
    Certificate cert(X509_new());
    if (!key || !cert) {
        m_error = u"could not make a key for the certificate"_s;
        return false;
    }

    unsigned char serial[16];
    if (RAND_bytes(serial, sizeof serial) != 1) {
        m_error = u"no secure random source for the certificate"_s;
        return false;
    }
    serial[0] &= 0x7f; // a positive serial number
    BIGNUM *serialNumber = BN_bin2bn(serial, sizeof serial, nullptr);
    BN_to_ASN1_INTEGER(serialNumber, X509_get_serialNumber(cert.get()));
    BN_free(serialNumber);

    X509_set_version(cert.get(), 2);
    X509_gmtime_adj(X509_getm_notBefore(cert.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(cert.get()), tenYears);
    X509_set_pubkey(cert.get(), key.get());

    X509_NAME *name = X509_get_subject_name(cert.get());
    X509_NAME_add_entry_by_txt(
        name, "O", MBSTRING_UTF8, reinterpret_cast<const unsigned char *>("Pilo Tarn local workspace"), -1, -1, 0);
    X509_NAME_add_entry_by_txt(
        name, "CN", MBSTRING_UTF8, reinterpret_cast<const unsigned char *>("127.0.0.1"), -1, -1, 0);
    X509_set_issuer_name(cert.get(), name);

    const bool extended = addExtension(cert.get(), NID_basic_constraints, "critical,CA:TRUE")
        && addExtension(cert.get(), NID_key_usage, "critical,digitalSignature,keyCertSign")
        && addExtension(cert.get(), NID_ext_key_usage, "serverAuth")
        && addExtension(cert.get(), NID_subject_key_identifier, "hash")
        && addExtension(cert.get(), NID_subject_alt_name, "IP:127.0.0.1,DNS:localhost");
    if (!extended || X509_sign(cert.get(), key.get(), EVP_sha256()) == 0) {
        m_error = u"could not sign the certificate"_s;
        return false;
    }

    Memory keyPem(BIO_new(BIO_s_mem()));
    Memory certPem(BIO_new(BIO_s_mem()));
    if (!PEM_write_bio_PrivateKey(keyPem.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr)
        || !PEM_write_bio_X509(certPem.get(), cert.get())) {
        m_error = u"could not write the certificate"_s;
        return false;
    }
    if (!writePrivate(keyPath, drain(keyPem.get())) || !writePublic(m_certificatePath, drain(certPem.get()))) {
        m_error = u"could not write %1"_s.arg(keyPath);
        return false;
    }
    return true;
}

bool WorkspaceCertificate::load(const QString &keyPath)
{
    QFile keyFile(keyPath);
    QFile certFile(m_certificatePath);
    if (!keyFile.open(QIODevice::ReadOnly) || !certFile.open(QIODevice::ReadOnly)) {
        m_error = u"could not read %1"_s.arg(keyPath);
        return false;
    }
    const QSslKey key(keyFile.readAll(), QSsl::Ec, QSsl::Pem);
    const QSslCertificate cert(certFile.readAll(), QSsl::Pem);
    if (key.isNull() || cert.isNull()) {
        m_error = u"the certificate or key in %1 is unreadable; remove both to make new ones"_s.arg(
            QFileInfo(keyPath).absolutePath());
        return false;
    }
    m_configuration = QSslConfiguration::defaultConfiguration();
    m_configuration.setLocalCertificate(cert);
    m_configuration.setPrivateKey(key);
    m_configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    return true;
}
