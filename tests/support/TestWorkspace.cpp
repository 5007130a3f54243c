#include "support/TestWorkspace.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRandomGenerator>
#include <QTimer>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {

constexpr int startSeconds = 20;
constexpr int requestSeconds = 30;
constexpr auto base64url = QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

QByteArray compact(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

QByteArray TestWorkspace::Answer::header(QByteArrayView name) const
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

QJsonObject TestWorkspace::Answer::json() const
{
    return QJsonDocument::fromJson(body).object();
}

TestWorkspace::TestWorkspace(const QStringList &extraArgs, Faults faults)
    : m_arguments(QStringList { u"--port"_s, u"0"_s, u"--data"_s, m_data.path(), u"--stop-with-stdin"_s } + extraArgs)
    , m_network(std::make_unique<QNetworkAccessManager>())
{
    if (faults == Faults::On)
        m_arguments.append(u"--test-faults"_s);
    m_network->setCookieJar(nullptr);
    m_network->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
    if (!m_data.isValid()) {
        m_error = u"no temporary folder: "_s + m_data.errorString();
        return;
    }
    start();
}

TestWorkspace::~TestWorkspace()
{
    stop();
}

bool TestWorkspace::start()
{
    m_url.clear();
    m_certificatePath.clear();
    m_error.clear();

    m_process.setProgram(QStringLiteral(TARN_WORKSPACE_BIN));
    m_process.setArguments(m_arguments);
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.start();
    if (!m_process.waitForStarted(startSeconds * 1000)) {
        m_error = u"could not start %1: %2"_s.arg(QStringLiteral(TARN_WORKSPACE_BIN), m_process.errorString());
        return false;
    }

    const QDeadlineTimer deadline(startSeconds * 1000);
    while (m_url.isEmpty() || m_certificatePath.isEmpty()) {
        while (m_process.canReadLine()) {
            const QByteArray raw = m_process.readLine();
            m_output += raw;
            const QString line = QString::fromUtf8(raw).trimmed();
            if (line.startsWith("url: "_L1))
                m_url = QUrl(line.mid(5));
            else if (line.startsWith("certificate: "_L1))
                m_certificatePath = line.mid(13);
        }
        if (!m_url.isEmpty() && !m_certificatePath.isEmpty())
            break;
        if (m_process.state() != QProcess::Running || deadline.hasExpired()) {
            m_output += m_process.readAllStandardError();
            m_error = u"tarn-workspace did not start: "_s + QString::fromUtf8(m_output);
            stop();
            return false;
        }
        m_process.waitForReadyRead(100);
    }

    return true;
}

void TestWorkspace::stop()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished(5000);
        }
    }
    m_output += m_process.readAllStandardOutput() + m_process.readAllStandardError();
}

void TestWorkspace::halt()
{
    stop();
}

bool TestWorkspace::restart()
{
    m_arguments[m_arguments.indexOf(u"--port"_s) + 1] = QString::number(m_url.port());
    return start();
}

QByteArray TestWorkspace::output()
{
    m_output += m_process.readAllStandardOutput() + m_process.readAllStandardError();
    return m_output;
}

bool TestWorkspace::isRunning() const
{
    return m_process.state() == QProcess::Running && !m_url.isEmpty();
}

QSslConfiguration TestWorkspace::sslConfiguration() const
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslCertificate::fromPath(m_certificatePath));
    return configuration;
}

TestWorkspace::Answer TestWorkspace::send(
    const QByteArray &method, const QString &path, const QByteArray &body, const Headers &headers)
{
    QNetworkRequest request(m_url.resolved(QUrl(path)));
    request.setSslConfiguration(sslConfiguration());
    request.setTransferTimeout(requestSeconds * 1000);
    for (const auto &[name, value] : headers)
        request.setRawHeader(name, value);

    QNetworkReply *reply = m_network->sendCustomRequest(request, method, body);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();

    Answer answer;
    answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    answer.body = reply->readAll();
    for (const QNetworkReply::RawHeaderPair &pair : reply->rawHeaderPairs())
        answer.headers.append(pair);
    reply->deleteLater();
    return answer;
}

TestWorkspace::Answer TestWorkspace::send(const QByteArray &method, const QString &path, const QString &token,
    const QJsonObject &body, const Headers &headers)
{
    Headers all = headers;
    if (!token.isEmpty())
        all.append({ "Cookie"_ba, "tarn_session="_ba + token.toUtf8() });
    if (!body.isEmpty())
        all.append({ "Content-Type"_ba, "application/json"_ba });
    return send(method, path, body.isEmpty() ? QByteArray() : compact(body), all);
}

QJsonObject TestWorkspace::session(const QString &token)
{
    const Answer answer = send("GET", u"api/session"_s, token, {});
    return answer.status == 200 ? answer.json() : QJsonObject();
}

void TestWorkspace::setFault(const QJsonObject &fault)
{
    const Answer answer
        = send("POST", u"api/test/faults"_s, compact(fault), { { "Content-Type", "application/json" } });
    if (answer.status != 200)
        qWarning("TestWorkspace::setFault refused: %s", answer.body.constData());
}

void TestWorkspace::clearFaults()
{
    (void)send("DELETE", u"api/test/faults"_s);
}

QJsonArray TestWorkspace::requests()
{
    return QJsonDocument::fromJson(send("GET", u"api/test/requests"_s).body).array();
}

void TestWorkspace::clearRequests()
{
    (void)send("DELETE", u"api/test/requests"_s);
}

QString TestWorkspace::signInCode(const QString &email, const QString &challenge)
{
    QUrlQuery query;
    query.addQueryItem(u"email"_s, QString::fromLatin1(QUrl::toPercentEncoding(email)));
    query.addQueryItem(u"challenge"_s, challenge);
    return send("GET", u"api/test/sign-in-code?"_s + query.toString(QUrl::FullyEncoded))
        .json()
        .value(u"code"_s)
        .toString();
}

QString TestWorkspace::signIn(const QString &email)
{
    const QString verifier = makeVerifier();
    const QString code = signInCode(email, challengeOf(verifier));
    if (code.isEmpty())
        return {};
    const Answer answer
        = send("POST", u"api/mobile/exchange"_s, {}, QJsonObject { { u"code"_s, code }, { u"verifier"_s, verifier } });
    return answer.json().value(u"cookie"_s).toObject().value(u"value"_s).toString();
}

QString TestWorkspace::makeVerifier()
{
    QByteArray bytes(48, Qt::Uninitialized);
    for (char &b : bytes)
        b = static_cast<char>(QRandomGenerator::system()->bounded(256));
    return QString::fromLatin1(bytes.toBase64(base64url));
}

QString TestWorkspace::challengeOf(const QString &verifier)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256).toBase64(base64url));
}
