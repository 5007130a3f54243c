#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QPair>
#include <QProcess>
#include <QSslConfiguration>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>

class QNetworkAccessManager;

// A real tarn-workspace for one test: started on port 0 with a fresh data
// folder and "--test-faults", trusted through exactly its own certificate.
// The control calls below wait in a local event loop: for tests only.
class TestWorkspace {
public:
    // One raw HTTP exchange, redirects not followed.
    struct Answer {
        int status = 0;
        QByteArray body;
        QList<QPair<QByteArray, QByteArray>> headers;

        [[nodiscard]] QByteArray header(QByteArrayView name) const;
        [[nodiscard]] QJsonObject json() const;
    };
    using Headers = QList<QPair<QByteArray, QByteArray>>;

    // Off leaves out "--test-faults": the controls below then get 404.
    enum class Faults { On, Off };

    // Starts TARN_WORKSPACE_BIN --port 0 --data <fresh folder> --test-faults
    // plus extraArgs, and waits up to 20 s for its two start-up lines.
    explicit TestWorkspace(const QStringList &extraArgs = {}, Faults faults = Faults::On);
    ~TestWorkspace();
    TestWorkspace(const TestWorkspace &) = delete;
    TestWorkspace &operator=(const TestWorkspace &) = delete;

    [[nodiscard]] bool isRunning() const;
    // Stops the server as a crash or an upgrade would; restart() starts it
    // again on the same port with the same data.
    void halt();
    [[nodiscard]] bool restart();
    // Why start-up failed (with the server's standard error), for QVERIFY2.
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] QUrl url() const { return m_url; }
    [[nodiscard]] QString certificatePath() const { return m_certificatePath; }
    [[nodiscard]] QString dataPath() const { return m_data.path(); }
    // Everything the server wrote to standard output and error so far.
    [[nodiscard]] QByteArray output();
    // Trusts exactly this workspace's certificate and nothing else.
    [[nodiscard]] QSslConfiguration sslConfiguration() const;

    void setFault(const QJsonObject &fault);
    void clearFaults();
    [[nodiscard]] QJsonArray requests();
    void clearRequests();
    [[nodiscard]] QString signInCode(const QString &email, const QString &challenge);
    // A whole proof-key sign-in; returns the session token (empty on failure).
    [[nodiscard]] QString signIn(const QString &email);

    // Sends one request; `path` is relative to url(). With a token the
    // session cookie is sent; `headers` are added as they are.
    [[nodiscard]] Answer send(
        const QByteArray &method, const QString &path, const QByteArray &body = {}, const Headers &headers = {});
    [[nodiscard]] Answer send(const QByteArray &method, const QString &path, const QString &token,
        const QJsonObject &body, const Headers &headers = {});
    // GET /api/session with the token: the session record, or {} when refused.
    [[nodiscard]] QJsonObject session(const QString &token);

    // Proof-key helpers, as the app makes them.
    [[nodiscard]] static QString makeVerifier();
    [[nodiscard]] static QString challengeOf(const QString &verifier);

private:
    bool start();
    void stop();

    // Declared first: the arguments name this folder.
    QTemporaryDir m_data;
    QStringList m_arguments;
    QProcess m_process;
    QUrl m_url;
    QString m_certificatePath;
    QString m_error;
    QByteArray m_output;
    std::unique_ptr<QNetworkAccessManager> m_network;
};
