#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceResponder.h"
#include "workspace/WorkspaceServer.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>
#include <QSslCertificate>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

// Held answers, as long polls use them: a server in this process with a
// route that keeps its responders until another request wakes them.
class TestWorkspaceHeld : public QObject {
    Q_OBJECT

    QTemporaryDir m_data;
    std::unique_ptr<WorkspaceServer> m_server;
    std::vector<WorkspaceResponder> m_waiting;
    QNetworkAccessManager m_network;

    std::unique_ptr<QNetworkReply> get(const QString &path)
    {
        QNetworkRequest request(m_server->url().resolved(QUrl(path)));
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setCaCertificates(QSslCertificate::fromPath(m_server->certificatePath()));
        request.setSslConfiguration(tls);
        return std::unique_ptr<QNetworkReply>(m_network.get(request));
    }

    static bool finishes(QNetworkReply *reply)
    {
        QSignalSpy done(reply, &QNetworkReply::finished);
        return reply->isFinished() || done.wait(5000);
    }

    static int status(QNetworkReply *reply)
    {
        return reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    }

private slots:
    void initTestCase()
    {
        WorkspaceOptions options;
        options.dataDir = m_data.path();
        m_server = std::make_unique<WorkspaceServer>(options);
        QString error;
        QVERIFY2(m_server->start(&error), qPrintable(error));

        using Access = WorkspaceRouter::Access;
        m_server->router().addHeld(
            "GET", u"/api/wait"_s, Access::Public, [this](const WorkspaceRequest &, WorkspaceResponder &&responder) {
                m_waiting.push_back(std::move(responder));
            });
        m_server->router().add("GET", u"/api/wake"_s, Access::Public, [this](const WorkspaceRequest &) {
            int woken = 0;
            for (WorkspaceResponder &responder : m_waiting) {
                woken += responder.isConnected() ? 1 : 0;
                responder.send(WorkspaceReply::ok());
            }
            m_waiting.clear();
            return WorkspaceReply::json(QJsonObject { { u"woken"_s, woken } });
        });
        m_server->router().addHeld(
            "GET", u"/api/drop"_s, Access::Public, [](const WorkspaceRequest &, WorkspaceResponder &&responder) {
                WorkspaceResponder dropped(std::move(responder));
            });
    }

    // A held request waits while others are served, and is answered when
    // woken; the answer for a client that has left is dropped.
    void heldRequestsWaitForTheirAnswer()
    {
        const std::unique_ptr<QNetworkReply> first = get(u"api/wait"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_waiting.size(), size_t(1), 5000);
        const std::unique_ptr<QNetworkReply> leaving = get(u"api/wait"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_waiting.size(), size_t(2), 5000);
        leaving->abort();
        QTRY_VERIFY_WITH_TIMEOUT(!m_waiting.back().isConnected(), 5000);

        const std::unique_ptr<QNetworkReply> other = get(u"api/nothing"_s);
        QVERIFY(finishes(other.get()));
        QCOMPARE(status(other.get()), 404);
        QVERIFY(!first->isFinished());

        const std::unique_ptr<QNetworkReply> wake = get(u"api/wake"_s);
        QVERIFY(finishes(wake.get()));
        QCOMPARE(wake->readAll(), R"({"woken":1})"_ba);
        QVERIFY(finishes(first.get()));
        QCOMPARE(status(first.get()), 200);
        QCOMPARE(first->readAll(), R"({"ok":true})"_ba);
    }

    // Dropping a responder unanswered must end the request, not leave the
    // client waiting for its own timeout.
    void unansweredResponderClosesTheConnection()
    {
        const std::unique_ptr<QNetworkReply> reply = get(u"api/drop"_s);
        QVERIFY(finishes(reply.get()));
        QVERIFY(reply->error() != QNetworkReply::NoError);
        QCOMPARE(status(reply.get()), 0);
    }
};

QTEST_GUILESS_MAIN(TestWorkspaceHeld)
#include "tst_workspace_held.moc"
