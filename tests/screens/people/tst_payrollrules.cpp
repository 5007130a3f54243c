#include "screens/people/PayrollRules.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct ExportRow {
    QList<TarnPayrollLine> lines;
    QByteArray csv;
};

TarnPayrollLine line(const QString &name, qint64 minutes, qint64 rate, QList<qint64> adjustments)
{
    TarnPayrollLine out;
    out.person_name = name;
    out.minutes = minutes;
    out.rate = rate;
    out.regular_pay = PayrollRules::pay(minutes, rate);
    out.total = out.regular_pay;
    for (const qint64 amount : adjustments) {
        out.adjustments.append(
            { .id = {}, .label = u"x"_s, .amount = amount, .created_by_name = {}, .created_at = {} });
        out.total += amount;
    }
    return out;
}

} // namespace

Q_DECLARE_METATYPE(ExportRow)

// The payroll export's rows.
class TestPayrollRules : public QObject {
    Q_OBJECT

private slots:
    void exports_data();
    void exports();
};

void TestPayrollRules::exports_data()
{
    QTest::addColumn<ExportRow>("row");
    const QByteArray header = "Period,Person,Hours,Rate,Regular pay,Adjustments,Total\r\n";
    const QByteArray period = "2026-11-16 to 2026-11-29,";
    QTest::addRow("no lines") << ExportRow { {}, {} };
    // 7h 20m at 33.50 is 245.666…, rounded to the cent.
    QTest::addRow("hours and a deduction") << ExportRow { { line(u"Priya Nair"_s, 440, 3350, { -5000, 1005 }) },
        header + period + "Priya Nair,7.33,33.50,245.67,-39.95,205.72\r\n" + period + "Total,,,,,205.72\r\n" };
    QTest::addRow("quoted names and two lines") << ExportRow { { line(u"Reyes, Tomas"_s, 60, 4100, {}),
                                                                   line(u"Sam \"Sammy\" Okoro"_s, 0, 3600, { 12345 }) },
        header + period + "\"Reyes, Tomas\",1.00,41.00,41.00,0.00,41.00\r\n" + period
            + "\"Sam \"\"Sammy\"\" Okoro\",0.00,36.00,0.00,123.45,123.45\r\n" + period + "Total,,,,,164.45\r\n" };
}

void TestPayrollRules::exports()
{
    QFETCH(ExportRow, row);
    QCOMPARE(PayrollRules::csv(QDate(2026, 11, 16), QDate(2026, 11, 29), row.lines), row.csv);
}

QTEST_GUILESS_MAIN(TestPayrollRules)
#include "tst_payrollrules.moc"
