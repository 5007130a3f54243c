#include "auth/NativeAuthError.h"
#include "auth/NativeSessionStore.h"
#include "service/TarnAPIError.h"

#include "TarnWaitFor.h"
#include <QDirIterator>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

// Runs inside a private D-Bus session with its own gnome-keyring, so these
// are the real Secret Service calls the app makes.
class TestSessionStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tarnWaitFor(store.clear()); }
    void addUpdateClear();
    void emptyTokenRefused();
    void itemsAreSeparate();
    void secretNeverOnDisk();

private:
    NativeSessionStore store { u"co.halvard.pilo-tarn.session.test"_s };
};

void TestSessionStore::addUpdateClear()
{
    QCOMPARE(tarnWaitFor(store.token()), std::nullopt);

    tarnWaitFor(store.save(u"first-token"_s)); // no item yet: added
    QCOMPARE(tarnWaitFor(store.token()), std::optional<QString>(u"first-token"_s));

    tarnWaitFor(store.save(u"second-tökén"_s)); // item exists: updated in place
    QCOMPARE(tarnWaitFor(store.token()), std::optional<QString>(u"second-tökén"_s));

    tarnWaitFor(store.clear());
    QCOMPARE(tarnWaitFor(store.token()), std::nullopt);
    tarnWaitFor(store.clear()); // clearing nothing is quiet
}

void TestSessionStore::emptyTokenRefused()
{
    tarnWaitFor(store.save(u"kept"_s));
    try {
        tarnWaitFor(store.save(QString()));
        QFAIL("an empty token was stored");
    } catch (const TarnAPIError &error) {
        QCOMPARE(error.kind(), TarnAPIError::Kind::invalidResponse);
    }
    QCOMPARE(tarnWaitFor(store.token()), std::optional<QString>(u"kept"_s));
}

void TestSessionStore::itemsAreSeparate()
{
    NativeSessionStore other(u"co.halvard.pilo-tarn.session.other"_s);
    tarnWaitFor(store.save(u"mine"_s));
    tarnWaitFor(other.save(u"theirs"_s));
    tarnWaitFor(store.clearEmbeddedSignIn());
    tarnWaitFor(other.clear());
    QCOMPARE(tarnWaitFor(store.token()), std::optional<QString>(u"mine"_s));
    QCOMPARE(tarnWaitFor(other.token()), std::nullopt);
}

void TestSessionStore::secretNeverOnDisk()
{
    const QString token = u"plain-secret-5f2c9a"_s;
    tarnWaitFor(store.save(token));
    QDirIterator files(qEnvironmentVariable("HOME"), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    QVERIFY(files.hasNext()); // the keyring did write its own files
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY2(!file.readAll().contains(token.toUtf8()), qPrintable(file.fileName()));
    }
}

QTEST_GUILESS_MAIN(TestSessionStore)
#include "tst_sessionstore.moc"
