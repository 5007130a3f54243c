// `tarn bank-csv FILE`, run as the built executable: what a person checking a
// statement before import sees on standard output and error, and the exit code.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct RunRow {
    const char *name;
    QByteArray file;
    int exitCode;
    QByteArray out;
    QByteArray err;
};

} // namespace

class TestBankCSVCommand : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void run_data()
    {
        QTest::addColumn<RunRow>("row");
        QByteArray big("Date,Description,Amount\n2024-01-02,A,1\n");
        big.append(900000 - big.size(), '\n');
        const QByteArray tooBig = "choose a UTF-8 CSV under 900 KB.\n";
        const RunRow rows[] = {
            { "one row, keys in import order", "date,description,amount\n01/05/2024,Coffee,(4.50)\n", 0,
                R"({"rows":[{"date":"2024-01-05","description":"Coffee","amount":-450,"reference":""}]})"
                "\n",
                {} },
            { "escapes, non-ASCII, byte-order mark",
                "\xef\xbb\xbf"
                "Date,Description,Amount,Reference\r\n"
                "2024-01-02,\"Caf\xc3\xa9 \"\"Lune\"\"\r\nback\\slash\",\"$1,234.56\",R-1\r\n"
                "2024-01-03,Fee,-0.01,\r\n",
                0,
                "{\"rows\":[{\"date\":\"2024-01-02\",\"description\":\"Caf\xc3\xa9 \\\"Lune\\\"\\nback\\\\slash\","
                "\"amount\":123456,\"reference\":\"R-1\"},"
                "{\"date\":\"2024-01-03\",\"description\":\"Fee\",\"amount\":-1,\"reference\":\"\"}]}\n",
                {} },
            { "count, with the en dash", "Date,Description,Amount\n", 1, {},
                "choose a CSV with 1\xe2\x80\x93"
                "500 transactions.\n" },
            { "not UTF-8", "Date,Description,Amount\n2024-01-02,Caf\xe9,1\n", 1, {}, tooBig },
            { "exactly at the limit", big, 0,
                R"({"rows":[{"date":"2024-01-02","description":"A","amount":100,"reference":""}]})"
                "\n",
                {} },
            { "one byte too large", big + '\n', 1, {}, tooBig },
        };
        for (const RunRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void run()
    {
        QFETCH(RunRow, row);
        QVERIFY(m_dir.isValid());
        const QString path = m_dir.filePath(u"statement.csv"_s);
        QFile csv(path);
        QVERIFY(csv.open(QIODevice::WriteOnly | QIODevice::Truncate));
        QCOMPARE(csv.write(row.file), row.file.size());
        csv.close();

        QProcess tarn;
        tarn.start(QStringLiteral(TARN_EXECUTABLE), { u"bank-csv"_s, path });
        QVERIFY(tarn.waitForFinished(30000));
        QCOMPARE(tarn.exitStatus(), QProcess::NormalExit);
        // A refusal names the command and the file before the import's own message.
        QCOMPARE(tarn.readAllStandardError(),
            row.err.isEmpty() ? row.err : "tarn bank-csv: " + path.toUtf8() + ": " + row.err);
        QCOMPARE(tarn.readAllStandardOutput(), row.out);
        QCOMPARE(tarn.exitCode(), row.exitCode);
    }
};

QTEST_GUILESS_MAIN(TestBankCSVCommand)
#include "tst_bank_csv_command.moc"
