#include "money/MoneyTestSession.h"
#include "money/NativeBankImport.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Chosen {
    QByteArray bytes;
    QString status;
    bool ready = false;
};

} // namespace

Q_DECLARE_METATYPE(Chosen)

// The statement import of the Banking page against the demo workspace.
class TestBankImport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void choose_data();
    void choose();
    void importTwice();

private:
    QUrl write(const QByteArray &bytes);

    MoneyTestSession session;
    QTemporaryDir folder;
};

void TestBankImport::initTestCase()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
}

QUrl TestBankImport::write(const QByteArray &bytes)
{
    const QString path = folder.filePath(u"statement.csv"_s);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    return QUrl::fromLocalFile(path);
}

void TestBankImport::choose_data()
{
    QTest::addColumn<Chosen>("chosen");
    QTest::addRow("two rows") << Chosen { "Date,Description,Amount\n2026-11-02,Coffee,(4.50)\n11/03/2026,Refund,12\n",
        u"2 rows ready for Operating checking"_s, true };
    QTest::addRow("bad row named") << Chosen { "Date,Description,Amount\n2026-11-02,Coffee,4.50\n2026-02-30,X,1\n",
        u"Row 3 has an invalid date."_s, false };
    QTest::addRow("not UTF-8") << Chosen { "Date,Description,Amount\n2026-11-02,Caf\xe9,1\n",
        u"Choose a UTF-8 CSV under 900 KB."_s, false };
    QTest::addRow("too large") << Chosen { QByteArray(50 * 1024 * 1024, 'a'), u"Choose a UTF-8 CSV under 900 KB."_s,
        false };
}

void TestBankImport::choose()
{
    QFETCH(Chosen, chosen);
    NativeBankImport import(*session.api);
    import.choose(write(chosen.bytes), u"acct-1000"_s, u"Operating checking"_s);
    QCOMPARE(import.status(), chosen.status);
    QCOMPARE(import.ready(), chosen.ready);
    QCOMPARE(import.refused(), !chosen.ready);
    QCOMPARE(import.rows().isEmpty(), !chosen.ready);
    QCOMPARE(import.fileName(), u"statement.csv"_s);
}

void TestBankImport::importTwice()
{
    const QUrl file
        = write("Date,Description,Amount,Reference\n2026-11-20,Courier,-18.00,C1\n2026-11-20,Sale,250,S1\n");
    for (const QString &expected : { u"2 imported, 0 duplicates"_s, u"0 imported, 2 duplicates"_s }) {
        NativeBankImport import(*session.api);
        import.choose(file, u"acct-1000"_s, u"Operating checking"_s);
        QSignalSpy imported(&import, &NativeBankImport::imported);
        import.send();
        QVERIFY(import.importing());
        QVERIFY(imported.wait());
        QCOMPARE(import.result(), expected);
        QVERIFY(!import.ready());
    }
}

QTEST_GUILESS_MAIN(TestBankImport)
#include "tst_bank_import.moc"
