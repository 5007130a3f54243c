#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/calls/CallBookRules.h"
#include "screens/calls/NativeCallsView.h"
#include "screens/calls/TarnCallCalls.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

QStringList column(const NativeCallModel &model, const char *role)
{
    const int r = model.roleNames().key(role);
    QStringList out;
    for (int i = 0; i < model.rowCount(); ++i)
        out.append(model.data(model.index(i), r).toString());
    return out;
}

struct AppsRow {
    QString email;
    bool book;
    bool leads;
};

struct FilterRow {
    QString filter;
    QString search;
    std::function<bool(const TarnCall &)> expected;
};

} // namespace

Q_DECLARE_METATYPE(FilterRow)
Q_DECLARE_METATYPE(AppsRow)

// The calls screen's state over a real workspace: the filtered book, two
// people editing one call, the remembered mode, a placed call followed to
// its end and its recording played.
class TestCallsView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void filters_data();
    void filters();
    void concurrentEditShowsTheServiceState();
    void modeIsRemembered();
    void leadsNarrowedInPlace();
    void eachAppReadsItsOwnHalf_data();
    void eachAppReadsItsOwnHalf();
    void dialledCallEndsWithARecording();

private:
    [[nodiscard]] std::unique_ptr<NativeCallsView> loaded(const QString &email);

    InboxTestClient client;
    QTemporaryDir folder;
    QSettings settings { folder.filePath(u"calls.ini"_s), QSettings::IniFormat };
};

void TestCallsView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativeCallsView> TestCallsView::loaded(const QString &email)
{
    auto view = std::make_unique<NativeCallsView>(client.as(email), settings);
    QSignalSpy refreshed(view.get(), &NativeCallsView::refreshed);
    view->appear();
    if (!refreshed.wait(10'000))
        return {};
    return view;
}

void TestCallsView::filters_data()
{
    QTest::addColumn<FilterRow>("row");
    QTest::addRow("in") << FilterRow { u"in"_s, {}, [](const TarnCall &c) { return c.direction == "in"_L1; } };
    QTest::addRow("missed") << FilterRow { u"missed"_s, {}, [](const TarnCall &c) {
                                              return c.direction == "in"_L1
                                                  && (c.outcome == "missed"_L1 || c.outcome == "voicemail"_L1);
                                          } };
    QTest::addRow("searched") << FilterRow { u"all"_s, u"brightwater"_s,
        [](const TarnCall &c) { return c.client_name == u"Brightwater Dental"_s; } };
    QTest::addRow("out and searched") << FilterRow { u"out"_s, u"tomas"_s,
        [](const TarnCall &c) { return c.direction == "out"_L1 && c.person_name == u"Tomas Reyes"_s; } };
}

void TestCallsView::filters()
{
    QFETCH(FilterRow, row);
    const std::unique_ptr<NativeCallsView> view = loaded(maren);
    QVERIFY(view);
    const QList<TarnCall> book = view->calls()->rows();
    QCOMPARE(book.size(), view->totalCalls());
    QSignalSpy resets(view->calls(), &QAbstractItemModel::modelReset);
    view->setFilter(row.filter);
    view->setSearch(row.search);
    QStringList expected;
    for (const TarnCall &call : book)
        if (row.expected(call))
            expected.append(call.id);
    QVERIFY(!expected.isEmpty());
    QCOMPARE(column(*view->calls(), "callId"), expected);
    QCOMPARE(resets.count(), 0);
    for (const TarnCall &call : view->recordings()->rows())
        QVERIFY(call.has_recording && CallBookRules::matchesSearch(call, row.search));
}

void TestCallsView::concurrentEditShowsTheServiceState()
{
    const std::unique_ptr<NativeCallsView> mine = loaded(maren);
    const std::unique_ptr<NativeCallsView> theirs = loaded(tomas);
    QVERIFY(mine && theirs);
    const QString id = mine->calls()->rows().constFirst().id;

    QSignalSpy mineDone(mine.get(), &NativeCallsView::actionFinished);
    mine->saveCell(id, u"notes"_s, u"Booked the visit for Tuesday."_s);
    QVERIFY(mineDone.wait());
    QCOMPARE(mine->errorText(), QString());

    // Tomas still sees the version before Maren's edit.
    QSignalSpy theirsDone(theirs.get(), &NativeCallsView::actionFinished);
    theirs->saveCell(id, u"outcome"_s, u"voicemail"_s);
    QVERIFY(theirsDone.wait());
    QCOMPARE(theirs->errorText(), u"Maren Holt changed this call in the meantime; it now shows their change."_s);
    const TarnCall *shown = theirs->calls()->find(id);
    QVERIFY(shown);
    QCOMPARE(shown->notes, u"Booked the visit for Tuesday."_s);
    QCOMPARE(shown->outcome, u"answered"_s);

    // On the version now shown, the same edit goes through.
    theirs->saveCell(id, u"outcome"_s, u"voicemail"_s);
    QVERIFY(theirsDone.wait());
    QCOMPARE(theirs->errorText(), QString());
    QCOMPARE(theirs->calls()->find(id)->outcome, u"voicemail"_s);
}

void TestCallsView::modeIsRemembered()
{
    {
        NativeCallsView view(client.as(maren), settings);
        QCOMPARE(view.mode(), u"phone-first"_s);
        view.setMode(u"computer"_s);
        view.setMode(u"carrier-pigeon"_s);
        QCOMPARE(view.mode(), u"computer"_s);
    }
    NativeCallsView again(client.as(maren), settings);
    QCOMPARE(again.mode(), u"computer"_s);
    QCOMPARE(settings.value(NativeCallsView::modeKey).toString(), u"computer"_s);
}

void TestCallsView::leadsNarrowedInPlace()
{
    const std::unique_ptr<NativeCallsView> view = loaded(maren);
    QVERIFY(view);
    const QList<TarnSalesLead> all = view->leads()->rows();
    QVERIFY(all.size() > 2);
    const QVariantList statuses = view->leadStatuses();
    QCOMPARE(statuses.constFirst().toMap().value(u"count"_s).toInt(), all.size());
    int counted = 0;
    for (qsizetype i = 1; i < statuses.size(); ++i)
        counted += statuses.at(i).toMap().value(u"count"_s).toInt();
    QCOMPARE(counted, all.size());

    QSignalSpy resets(view->leads(), &QAbstractItemModel::modelReset);
    const QVariantMap status = statuses.at(1).toMap();
    view->setLeadStatus(status.value(u"key"_s).toString());
    QCOMPARE(view->leads()->rowCount(), status.value(u"count"_s).toInt());
    for (const TarnSalesLead &lead : view->leads()->rows())
        QCOMPARE(lead.status, status.value(u"key"_s).toString());

    const TarnSalesLead first = view->leads()->rows().constFirst();
    view->setLeadSearch(first.name.section(u' ', 0, 0));
    QVERIFY(std::any_of(view->leads()->rows().begin(), view->leads()->rows().end(),
        [&first](const TarnSalesLead &lead) { return lead.id == first.id; }));
    for (const TarnSalesLead &lead : view->leads()->rows())
        QVERIFY(CallBookRules::leadMatchesSearch(lead, view->leadSearch()));
    QVERIFY(view->leadSummary().startsWith(QString::number(view->leads()->rowCount()) + u" lead"_s));

    view->setLeadStatus({});
    view->setLeadSearch({});
    QCOMPARE(view->leads()->rows(), all);
    QCOMPARE(resets.count(), 0);
}

void TestCallsView::eachAppReadsItsOwnHalf_data()
{
    QTest::addColumn<AppsRow>("row");
    QTest::addRow("calls and sales") << AppsRow { tomas, true, true };
    // Jonah places calls but has no leads; Ada works leads but places no calls.
    QTest::addRow("calls only") << AppsRow { u"jonah@halvard.example"_s, true, false };
    QTest::addRow("sales only") << AppsRow { u"ada@halvard.example"_s, false, true };
}

void TestCallsView::eachAppReadsItsOwnHalf()
{
    QFETCH(AppsRow, row);
    const std::unique_ptr<NativeCallsView> view = loaded(row.email);
    QVERIFY(view);
    QCOMPARE(view->errorText(), QString());
    QCOMPARE(view->mayCall(), row.book);
    QCOMPARE(view->calls()->rowCount() > 0, row.book);
    QCOMPARE(view->leads()->rowCount() > 0, row.leads);
}

void TestCallsView::dialledCallEndsWithARecording()
{
    const std::unique_ptr<NativeCallsView> view = loaded(tomas);
    QVERIFY(view);
    view->setDialText(u"555-01"_s);
    QVERIFY(!view->canDial());
    QVERIFY(!view->numberHint().isEmpty());
    view->dial();
    QCOMPARE(view->placedStatus(), QString());

    const TarnSalesLead lead = view->leads()->rows().constFirst();
    QSignalSpy placed(view.get(), &NativeCallsView::placedChanged);
    QStringList seen;
    connect(view.get(), &NativeCallsView::placedChanged, this, [&] {
        if (seen.isEmpty() || seen.constLast() != view->placedStatus())
            seen.append(view->placedStatus());
    });
    view->dialLead(lead.id);
    QVERIFY(!view->canDial());
    QVERIFY(QTest::qWaitFor([&] { return view->placedStatus() == "ended"_L1; }, 15'000));
    QCOMPARE(seen, QStringList({ u"placing"_s, u"ringing"_s, u"in-call"_s, u"ended"_s }));
    QVERIFY(view->placedLabel().startsWith(u"Call with "_s + lead.name + u" ended"_s));
    QVERIFY(view->canDial());

    const TarnCall call = view->calls()->rows().constFirst();
    QCOMPARE(call.client_id, lead.id);
    QCOMPARE(call.direction, u"out"_s);
    QVERIFY(view->recordings()->find(call.id));

    NativeCallPlayer *player = view->player();
    QSignalSpy ready(player, &NativeCallPlayer::stateChanged);
    view->playRecording(call.id);
    QVERIFY2(QTest::qWaitFor([&] { return player->ready() && player->duration() > 0; }, 10'000),
        qPrintable(player->errorText() + view->errorText()));
    QCOMPARE(player->callId(), call.id);
    QVERIFY2(std::abs(player->duration() - 4000) < 100, qPrintable(QString::number(player->duration())));
    QCOMPARE(player->durationLabel(), u"0:04"_s);
    player->seek(60'000);
    QCOMPARE(player->position(), player->duration());
    player->seek(-5);
    QCOMPARE(player->position(), 0);
    player->setSpeed(1.7);
    QCOMPARE(player->speed(), 1.5);
    player->setSpeed(9);
    QCOMPARE(player->speed(), 2.0);
}

QTEST_GUILESS_MAIN(TestCallsView)
#include "tst_callsview.moc"
