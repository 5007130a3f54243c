#include "money/TarnBankCSV.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using Row = TarnBankCSV::Row;
using Renames = QList<std::pair<QString, QString>>;

namespace {

const QString header = u"Date,Description,Amount,Reference\n"_s;
const QString badDate = u"Row 2 has an invalid date."_s;
const QString badAmount = u"Row 2 has an invalid amount."_s;
const QString outOfRange = u"Row 2 needs a nonzero amount within the bank limit."_s;
const QString badText = u"Row 2 needs a description and a short reference."_s;
const QString badHeader = u"Bank CSV needs Date, Description, and Amount columns. Reference is optional."_s;
const QString badCount = u"Choose a CSV with 1\u2013500 transactions."_s;
const QString badFile = u"Choose a UTF-8 CSV under 900 KB."_s;

// What the reader made of a text: its rows, or its one message.
struct Outcome {
    QList<Row> rows;
    QString error;
};

Outcome read(const QString &text)
{
    try {
        return { TarnBankCSV::parse(text), {} };
    } catch (const TarnBankCSV::ParseError &e) {
        return { {}, e.message() };
    }
}

// One data row under the usual header, with the date and amount cells free.
Outcome readRow(const QString &date, const QString &amount)
{
    return read(header + date + u",Coffee,"_s + amount + u",R1\n"_s);
}

// A statement of `count` rows that each read as `item`.
const Row item { u"2024-01-02"_s, u"Item"_s, 100, {} };
QString statementOf(int count)
{
    return header + u"2024-01-02,Item,1.00,\n"_s.repeated(count);
}

struct StatementRow {
    const char *name;
    QString text;
    Outcome outcome;
};

struct DateRow {
    const char *name;
    QString cell;
    QString wire; // empty: refused
};

struct AmountRow {
    const char *name;
    QString cell;
    qint64 cents;
    QString error;
};

struct TextRow {
    const char *name;
    QString description;
    QString reference;
    bool accepted;
};

struct ExportRow {
    const char *name;
    const char *file;
    Renames renames;
    QString error;
    QList<Row> firstAndLast;
    qsizetype count;
};

} // namespace

class TestBankCSV : public QObject {
    Q_OBJECT

private slots:
    // Whole statements read exactly, or refused with the message naming the
    // first problem.
    void statements_data()
    {
        QTest::addColumn<StatementRow>("row");
        const StatementRow rows[] = {
            { "byte-order mark and CRLF",
                u"\uFEFFDate,Description,Amount,Reference\r\n2024-03-01,Rent,-1500.00,R1\r\n"_s,
                { { { u"2024-03-01"_s, u"Rent"_s, -150000, u"R1"_s } }, {} } },
            { "line breaks and doubled quotes inside quotes",
                u"Date,Description,Amount\r\n2024-01-02,\"One\r\ntwo\nthree\rsays \"\"hi\"\"\",5\r\n"_s,
                { { { u"2024-01-02"_s, u"One\ntwo\nthree\nsays \"hi\""_s, 500, {} } }, {} } },
            { "lone carriage returns end rows", u"Date,Description,Amount\r2024-01-02,A,1\r2024-01-03,B,2"_s,
                { { { u"2024-01-02"_s, u"A"_s, 100, {} }, { u"2024-01-03"_s, u"B"_s, 200, {} } }, {} } },
            { "quote opening mid-field", u"Date,Description,Amount\n2024-01-02,ab\"c,d\"e,1\n"_s,
                { { { u"2024-01-02"_s, u"abc,de"_s, 100, {} } }, {} } },
            { "columns reordered, cased, padded; first match wins",
                u" AMOUNT ,reference,Description,\uFEFFdate,Amount\n-12.00,X1,Bus fare,3/4/2024,99\n"_s,
                { { { u"2024-03-04"_s, u"Bus fare"_s, -1200, u"X1"_s } }, {} } },
            { "blank and comma-only lines vanish", u"\n \nDate,Description,Amount\n\n , ,\t\n2024-01-02,A,1\n,,\n"_s,
                { { { u"2024-01-02"_s, u"A"_s, 100, {} } }, {} } },
            { "cells trimmed, inner spaces kept, a missing cell empty",
                header + u" 2024-01-02 ,\"  Two  words \", 7.25 \n"_s,
                { { { u"2024-01-02"_s, u"Two  words"_s, 725, {} } }, {} } },
            { "500 rows with blank lines between", statementOf(500).replace(u"\n"_s, u"\n , ,\n\n"_s),
                { QList<Row>(500, item), {} } },
            { "501 rows", statementOf(501), { {}, badCount } },
            { "header alone", u"Date,Description,Amount\n"_s, { {}, badCount } },
            { "nothing", {}, { {}, u"The CSV is empty."_s } },
            { "other date title", u"Transaction Date,Description,Amount\n2024-01-02,A,1\n"_s, { {}, badHeader } },
            { "header checked before the count", u"Date,Amount\n"_s, { {}, badHeader } },
            { "unclosed quote wins over a bad earlier row", u"Date,Description,Amount\nbad,A,1\n\"x"_s,
                { {}, u"The CSV has an unclosed quoted field."_s } },
            { "date checked before description and amount", u"Date,Description,Amount\n2024-13-01,,zero\n"_s,
                { {}, badDate } },
            { "description checked before amount", u"Date,Description,Amount\n2024-01-01,,zero\n"_s, { {}, badText } },
            { "first failing row is named",
                u"Date,Description,Amount\n2024-01-01,A,1\n2024-01-02,B,x\n2024-02-30,C,1\n"_s,
                { {}, u"Row 3 has an invalid amount."_s } },
            { "row numbers skip blank lines", u"Date,Description,Amount\n\n2024-01-01,A,1\n\n\n2024-01-02,B,0\n"_s,
                { {}, u"Row 3 needs a nonzero amount within the bank limit."_s } },
            { "a multi-line field is one row", u"Date,Description,Amount\n2024-01-01,\"A\nB\nC\",1\n2024-01-02,,1\n"_s,
                { {}, u"Row 3 needs a description and a short reference."_s } },
        };
        for (const StatementRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void statements()
    {
        QFETCH(StatementRow, row);
        const Outcome outcome = read(row.text);
        QCOMPARE(outcome.error, row.outcome.error);
        QCOMPARE(outcome.rows, row.outcome.rows);
    }

    // The date cell as the wire date, month/day/year the US way, or refused.
    void dates_data()
    {
        QTest::addColumn<DateRow>("row");
        const DateRow rows[] = {
            { "ISO day", u"2024-01-05"_s, u"2024-01-05"_s },
            { "month/day/year", u"1/5/2024"_s, u"2024-01-05"_s },
            { "two-digit year stays year 24", u"1/5/24"_s, u"0024-01-05"_s },
            { "not a leap year", u"2/29/2023"_s, {} },
            { "day/month/year with day above 12", u"21/11/2015"_s, {} },
            { "dashes in US order", u"01-05-2024"_s, {} },
            { "four numbers", u"1/5/2024/1"_s, {} },
            { "negative month", u"-1/5/2024"_s, {} },
            { "huge number", u"1/5/99999999999999999999"_s, {} },
            { "Arabic-Indic digits", u"\u0661/\u0665/\u0662\u0660\u0662\u0664"_s, {} },
        };
        for (const DateRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void dates()
    {
        QFETCH(DateRow, row);
        const Outcome outcome = readRow(row.cell, u"1.00"_s);
        QCOMPARE(outcome.error, row.wire.isEmpty() ? badDate : QString());
        QCOMPARE(outcome.rows.value(0).date, row.wire);
    }

    // The amount cell to exact cents, or which message refuses it.
    void amounts_data()
    {
        QTest::addColumn<AmountRow>("row");
        const AmountRow rows[] = {
            { "whole", u"12"_s, 1200, {} },
            { "minus before dollar", u"\"-$1,234.56\""_s, -123456, {} },
            { "dollar around parentheses", u"\"$(1,000.00)\""_s, -100000, {} },
            { "parentheses with minus inside stay negative", u"(-5)"_s, -500, {} },
            { "comma is always grouping", u"\"12,50\""_s, 125000, {} },
            { "bank limit", u"1000000000.00"_s, 100000000000, {} },
            { "bank limit out", u"(1000000000)"_s, -100000000000, {} },
            { "leading zeros", u"000000000000000000000000012.30"_s, 1230, {} },
            { "three decimals", u"12.345"_s, 0, badAmount },
            { "leading point", u".5"_s, 0, badAmount },
            { "trailing point", u"5."_s, 0, badAmount },
            { "double minus", u"--5"_s, 0, badAmount },
            { "minus outside parentheses", u"-(5)"_s, 0, badAmount },
            { "non-breaking space is not dropped", u"1\u00A0234"_s, 0, badAmount },
            { "fullwidth digits", u"\uFF11\uFF12"_s, 0, badAmount },
            { "zero", u"0.00"_s, 0, outOfRange },
            { "a cent past the limit", u"1000000000.01"_s, 0, outOfRange },
            { "a cent past the limit out", u"-1000000000.01"_s, 0, outOfRange },
            { "largest 64-bit cents", u"92233720368547758.07"_s, 0, outOfRange },
            { "most negative 64-bit cents", u"-92233720368547758.08"_s, 0, outOfRange },
            { "one cent past 64 bits", u"92233720368547758.08"_s, 0, badAmount },
            { "far past 64 bits", u"99999999999999999999999999999999"_s, 0, badAmount },
        };
        for (const AmountRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void amounts()
    {
        QFETCH(AmountRow, row);
        const Outcome outcome = readRow(u"2024-01-02"_s, row.cell);
        QCOMPARE(outcome.error, row.error);
        QCOMPARE(outcome.rows.value(0).amount, row.cents);
    }

    // Lengths are counted as a person counts characters, not in UTF-16 units.
    void texts_data()
    {
        QTest::addColumn<TextRow>("row");
        const QString accented = u"e\u0301"_s;
        const TextRow rows[] = {
            { "501 letters", QString(501, u'a'), {}, false },
            { "500 accented letters in 1000 units", accented.repeated(500), {}, true },
            { "padding does not count", u"  "_s + QString(500, u'a') + u"  "_s, {}, true },
            { "only spaces", u"   "_s, {}, false },
            { "reference of 120", u"A"_s, QString(120, u'r'), true },
            { "reference of 121", u"A"_s, QString(121, u'r'), false },
        };
        for (const TextRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void texts()
    {
        QFETCH(TextRow, row);
        const Outcome outcome
            = read(header + u"2024-01-02,\""_s + row.description + u"\",1,\""_s + row.reference + '"'_L1);
        QCOMPARE(outcome.error, row.accepted ? QString() : badText);
        QCOMPARE(outcome.rows.value(0).description, row.accepted ? row.description.trimmed() : QString());
        QCOMPARE(outcome.rows.value(0).reference, row.accepted ? row.reference : QString());
    }

    // The real exports as downloaded are refused with the message that tells
    // what to change; with their columns renamed each is read exactly, or
    // refused for the row a person comparing it with the file would expect.
    void realExports_data()
    {
        QTest::addColumn<ExportRow>("row");
        const ExportRow rows[] = {
            { "budget export", "actual__test.csv", {}, badHeader, {}, 0 },
            { "Latin-1 export", "reckon__extratofake.csv", {}, badFile, {}, 0 },
            { "multi-line field", "reckon__multi-line-field.csv", {}, badHeader, {}, 0 },
            { "budget export, Payee as Description", "actual__test.csv", { { u"Payee"_s, u"Description"_s } }, {},
                { { u"2024-08-02"_s, u"Deposit"_s, 178776, {} },
                    { u"2024-01-02"_s, u"Starting Balance"_s, -33000000, {} } },
                8 },
            { "card export, Transaction Date as Date", "reckon__73-sample.csv",
                { { u"Transaction Date"_s, u"Date"_s } }, {},
                { { u"2017-07-06"_s, u"TRIPLE T CAR WASH CHAMPAIGN    IL"_s, 2700, {} } }, 1 },
            { "wallet export with byte-order mark, renamed", "reckon__integration_bom_utf8_file_input.csv",
                { { u"\"Name\""_s, u"Description"_s }, { u"\"Net\""_s, u"Amount"_s },
                    { u"\"Transaction ID\""_s, u"Reference"_s } },
                {}, { { u"2019-12-27"_s, u"Humble Bundle, Inc."_s, -749, {} } }, 1 },
            { "year-first slashes are not month/day/year", "reckon__test_money_column.csv",
                { { u"Note"_s, u"Description"_s } }, badDate, {}, 0 },
            { "withdrawal column as Amount leaves empty amounts",
                "reckon__integration_two_money_columns_manual_input.csv",
                { { u"Summary"_s, u"Description"_s }, { u"Withdrawal"_s, u"Amount"_s },
                    { u"2021/07/02"_s, u"7/2/2021"_s }, { u"2021/07/08"_s, u"7/8/2021"_s } },
                u"Row 4 has an invalid amount."_s, {}, 0 },
        };
        for (const ExportRow &row : rows)
            QTest::addRow("%s", row.name) << row;
    }
    void realExports()
    {
        QFETCH(ExportRow, row);
        QFile file(QDir(QStringLiteral(TARN_CORPUS_DIR)).filePath(u"bank-csv/"_s + QLatin1StringView(row.file)));
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        Outcome outcome;
        try {
            QString text = TarnBankCSV::decodeFile(file.readAll());
            for (const auto &[from, to] : std::as_const(row.renames))
                text.replace(from, to);
            outcome = read(text);
        } catch (const TarnBankCSV::ParseError &e) {
            outcome.error = e.message();
        }
        QCOMPARE(outcome.error, row.error);
        QCOMPARE(outcome.rows.size(), row.count);
        if (!row.firstAndLast.isEmpty()) {
            QCOMPARE(outcome.rows.first(), row.firstAndLast.first());
            QCOMPARE(outcome.rows.last(), row.firstAndLast.last());
        }
    }
};

QTEST_APPLESS_MAIN(TestBankCSV)
#include "tst_bank_csv.moc"
