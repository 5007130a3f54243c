#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceRouter.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestWorkspaceParts : public QObject {
    Q_OBJECT

private slots:
    // Later endpoints hang ids off their paths; the router must hand back
    // exactly the segment the client escaped, and nothing that merely looks alike.
    void routing_data()
    {
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("route"); // the pattern expected to match
        QTest::addColumn<QStringList>("arguments");
        QTest::addRow("plain") << "GET"_ba << u"/api/rooms"_s << u"/api/rooms"_s << QStringList {};
        QTest::addRow("one id") << "GET"_ba << u"/api/rooms/r-1/messages"_s << u"/api/rooms/:room/messages"_s
                                << QStringList { u"r-1"_s };
        QTest::addRow("escaped slash stays in the id")
            << "GET"_ba << u"/api/rooms/a%2Fb/messages"_s << u"/api/rooms/:room/messages"_s << QStringList { u"a/b"_s };
        QTest::addRow("escaped specials") << "GET"_ba << u"/api/rooms/a%26b%3Dc%2Bd%23e%3F/messages"_s
                                          << u"/api/rooms/:room/messages"_s << QStringList { u"a&b=c+d#e?"_s };
        QTest::addRow("unicode") << "GET"_ba << u"/api/rooms/%C3%A9t%C3%A9/messages"_s << u"/api/rooms/:room/messages"_s
                                 << QStringList { u"\u00e9t\u00e9"_s };
        QTest::addRow("two ids") << "DELETE"_ba << u"/api/rooms/r-1/messages/m-9"_s
                                 << u"/api/rooms/:room/messages/:message"_s << QStringList { u"r-1"_s, u"m-9"_s };
        QTest::addRow("literal wins when listed first")
            << "GET"_ba << u"/api/rooms/search"_s << u"/api/rooms/search"_s << QStringList {};
        QTest::addRow("empty id") << "GET"_ba << u"/api/rooms//messages"_s << QString() << QStringList {};
        QTest::addRow("other method") << "POST"_ba << u"/api/rooms"_s << QString() << QStringList {};
        QTest::addRow("trailing slash") << "GET"_ba << u"/api/rooms/"_s << QString() << QStringList {};
        QTest::addRow("too long") << "GET"_ba << u"/api/rooms/r-1/messages/m-9"_s << QString() << QStringList {};
        QTest::addRow("case differs") << "GET"_ba << u"/api/Rooms"_s << QString() << QStringList {};
    }
    void routing()
    {
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        QFETCH(QString, route);
        QFETCH(QStringList, arguments);

        WorkspaceRouter router;
        const auto answer = [](const WorkspaceRequest &) { return WorkspaceReply::ok(); };
        using Access = WorkspaceRouter::Access;
        router.add("GET", u"/api/rooms"_s, Access::Public, answer);
        router.add("GET", u"/api/rooms/search"_s, Access::Public, answer);
        router.add("GET", u"/api/rooms/:room/messages"_s, Access::Session, answer);
        router.add("DELETE", u"/api/rooms/:room/messages/:message"_s, Access::Session, answer);
        router.add("GET", u"/api/rooms/:room"_s, Access::Session, answer);

        const std::optional<WorkspaceRouter::Match> match = router.match(method, path);
        QCOMPARE(match.has_value(), !route.isEmpty());
        if (!match)
            return;
        QCOMPARE(u"/"_s + match->route->segments.join('/'_L1), route);
        QCOMPARE(match->arguments, arguments);
    }

    void requestReading_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QByteArray>("cookie");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("token");
        QTest::addRow("bare") << u"/api/session"_s << QByteArray() << u"/api/session"_s << QString() << QString();
        QTest::addRow("query kept apart") << u"/api/gifs?q=a%20b&limit=3"_s << "tarn_session=abc"_ba << u"/api/gifs"_s
                                          << u"q=a%20b&limit=3"_s << u"abc"_s;
        QTest::addRow("cookie among others")
            << u"/"_s << "theme=dark; tarn_session=t-1_x; lang=en"_ba << u"/"_s << QString() << u"t-1_x"_s;
        QTest::addRow("lookalike cookie name")
            << u"/"_s << "old_tarn_session=zzz"_ba << u"/"_s << QString() << QString();
        QTest::addRow("empty target") << QString() << QByteArray() << u"/"_s << QString() << QString();
    }
    void requestReading()
    {
        QFETCH(QString, target);
        QFETCH(QByteArray, cookie);
        QFETCH(QString, path);
        QFETCH(QString, query);
        QFETCH(QString, token);
        QList<QPair<QByteArray, QByteArray>> headers;
        if (!cookie.isEmpty())
            headers.append({ "cookie"_ba, cookie });
        const WorkspaceRequest request("GET", target, headers, {});
        QCOMPARE(request.path(), path);
        QCOMPARE(request.queryString(), query);
        QCOMPARE(request.sessionToken(), token);
    }
};

QTEST_GUILESS_MAIN(TestWorkspaceParts)
#include "tst_workspace_parts.moc"
