#include "screens/owner/OwnerFigures.h"
#include "shell/TarnAccess.h"
#include "shell/TarnScreen.h"
#include "shell/TarnShell.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct FigureRow {
    TarnTeamSnapshot snapshot;
    QString key;
    QString value;
    QString detail;
    bool attention;
};

TarnTeamSnapshot owing(qint64 invoices, qint64 overdue, qint64 amount)
{
    return { .months = { { u"2026-10"_s, 1'234'56, 99 }, { u"2026-11"_s, 19'675'00, 5'00 } },
        .open_invoices = invoices,
        .open_invoices_amount = amount,
        .open_invoices_overdue = overdue };
}

} // namespace

Q_DECLARE_METATYPE(FigureRow)

// The dashboard's figures as read from a snapshot, and where each one leads.
class TestOwnerFigures : public QObject {
    Q_OBJECT

private slots:
    void figure_data();
    void figure();
    void minutes_data();
    void minutes();
    void everyFigureOpensAPlaceTheOwnerHas();
};

void TestOwnerFigures::figure_data()
{
    QTest::addColumn<FigureRow>("row");
    QTest::addRow("this month, last month beneath")
        << FigureRow { owing(0, 0, 0), u"moneyIn"_s, u"$19,675"_s, u"Last month $1,235"_s, false };
    QTest::addRow("nothing owed") << FigureRow { owing(0, 0, 0), u"invoices"_s, u"$0"_s, u"Nothing outstanding"_s,
        false };
    QTest::addRow("one invoice, on time")
        << FigureRow { owing(1, 0, 4'500'00), u"invoices"_s, u"$4,500"_s, u"1 invoice, none overdue"_s, false };
    QTest::addRow("overdue asks for attention")
        << FigureRow { owing(3, 2, 12'000'49), u"invoices"_s, u"$12,000"_s, u"3 invoices, 2 overdue"_s, true };
    QTest::addRow("inbox empty") << FigureRow { TarnTeamSnapshot {}, u"inbox"_s, u"0"_s,
        u"Every conversation has an answer"_s, false };
    QTest::addRow("inbox waiting") << FigureRow { TarnTeamSnapshot { .inbox_waiting = 1 }, u"inbox"_s, u"1"_s,
        u"1 conversation needs a reply"_s, true };
    QTest::addRow("calls summed over the team")
        << FigureRow { TarnTeamSnapshot { .team = { { .id = u"a"_s, .calls = 2 }, { .id = u"b"_s, .calls = 5 } } },
               u"calls"_s, u"7"_s, u"Made and taken since Monday"_s, false };
}

void TestOwnerFigures::figure()
{
    QFETCH(FigureRow, row);
    const QList<OwnerFigure> figures = OwnerFigures::figures(row.snapshot);
    const auto at = std::find_if(
        figures.begin(), figures.end(), [&row](const OwnerFigure &figure) { return figure.key == row.key; });
    QVERIFY(at != figures.end());
    QCOMPARE(at->value, row.value);
    QCOMPARE(at->detail, row.detail);
    QCOMPARE(at->attention, row.attention);
}

void TestOwnerFigures::minutes_data()
{
    QTest::addColumn<qint64>("minutes");
    QTest::addColumn<QString>("text");
    QTest::addRow("none") << qint64(0) << QString();
    QTest::addRow("under an hour") << qint64(45) << u"45m"_s;
    QTest::addRow("whole hours") << qint64(120) << u"2h"_s;
    QTest::addRow("hours and minutes") << qint64(200) << u"3h 20m"_s;
}

void TestOwnerFigures::minutes()
{
    QFETCH(qint64, minutes);
    QFETCH(QString, text);
    QCOMPARE(OwnerFigures::minutes(minutes), text);
}

// A figure leads to a page the shell lists for the owner, so a misspelt
// screen or section cannot leave a dead tile.
void TestOwnerFigures::everyFigureOpensAPlaceTheOwnerHas()
{
    TarnAccess owner;
    owner.owner = owner.booksOwner = true;
    const QList<TarnShell::Place> places = TarnShell::places(TarnShell::navGroups(owner), owner);
    for (const OwnerFigure &figure : OwnerFigures::figures({})) {
        const std::optional<TarnScreen> screen = TarnScreens::fromRawValue(figure.screen);
        QVERIFY2(screen, qPrintable(figure.key));
        const TarnDestination destination { *screen,
            figure.section.isEmpty() ? std::nullopt : std::optional(figure.section) };
        const bool listed = std::any_of(places.begin(), places.end(),
            [&](const TarnShell::Place &place) { return place.destination.samePlace(destination); });
        QVERIFY2(listed, qPrintable(figure.key));
    }
}

QTEST_GUILESS_MAIN(TestOwnerFigures)
#include "tst_ownerfigures.moc"
