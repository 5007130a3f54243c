#include "assistant/TarnAgentWelcome.h"
#include "assistant/TarnPiloChat.h"

#include <QTest>

using namespace Qt::StringLiterals;

struct GreetingRow {
    QString name;
    int hour;
    QString greeting;
};
Q_DECLARE_METATYPE(GreetingRow)

struct NoiseRow {
    QString content;
    std::optional<QString> origin;
    bool noise;
};
Q_DECLARE_METATYPE(NoiseRow)

struct CutoffRow {
    std::optional<QString> page;
    bool showHistory;
    // Days before today's start; nothing when nothing is folded.
    std::optional<int> foldedBeforeDays;
};
Q_DECLARE_METATYPE(CutoffRow)

class TestPiloRules : public QObject {
    Q_OBJECT

private slots:
    void greeting_data();
    void greeting();
    void noise_data();
    void noise();
    void cutoff_data();
    void cutoff();
};

void TestPiloRules::greeting_data()
{
    QTest::addColumn<GreetingRow>("row");
    const GreetingRow rows[] = {
        { u"Ada Lindqvist"_s, 11, u"Good morning, Ada"_s },
        { u"Ada Lindqvist"_s, 12, u"Good afternoon, Ada"_s },
        { u"Ada Lindqvist"_s, 16, u"Good afternoon, Ada"_s },
        { u"Ada Lindqvist"_s, 17, u"Good evening, Ada"_s },
        { u"A B"_s, 9, u"Good morning, AB"_s },
        { u"J Smith"_s, 10, u"Good morning, J"_s },
        { u"  Ada   Lindqvist "_s, 23, u"Good evening, Ada"_s },
        { u""_s, 20, u"Good evening"_s },
    };
    for (const GreetingRow &row : rows)
        QTest::addRow("%s at %d", qPrintable(row.name), row.hour) << row;
}

void TestPiloRules::greeting()
{
    QFETCH(GreetingRow, row);
    QCOMPARE(TarnAgentWelcome::greeting(row.name, row.hour), row.greeting);
}

void TestPiloRules::noise_data()
{
    QTest::addColumn<NoiseRow>("row");
    const std::optional<QString> pilo = u"pilo"_s;
    const NoiseRow rows[] = {
        { u"tarn bridge check"_s, std::nullopt, true },
        { u"Tarn Bridge CHECK 2026-11-24"_s, std::nullopt, true },
        { u"please run the tarn bridge check"_s, std::nullopt, false },
        { u" PING "_s, std::nullopt, true },
        { u"ping the team about lunch"_s, std::nullopt, false },
        { u"Daily digest for Monday"_s, pilo, true },
        { u"Send me a daily digest"_s, std::nullopt, false },
        { u"Who is on the team?"_s, pilo, false },
    };
    for (const NoiseRow &row : rows)
        QTest::addRow("%s from %s", qPrintable(row.content), qPrintable(row.origin.value_or(u"-"_s))) << row;
}

void TestPiloRules::noise()
{
    QFETCH(NoiseRow, row);
    const TarnAgentRequest request { .id = u"r"_s,
        .content = row.content,
        .status = u"done"_s,
        .created_at = u"2026-11-24T10:00:00Z"_s,
        .origin = row.origin };
    QCOMPARE(TarnPiloChat::isNoise(request), row.noise);
}

void TestPiloRules::cutoff_data()
{
    QTest::addColumn<CutoffRow>("row");
    QTest::addRow("agent screen keeps a month") << CutoffRow { std::nullopt, false, 30 };
    QTest::addRow("empty page is the agent's") << CutoffRow { u""_s, false, 30 };
    QTest::addRow("a page keeps a week") << CutoffRow { u"chat"_s, false, 7 };
    QTest::addRow("history on folds nothing") << CutoffRow { u"chat"_s, true, std::nullopt };
}

void TestPiloRules::cutoff()
{
    QFETCH(CutoffRow, row);
    const QDateTime now(QDate(2026, 3, 2), QTime(15, 40));
    const TarnAgentRequest request { .id = u"r"_s,
        .content = u"Who is on the team?"_s,
        .status = u"done"_s,
        .created_at = u"2026-03-02T10:00:00Z"_s,
        .page = row.page };
    const std::optional<QDateTime> cutoff = TarnPiloChat::cutoff(TarnPiloChat::groupKey(request), row.showHistory, now);
    QCOMPARE(cutoff.has_value(), row.foldedBeforeDays.has_value());
    if (cutoff)
        QCOMPARE(*cutoff, QDateTime(now.date().addDays(-*row.foldedBeforeDays), QTime(0, 0)));
}

QTEST_GUILESS_MAIN(TestPiloRules)
#include "tst_pilorules.moc"
