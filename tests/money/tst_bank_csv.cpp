#include "money/TarnBankCSV.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using Row = TarnBankCSV::Row;

using Renames = QList<std::pair<QString, QString>>;

Q_DECLARE_METATYPE(QList<TarnBankCSV::Row>)

namespace {

const QString header = u"Date,Description,Amount,Reference\n"_s;

// One data row under the usual header, with the amount and date cells free.
QString statement(const QString &date, const QString &amount, const QString &description = u"Coffee"_s)
{
    return header + date + u',' + description + u',' + amount + u",R1\n"_s;
}

// Runs the reader and folds its outcome into one comparable value.
struct Outcome
{
    QList<Row> rows;
    QString error;
};

Outcome read(QStringView text)
{
    try {
        return {TarnBankCSV::parse(text), {}};
    } catch (const TarnBankCSV::ParseError &e) {
        return {{}, e.message()};
    }
}

QString readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot open %s", qPrintable(path));
    return TarnBankCSV::decodeFile(file.readAll());
}

QString rowsOf(int count)
{
    QString text = header;
    for (int i = 0; i < count; ++i)
        text += u"2024-01-02,Item "_s + QString::number(i) + u",1.00,\n"_s;
    return text;
}

const QString badDate = u"Row 2 has an invalid date."_s;
const QString badAmount = u"Row 2 has an invalid amount."_s;
const QString outOfRange = u"Row 2 needs a nonzero amount within the bank limit."_s;
const QString badText = u"Row 2 needs a description and a short reference."_s;
const QString badHeader = u"Bank CSV needs Date, Description, and Amount columns. Reference is optional."_s;
const QString badCount = u"Choose a CSV with 1\u2013500 transactions."_s;

} // namespace

class TestBankCSV : public QObject
{
    Q_OBJECT

private slots:
    void statements_data();
    void statements();
    void dates_data();
    void dates();
    void amounts_data();
    void amounts();
    void refusals_data();
    void refusals();
    void texts_data();
    void texts();
    void rowCount_data();
    void rowCount();
    void fileCheck_data();
    void fileCheck();
    void realExports_data();
    void realExports();
    void edgeStatement_data();
    void edgeStatement();
};

// Whole statements that must be read exactly.
void TestBankCSV::statements_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<Row>>("rows");

    QTest::addRow("accounting parentheses, US date")
        << u"date,description,amount\n01/05/2024,Coffee,(4.50)\n"_s
        << QList<Row>{{u"2024-01-05"_s, u"Coffee"_s, -450, {}}};
    QTest::addRow("byte-order mark before the header")
        << u"\uFEFFDate,Description,Amount,Reference\r\n2024-03-01,Rent,-1500.00,R1\r\n"_s
        << QList<Row>{{u"2024-03-01"_s, u"Rent"_s, -150000, u"R1"_s}};
    QTest::addRow("line break and doubled quote inside quotes")
        << u"Date,Description,Amount\r\n2024-01-02,\"Line one\r\nsays \"\"hi\"\"\",5\r\n"_s
        << QList<Row>{{u"2024-01-02"_s, u"Line one\nsays \"hi\""_s, 500, {}}};
    QTest::addRow("lone carriage returns end rows")
        << u"Date,Description,Amount\r2024-01-02,A,1\r2024-01-03,B,2"_s
        << QList<Row>{{u"2024-01-02"_s, u"A"_s, 100, {}}, {u"2024-01-03"_s, u"B"_s, 200, {}}};
    QTest::addRow("quote opening mid-field")
        << u"Date,Description,Amount\n2024-01-02,ab\"c,d\"e,1\n"_s
        << QList<Row>{{u"2024-01-02"_s, u"abc,de"_s, 100, {}}};
    QTest::addRow("columns reordered, cased, padded; first match wins")
        << u" AMOUNT ,reference,Description,\uFEFFdate,Amount\n-12.00,X1,Bus fare,3/4/2024,99\n"_s
        << QList<Row>{{u"2024-03-04"_s, u"Bus fare"_s, -1200, u"X1"_s}};
    QTest::addRow("blank and comma-only lines vanish")
        << u"\n \nDate,Description,Amount\n\n , ,\t\n2024-01-02,A,1\n,,\n"_s
        << QList<Row>{{u"2024-01-02"_s, u"A"_s, 100, {}}};
    QTest::addRow("short row reads missing cells as empty")
        << u"Date,Description,Amount,Reference\n2024-01-02,A,1\n"_s
        << QList<Row>{{u"2024-01-02"_s, u"A"_s, 100, {}}};
    QTest::addRow("cells trimmed, inner spaces kept")
        << u"Date,Description,Amount,Reference\n 2024-01-02 ,\"  Two  words \", 7.25 , R 9 \n"_s
        << QList<Row>{{u"2024-01-02"_s, u"Two  words"_s, 725, u"R 9"_s}};
    QTest::addRow("quoted header cells")
        << u"\"Date\",\"Description\",\"Amount\"\n\"2024-01-02\",\"A\",\"-1\"\n"_s
        << QList<Row>{{u"2024-01-02"_s, u"A"_s, -100, {}}};
    QTest::addRow("non-ASCII text kept as is")
        << u"Date,Description,Amount\n1/8/2024,\"UNICODE CAF\u00C9 \u2615 \u6771\u4EAC\",-3.20\n"_s
        << QList<Row>{{u"2024-01-08"_s, u"UNICODE CAF\u00C9 \u2615 \u6771\u4EAC"_s, -320, {}}};
}

void TestBankCSV::statements()
{
    QFETCH(QString, text);
    QFETCH(QList<Row>, rows);
    const Outcome outcome = read(text);
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.rows, rows);
}

// The date cell as written to the wire date, or the invalid-date message.
void TestBankCSV::dates_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QString>("wire");

    struct Case { const char *name; QString cell; QString wire; };
    const Case cases[] = {
        {"ISO day", u"2024-01-05"_s, u"2024-01-05"_s},
        {"month/day/year", u"1/5/2024"_s, u"2024-01-05"_s},
        {"padded month/day/year", u"01/05/2024"_s, u"2024-01-05"_s},
        {"leap day", u"2/29/2024"_s, u"2024-02-29"_s},
        {"leading zeros read as numbers", u"0001/0005/2024"_s, u"2024-01-05"_s},
        {"two-digit year stays year 24", u"1/5/24"_s, u"0024-01-05"_s},
        {"end of year", u"12/31/2023"_s, u"2023-12-31"_s},
        {"not a leap year", u"2/29/2023"_s, {}},
        {"day 30 of February", u"2/30/2024"_s, {}},
        {"ISO day 30 of February", u"2024-02-30"_s, {}},
        {"month 13", u"13/1/2024"_s, {}},
        {"day/month/year with day above 12", u"21/11/2015"_s, {}},
        {"year first with slashes", u"2012/3/22"_s, {}},
        {"empty part", u"1//5/2024"_s, {}},
        {"four parts", u"1/5/2024/1"_s, {}},
        {"negative month", u"-1/5/2024"_s, {}},
        {"year zero", u"0000-01-01"_s, {}},
        {"dashes in US order", u"01-05-2024"_s, {}},
        {"unpadded ISO", u"2024-1-5"_s, {}},
        {"date and time", u"2002-09-10T23:00:04"_s, {}},
        {"five-digit year", u"1/5/20240"_s, {}},
        {"Arabic-Indic digits", u"\u0661/\u0665/\u0662\u0660\u0662\u0664"_s, {}},
        {"empty", QString(), {}},
        {"huge part", u"1/5/99999999999999999999"_s, {}},
    };
    for (const Case &c : cases)
        QTest::addRow("%s", c.name) << c.cell << c.wire;
}

void TestBankCSV::dates()
{
    QFETCH(QString, cell);
    QFETCH(QString, wire);
    const Outcome outcome = read(statement(cell, u"1.00"_s));
    if (wire.isEmpty()) {
        QCOMPARE(outcome.error, badDate);
    } else {
        QCOMPARE(outcome.error, QString());
        QCOMPARE(outcome.rows.value(0).date, wire);
    }
}

// The amount cell to cents, or which message refuses it.
void TestBankCSV::amounts_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<qint64>("cents");
    QTest::addColumn<QString>("error");

    struct Case { const char *name; QString cell; qint64 cents; QString error; };
    const Case cases[] = {
        {"whole", u"12"_s, 1200, {}},
        {"one decimal", u"1.5"_s, 150, {}},
        {"negative", u"-0.01"_s, -1, {}},
        {"grouped and quoted", u"\"1,234.56\""_s, 123456, {}},
        {"dollar sign", u"$12.00"_s, 1200, {}},
        {"minus before dollar", u"\"-$1,234.56\""_s, -123456, {}},
        {"dollar around parentheses", u"\"$(1,000.00)\""_s, -100000, {}},
        {"parentheses with minus inside stay negative", u"(-5)"_s, -500, {}},
        {"inner spaces dropped", u"\"1 234.50\""_s, 123450, {}},
        {"comma is always grouping", u"\"12,50\""_s, 125000, {}},
        {"no decimals, large", u"-330000"_s, -33000000, {}},
        {"bank limit", u"1000000000.00"_s, 100000000000, {}},
        {"bank limit negative", u"(1000000000)"_s, -100000000000, {}},
        {"leading zeros", u"000000000000000000000000012.30"_s, 1230, {}},
        {"three decimals", u"12.345"_s, 0, badAmount},
        {"exponent", u"1e3"_s, 0, badAmount},
        {"leading point", u".5"_s, 0, badAmount},
        {"trailing point", u"5."_s, 0, badAmount},
        {"plus sign", u"+5"_s, 0, badAmount},
        {"double minus", u"--5"_s, 0, badAmount},
        {"minus outside parentheses", u"-(5)"_s, 0, badAmount},
        {"empty parentheses", u"()"_s, 0, badAmount},
        {"empty", QString(), 0, badAmount},
        {"decimal comma with currency", u"\"50,00 EUR\""_s, 0, badAmount},
        {"non-breaking space is not dropped", u"1\u00A0234"_s, 0, badAmount},
        {"fullwidth digits", u"\uFF11\uFF12"_s, 0, badAmount},
        {"zero", u"0.00"_s, 0, outOfRange},
        {"negative zero", u"-0"_s, 0, outOfRange},
        {"zero in parentheses", u"(0)"_s, 0, outOfRange},
        {"a cent past the limit", u"1000000000.01"_s, 0, outOfRange},
        {"a cent past the negative limit", u"-1000000000.01"_s, 0, outOfRange},
        {"largest 64-bit cents", u"92233720368547758.07"_s, 0, outOfRange},
        {"most negative 64-bit cents", u"-92233720368547758.08"_s, 0, outOfRange},
        {"one cent past 64 bits", u"92233720368547758.08"_s, 0, badAmount},
        {"far past 64 bits", u"99999999999999999999999999999999"_s, 0, badAmount},
    };
    for (const Case &c : cases)
        QTest::addRow("%s", c.name) << c.cell << c.cents << c.error;
}

void TestBankCSV::amounts()
{
    QFETCH(QString, cell);
    QFETCH(qint64, cents);
    QFETCH(QString, error);
    const Outcome outcome = read(statement(u"2024-01-02"_s, cell));
    QCOMPARE(outcome.error, error);
    if (error.isEmpty())
        QCOMPARE(outcome.rows.value(0).amount, cents);
}

// Statements refused as a whole, and which problem is reported first.
void TestBankCSV::refusals_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");

    QTest::addRow("nothing") << QString() << u"The CSV is empty."_s;
    QTest::addRow("only blank lines and commas") << u"\r\n , ,\n\t\n"_s << u"The CSV is empty."_s;
    QTest::addRow("only a byte-order mark") << u"\uFEFF"_s << badHeader;
    QTest::addRow("unclosed quote at the end")
        << u"Date,Description,Amount\n1/11/2024,\"UNTERMINATED QUOTE,9.99,A14\n"_s
        << u"The CSV has an unclosed quoted field."_s;
    QTest::addRow("unclosed quote wins over a bad earlier row")
        << u"Date,Description,Amount\nbad,A,1\n\"x"_s << u"The CSV has an unclosed quoted field."_s;
    QTest::addRow("other date title") << u"Transaction Date,Description,Amount\n2024-01-02,A,1\n"_s << badHeader;
    QTest::addRow("debit and credit columns") << u"Date,Description,Debit,Credit\n2024-01-02,A,1,\n"_s << badHeader;
    QTest::addRow("semicolons") << u"Date;Description;Amount\n2024-01-02;A;1\n"_s << badHeader;
    QTest::addRow("header missing, data first") << u"2024-01-02,A,1\n2024-01-03,B,2\n"_s << badHeader;
    QTest::addRow("header alone") << u"Date,Description,Amount\n"_s << badCount;
    QTest::addRow("header check comes before the count") << u"Date,Amount\n"_s << badHeader;
    QTest::addRow("date checked before description and amount")
        << u"Date,Description,Amount\n2024-13-01,,zero\n"_s << badDate;
    QTest::addRow("description checked before amount")
        << u"Date,Description,Amount\n2024-01-01,,zero\n"_s << badText;
    QTest::addRow("first failing row is named")
        << u"Date,Description,Amount\n2024-01-01,A,1\n2024-01-02,B,x\n2024-02-30,C,1\n"_s
        << u"Row 3 has an invalid amount."_s;
    QTest::addRow("row numbers skip blank lines")
        << u"Date,Description,Amount\n\n2024-01-01,A,1\n\n\n2024-01-02,B,0\n"_s
        << u"Row 3 needs a nonzero amount within the bank limit."_s;
    QTest::addRow("multi-line field counts as one row")
        << u"Date,Description,Amount\n2024-01-01,\"A\nB\nC\",1\n2024-01-02,,1\n"_s
        << u"Row 3 needs a description and a short reference."_s;
    QTest::addRow("missing description in a short row")
        << u"Date,Amount,Description\n2024-01-01,5\n"_s << badText;
}

void TestBankCSV::refusals()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    const Outcome outcome = read(text);
    QCOMPARE(outcome.error, error);
    QVERIFY(outcome.rows.isEmpty());
}

// Lengths of description and reference are counted as a person counts
// characters, not in UTF-16 units.
void TestBankCSV::texts_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("reference");
    QTest::addColumn<bool>("accepted");

    const QString accented = u"e\u0301"_s;
    const QString emoji = u"\U0001F600"_s;
    QTest::addRow("500 letters") << QString(500, u'a') << QString() << true;
    QTest::addRow("501 letters") << QString(501, u'a') << QString() << false;
    QTest::addRow("500 accented letters in 1000 units") << accented.repeated(500) << QString() << true;
    QTest::addRow("501 accented letters") << accented.repeated(501) << QString() << false;
    QTest::addRow("500 emoji in 1000 units") << emoji.repeated(500) << QString() << true;
    QTest::addRow("reference of 120") << u"A"_s << QString(120, u'r') << true;
    QTest::addRow("reference of 121") << u"A"_s << QString(121, u'r') << false;
    QTest::addRow("only spaces") << u"   "_s << QString() << false;
    QTest::addRow("padding does not count") << (u"  "_s + QString(500, u'a') + u"  "_s) << QString() << true;
}

void TestBankCSV::texts()
{
    QFETCH(QString, description);
    QFETCH(QString, reference);
    QFETCH(bool, accepted);
    const QString text = header + u"2024-01-02,\""_s + description + u"\",1,\""_s + reference + u"\"\n"_s;
    const Outcome outcome = read(text);
    QCOMPARE(outcome.error, accepted ? QString() : badText);
    if (accepted) {
        QCOMPARE(outcome.rows.value(0).description, description.trimmed());
        QCOMPARE(outcome.rows.value(0).reference, reference);
    }
}

void TestBankCSV::rowCount_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("rows");

    QTest::addRow("one") << rowsOf(1) << qsizetype(1);
    QTest::addRow("500") << rowsOf(500) << qsizetype(500);
    QTest::addRow("501") << rowsOf(501) << qsizetype(-1);
    QTest::addRow("500 with blank rows between")
        << rowsOf(500).replace(u"\n"_s, u"\n , ,\n\n"_s) << qsizetype(500);
}

void TestBankCSV::rowCount()
{
    QFETCH(QString, text);
    QFETCH(qsizetype, rows);
    const Outcome outcome = read(text);
    if (rows < 0) {
        QCOMPARE(outcome.error, badCount);
    } else {
        QCOMPARE(outcome.error, QString());
        QCOMPARE(outcome.rows.size(), rows);
        QCOMPARE(outcome.rows.last().description, u"Item "_s + QString::number(rows - 1));
    }
}

void TestBankCSV::fileCheck_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("accepted");

    const QByteArray line = "2024-01-02,Item,1.00,\n";
    QByteArray full = "Date,Description,Amount,Reference\n";
    while (full.size() < TarnBankCSV::maxFileBytes)
        full += "x";
    full.truncate(TarnBankCSV::maxFileBytes);

    QTest::addRow("exactly 900,000 bytes") << full << true;
    QTest::addRow("900,001 bytes") << (full + "x") << false;
    QTest::addRow("Latin-1 accent") << QByteArray("Date,Description,Amount\n2024-01-02,Caf\xe9,1\n") << false;
    QTest::addRow("truncated sequence") << QByteArray("abc\xe2\x82") << false;
    QTest::addRow("overlong slash") << QByteArray("a\xc0\xaf") << false;
    QTest::addRow("encoded surrogate") << QByteArray("a\xed\xa0\x80") << false;
    QTest::addRow("UTF-8 accent") << QByteArray("Caf\xc3\xa9") << true;
    QTest::addRow("empty file") << QByteArray() << true;
}

void TestBankCSV::fileCheck()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, accepted);
    QString error;
    QString text;
    try {
        text = TarnBankCSV::decodeFile(bytes);
    } catch (const TarnBankCSV::ParseError &e) {
        error = e.message();
    }
    QCOMPARE(error, accepted ? QString() : u"Choose a UTF-8 CSV under 900 KB."_s);
    if (accepted)
        QCOMPARE(text.toUtf8(), bytes);
}

// The real exports: as downloaded each is refused with the message that tells
// the user what to change; with the columns renamed, each is read exactly or
// refused for a row, as a person comparing it with the file would expect.
void TestBankCSV::realExports_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<Renames>("renames");
    QTest::addColumn<QString>("error");
    QTest::addColumn<QList<Row>>("firstAndLast");
    QTest::addColumn<qsizetype>("count");

    const QList<Row> none;
    const struct { const char *file; QString error; } asDownloaded[] = {
        {"actual__test.csv", badHeader},
        {"reckon__73-sample.csv", badHeader},
        {"reckon__extratofake.csv", u"Choose a UTF-8 CSV under 900 KB."_s},
        {"reckon__integration_bom_utf8_file_input.csv", badHeader},
        {"reckon__integration_two_money_columns_manual_input.csv", badHeader},
        {"reckon__invalid_header_example.csv", badHeader},
        {"reckon__multi-line-field.csv", badHeader},
        {"reckon__some_other.csv", badHeader},
        {"reckon__test_money_column.csv", badHeader},
        {"reckon__two_money_columns.csv", badHeader},
    };
    for (const auto &c : asDownloaded)
        QTest::addRow("%s as downloaded", c.file) << QString::fromLatin1(c.file) << Renames{} << c.error << none << qsizetype(0);

    QTest::addRow("budget export, Payee as Description")
        << u"actual__test.csv"_s << Renames{{u"Payee"_s, u"Description"_s}} << QString()
        << QList<Row>{{u"2024-08-02"_s, u"Deposit"_s, 178776, {}}, {u"2024-01-02"_s, u"Starting Balance"_s, -33000000, {}}}
        << qsizetype(8);
    QTest::addRow("card export, Transaction Date as Date")
        << u"reckon__73-sample.csv"_s << Renames{{u"Transaction Date"_s, u"Date"_s}} << QString()
        << QList<Row>{{u"2017-07-06"_s, u"TRIPLE T CAR WASH CHAMPAIGN    IL"_s, 2700, {}}}
        << qsizetype(1);
    QTest::addRow("wallet export with byte-order mark, renamed")
        << u"reckon__integration_bom_utf8_file_input.csv"_s
        << Renames{{u"\"Name\""_s, u"Description"_s}, {u"\"Net\""_s, u"Amount"_s}, {u"\"Transaction ID\""_s, u"Reference"_s}}
        << QString() << QList<Row>{{u"2019-12-27"_s, u"Humble Bundle, Inc."_s, -749, {}}} << qsizetype(1);
    QTest::addRow("year-first slashes are not month/day/year")
        << u"reckon__test_money_column.csv"_s << Renames{{u"Note"_s, u"Description"_s}} << badDate << none << qsizetype(0);
    QTest::addRow("withdrawal column as Amount leaves empty amounts")
        << u"reckon__integration_two_money_columns_manual_input.csv"_s
        << Renames{{u"Summary"_s, u"Description"_s}, {u"Withdrawal"_s, u"Amount"_s}, {u"2021/07/02"_s, u"7/2/2021"_s},
                   {u"2021/07/08"_s, u"7/8/2021"_s}}
        << u"Row 4 has an invalid amount."_s << none << qsizetype(0);
}

void TestBankCSV::realExports()
{
    QFETCH(QString, file);
    QFETCH(Renames, renames);
    QFETCH(QString, error);
    QFETCH(QList<Row>, firstAndLast);
    QFETCH(qsizetype, count);

    Outcome outcome;
    try {
        QString text = readFile(QDir(QStringLiteral(TARN_CORPUS_DIR)).filePath(u"bank-csv/"_s + file));
        for (const auto &[from, to] : std::as_const(renames))
            text.replace(from, to);
        outcome = read(text);
    } catch (const TarnBankCSV::ParseError &e) {
        outcome.error = e.message();
    }
    QCOMPARE(outcome.error, error);
    QCOMPARE(outcome.rows.size(), count);
    if (!firstAndLast.isEmpty()) {
        QCOMPARE(outcome.rows.first(), firstAndLast.first());
        QCOMPARE(outcome.rows.last(), firstAndLast.last());
    }
}

// The edge statement of the stress generator: its valid rows are read exactly,
// and each of its bad rows stops the whole statement.
void TestBankCSV::edgeStatement_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");

    const QString edge = u"\uFEFFDate,Description,Amount,Reference\r\n"
                         "1/2/2024,COFFEE SHOP,(4.50),A1\r\n"
                         "1/3/2024,\"PAYROLL, ACME INC\",\"$1,234.56\",A2\r\n"
                         "1/4/2024,\"REFUND \"\"DUPLICATE\"\"\",$12.00,\r\n"
                         "1/5/2024,\"MULTI\nLINE\r\nMEMO\",-0.01,A4\r\n"
                         "12/31/2023,YEAR END FEE,\"($1,000.00)\",A5\r\n"_s;
    QTest::addRow("edge rows that are valid") << edge << QString();
    QTest::addRow("then a leap day of zero") << edge + u"2/29/2024,LEAP DAY,0.00,A6\r\n"_s
                                             << u"Row 7 needs a nonzero amount within the bank limit."_s;
    QTest::addRow("then too many columns") << edge + u"1/7/2024,TOO,MANY,COLUMNS,HERE\r\n"_s
                                           << u"Row 7 has an invalid amount."_s;
}

void TestBankCSV::edgeStatement()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    const Outcome outcome = read(text);
    QCOMPARE(outcome.error, error);
    if (error.isEmpty()) {
        const QList<Row> expected{
            {u"2024-01-02"_s, u"COFFEE SHOP"_s, -450, u"A1"_s},
            {u"2024-01-03"_s, u"PAYROLL, ACME INC"_s, 123456, u"A2"_s},
            {u"2024-01-04"_s, u"REFUND \"DUPLICATE\""_s, 1200, {}},
            {u"2024-01-05"_s, u"MULTI\nLINE\nMEMO"_s, -1, u"A4"_s},
            {u"2023-12-31"_s, u"YEAR END FEE"_s, -100000, u"A5"_s},
        };
        QCOMPARE(outcome.rows, expected);
    }
}

QTEST_APPLESS_MAIN(TestBankCSV)
#include "tst_bank_csv.moc"
