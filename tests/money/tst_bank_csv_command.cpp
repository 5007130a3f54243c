// `tarn bank-csv FILE`, run as the built executable: what a person checking a
// statement before import sees on standard output and error, and the exit code.
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestBankCSVCommand : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void run_data();
    void run();

private:
    QTemporaryDir m_dir;
};

void TestBankCSVCommand::initTestCase()
{
    QVERIFY(m_dir.isValid());
}

void TestBankCSVCommand::run_data()
{
    QTest::addColumn<QByteArray>("file"); // written to a temporary file
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");

    QTest::addRow("one row, keys in import order")
        << QByteArray("date,description,amount\n01/05/2024,Coffee,(4.50)\n") << 0
        << QByteArray(R"({"rows":[{"date":"2024-01-05","description":"Coffee","amount":-450,"reference":""}]})"
                      "\n")
        << QByteArray();
    QTest::addRow("escapes, non-ASCII, byte-order mark")
        << QByteArray("\xef\xbb\xbf" "Date,Description,Amount,Reference\r\n"
                      "2024-01-02,\"Caf\xc3\xa9 \"\"Lune\"\"\r\nback\\slash\",\"$1,234.56\",R-1\r\n"
                      "2024-01-03,Fee,-0.01,\r\n")
        << 0
        << QByteArray(R"({"rows":[{"date":"2024-01-02","description":"Caf)" "\xc3\xa9"
                      R"( \"Lune\"\nback\\slash","amount":123456,"reference":"R-1"},)"
                      R"({"date":"2024-01-03","description":"Fee","amount":-1,"reference":""}]})"
                      "\n")
        << QByteArray();
    QTest::addRow("bad row") << QByteArray("Date,Description,Amount\n2024-01-02,A,1\n2024-02-30,B,1\n") << 1
                             << QByteArray() << QByteArray("Row 3 has an invalid date.\n");
    QTest::addRow("header") << QByteArray("Transaction Date,Description,Amount\n2024-01-02,A,1\n") << 1 << QByteArray()
                            << QByteArray("Bank CSV needs Date, Description, and Amount columns. Reference is optional.\n");
    QTest::addRow("count, with the en dash") << QByteArray("Date,Description,Amount\n") << 1 << QByteArray()
                                             << QByteArray("Choose a CSV with 1\xe2\x80\x93" "500 transactions.\n");
    QTest::addRow("not UTF-8") << QByteArray("Date,Description,Amount\n2024-01-02,Caf\xe9,1\n") << 1 << QByteArray()
                               << QByteArray("Choose a UTF-8 CSV under 900 KB.\n");
    QByteArray big("Date,Description,Amount\n2024-01-02,A,1\n");
    big.append(900'001 - big.size(), '\n');
    QTest::addRow("one byte too large") << big << 1 << QByteArray() << QByteArray("Choose a UTF-8 CSV under 900 KB.\n");
    big.chop(1);
    QTest::addRow("exactly at the limit")
        << big << 0 << QByteArray(R"({"rows":[{"date":"2024-01-02","description":"A","amount":100,"reference":""}]})" "\n")
        << QByteArray();
    QTest::addRow("empty file") << QByteArray() << 1 << QByteArray() << QByteArray("The CSV is empty.\n");
}

void TestBankCSVCommand::run()
{
    QFETCH(QByteArray, file);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);

    const QString path = m_dir.filePath(u"statement.csv"_s);
    QFile csv(path);
    QVERIFY(csv.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(csv.write(file), file.size());
    csv.close();

    QProcess tarn;
    tarn.start(QStringLiteral(TARN_EXECUTABLE), {u"bank-csv"_s, path});
    QVERIFY(tarn.waitForFinished(30000));
    QCOMPARE(tarn.exitStatus(), QProcess::NormalExit);
    QCOMPARE(tarn.readAllStandardError(), err);
    QCOMPARE(tarn.readAllStandardOutput(), out);
    QCOMPARE(tarn.exitCode(), exitCode);
}

QTEST_GUILESS_MAIN(TestBankCSVCommand)
#include "tst_bank_csv_command.moc"
