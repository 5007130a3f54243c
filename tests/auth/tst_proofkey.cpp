#include "auth/NativeProofKey.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class TestProofKey : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void challenge_data();
    void challenge();
    void freshKeys();
};

void TestProofKey::challenge_data()
{
    QTest::addColumn<QString>("verifier");
    QTest::addColumn<QString>("challenge");
    // The published S256 example, and one whose digest would carry "+" and "/" in plain Base64.
    QTest::addRow("published example") << u"dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"_s
                                       << u"E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"_s;
    QTest::addRow("url-safe alphabet") << u"a"_s << u"ypeBEsobvcr6wjGzmiPcTaeG7_gUfE5yuYB3ha_uSLs"_s;
}

void TestProofKey::challenge()
{
    QFETCH(QString, verifier);
    QFETCH(QString, challenge);
    QCOMPARE(NativeProofKey::challengeFor(verifier), challenge);
}

void TestProofKey::freshKeys()
{
    const std::optional<NativeProofKey> a = NativeProofKey::make();
    const std::optional<NativeProofKey> b = NativeProofKey::make();
    QVERIFY(a && b);
    static const QRegularExpression urlSafe(u"^[A-Za-z0-9_-]+$"_s);
    QCOMPARE(a->verifier.size(), 64);
    QCOMPARE(a->challenge.size(), 43);
    QVERIFY(urlSafe.match(a->verifier).hasMatch());
    QVERIFY(urlSafe.match(a->challenge).hasMatch());
    QCOMPARE(a->challenge, NativeProofKey::challengeFor(a->verifier));
    QVERIFY(a->verifier != b->verifier);
}

QTEST_GUILESS_MAIN(TestProofKey)
#include "tst_proofkey.moc"
