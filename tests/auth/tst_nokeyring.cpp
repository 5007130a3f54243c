#include "auth/NativeAuthError.h"
#include "auth/NativeSessionStore.h"

#include "TarnWaitFor.h"
#include <QTest>

using namespace Qt::StringLiterals;

// Without any Secret Service the store must refuse to keep the token (never
// a plaintext fallback) and say so in the platform's own words.
class TestNoKeyring : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/tarn-test-bus"); }
    void refusesToStore();
};

void TestNoKeyring::refusesToStore()
{
    NativeSessionStore store(u"co.halvard.pilo-tarn.session.test"_s);
    try {
        tarnWaitFor(store.save(u"token"_s));
        QFAIL("saved without a keyring");
    } catch (const NativeAuthError &error) {
        QCOMPARE(error.kind(), NativeAuthError::Kind::keychain);
        QCOMPARE(error.text(),
            u"This computer could not save your sign-in. Check that your keyring is unlocked and try again."_s);
    }
    QCOMPARE(tarnWaitFor(store.token()), std::nullopt);
}

QTEST_GUILESS_MAIN(TestNoKeyring)
#include "tst_nokeyring.moc"
