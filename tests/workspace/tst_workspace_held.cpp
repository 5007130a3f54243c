#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceResponder.h"
#include "workspace/WorkspaceServer.h"

#include <QFile>
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

    QNetworkReply *get(const QString &path)
    {
        QNetworkRequest request(m_server->url().resolved(QUrl(path)));
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        QFile pem(m_server->certificatePath());
        if (pem.open(QIODevice::ReadOnly))
            tls.setCaCertificates(QList<QSslCertificate>() << QSslCertificate(pem.readAll()));
        request.setSslConfiguration(tls);
        return m_network.get(request);
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

    void heldRequestsWaitWhileOthersAreServed()
    {
        std::unique_ptr<QNetworkReply> first(get(u"api/wait"_s));
        std::unique_ptr<QNetworkReply> second(get(u"api/wait"_s));
        QTRY_COMPARE_WITH_TIMEOUT(m_waiting.size(), size_t(2), 5000);

        std::unique_ptr<QNetworkReply> other(get(u"api/nothing"_s));
        QSignalSpy otherDone(other.get(), &QNetworkReply::finished);
        QVERIFY(otherDone.wait(5000));
        QCOMPARE(status(other.get()), 404);
        QVERIFY(!first->isFinished());
        QVERIFY(!second->isFinished());

        std::unique_ptr<QNetworkReply> wake(get(u"api/wake"_s));
        QSignalSpy wakeDone(wake.get(), &QNetworkReply::finished);
        QVERIFY(wakeDone.wait(5000));
        QCOMPARE(wake->readAll(), R"({"woken":2})"_ba);
        QTRY_VERIFY_WITH_TIMEOUT(first->isFinished() && second->isFinished(), 5000);
        QCOMPARE(status(first.get()), 200);
        QCOMPARE(first->readAll(), R"({"ok":true})"_ba);
        QCOMPARE(status(second.get()), 200);
    }

    void answerForDepartedClientIsDropped()
    {
        std::unique_ptr<QNetworkReply> leaving(get(u"api/wait"_s));
        QTRY_COMPARE_WITH_TIMEOUT(m_waiting.size(), size_t(1), 5000);
        leaving->abort();
        QTRY_VERIFY_WITH_TIMEOUT(!m_waiting.front().isConnected(), 5000);

        std::unique_ptr<QNetworkReply> wake(get(u"api/wake"_s));
        QSignalSpy wakeDone(wake.get(), &QNetworkReply::finished);
        QVERIFY(wakeDone.wait(5000));
        QCOMPARE(wake->readAll(), R"({"woken":0})"_ba);
    }

    // Dropping a responder unanswered must end the request, not leave the
    // client waiting for its own timeout.
    void unansweredResponderClosesTheConnection()
    {
        std::unique_ptr<QNetworkReply> reply(get(u"api/drop"_s));
        QSignalSpy done(reply.get(), &QNetworkReply::finished);
        QVERIFY(done.wait(5000));
        QVERIFY(reply->error() != QNetworkReply::NoError);
        QCOMPARE(status(reply.get()), 0);
    }
};

QTEST_GUILESS_MAIN(TestWorkspaceHeld)
#include "tst_workspace_held.moc"
