#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/calls/TarnCallCalls.h"
#include "support/FailureOf.h"

#include <QAudioDecoder>
#include <QDir>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString sam = u"sam@halvard.example"_s;

struct CellRow {
    QString column;
    QString value;
    qint64 versionOffset; // from the call's current version
    QString refusal; // empty: saved
};

} // namespace

Q_DECLARE_METATYPE(CellRow)
Q_DECLARE_METATYPE(TarnSalesCallStart)

// The call book's endpoints against the local workspace and its demo book.
class TestCallCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void demoBook();
    void leads();
    void cellEdits_data();
    void cellEdits();
    void staleEditAnswersWithTheCurrentCall();
    void placingRefusals_data();
    void placingRefusals();
    void recordingDecodes();
    void onlyPeopleWithCalls();

private:
    [[nodiscard]] TarnCall firstCall(const std::function<bool(const TarnCall &)> &which);

    InboxTestClient client;
};

void TestCallCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

TarnCall TestCallCalls::firstCall(const std::function<bool(const TarnCall &)> &which)
{
    const QList<TarnCall> book = tarnWaitFor(TarnCallCalls::calls(client.as(maren)));
    const auto at = std::find_if(book.begin(), book.end(), which);
    return at == book.end() ? TarnCall() : *at;
}

void TestCallCalls::demoBook()
{
    const QList<TarnCall> book = tarnWaitFor(TarnCallCalls::calls(client.as(maren)));
    QVERIFY(book.size() >= 50);
    QSet<QString> outcomes;
    int recorded = 0;
    for (qsizetype i = 0; i < book.size(); ++i) {
        const TarnCall &call = book.at(i);
        outcomes.insert(call.direction + u' ' + call.outcome);
        recorded += call.has_recording;
        QCOMPARE(call.status, u"ended"_s);
        QVERIFY(!call.has_recording || call.outcome == "answered"_L1);
        if (i > 0)
            QVERIFY(book.at(i - 1).started_at >= call.started_at);
    }
    for (const QString &kind : { u"in answered"_s, u"in missed"_s, u"in voicemail"_s, u"out no-answer"_s })
        QVERIFY2(outcomes.contains(kind), qPrintable(kind));
    QVERIFY(recorded >= 20);
}

void TestCallCalls::leads()
{
    const QList<TarnSalesLead> leads = tarnWaitFor(TarnCallCalls::salesLeads(client.as(maren)));
    QCOMPARE(leads.size(), 12);
    const auto called
        = std::find_if(leads.begin(), leads.end(), [](const TarnSalesLead &lead) { return lead.call_count > 0; });
    QVERIFY(called != leads.end());
    const TarnSalesLeadDetail detail = tarnWaitFor(TarnCallCalls::salesLead(client.as(maren), called->id));
    QCOMPARE(detail.lead, *called);
    QCOMPARE(detail.calls.size(), called->call_count);
    for (const TarnCall &call : detail.calls)
        QCOMPARE(call.client_id, called->id);
    QCOMPARE(failureOf(TarnCallCalls::salesLead(client.as(maren), u"c-brightwater"_s)), u"No such lead."_s);
}

void TestCallCalls::cellEdits_data()
{
    QTest::addColumn<CellRow>("row");
    QTest::addRow("outcome") << CellRow { u"outcome"_s, u"voicemail"_s, 0, {} };
    QTest::addRow("notes") << CellRow { u"notes"_s, u"Sent the quote, ring back Monday."_s, 0, {} };
    QTest::addRow("customer") << CellRow { u"client_id"_s, u"c-oakline"_s, 0, {} };
    QTest::addRow("no customer") << CellRow { u"client_id"_s, QString(), 0, {} };
    QTest::addRow("unknown outcome") << CellRow { u"outcome"_s, u"great"_s, 0,
        u"An outcome is one of: answered, missed, voicemail, no-answer, busy."_s };
    QTest::addRow("unknown customer") << CellRow { u"client_id"_s, u"c-nobody"_s, 0, u"No such customer."_s };
    QTest::addRow("too long notes") << CellRow { u"notes"_s, QString(2001, u'x'), 0,
        u"Notes are text of at most 2000 characters."_s };
    QTest::addRow("stale version") << CellRow { u"notes"_s, u"Mine"_s, -1,
        u"Maren Holt changed this call in the meantime; it now shows their change."_s };
}

void TestCallCalls::cellEdits()
{
    QFETCH(CellRow, row);
    const TarnCall before = firstCall([](const TarnCall &c) { return c.client_id == u"c-fernhill"_s; });
    QVERIFY(!before.id.isEmpty());
    if (row.versionOffset < 0) {
        // Someone else's edit first, so the version the row was read at is stale.
        (void)tarnWaitFor(TarnCallCalls::saveCallCell(
            client.as(maren), before.id, TarnCallCell { u"notes"_s, u"Theirs"_s, before.version }));
    }
    const TarnCallCell cell { row.column, row.value, before.version };
    if (!row.refusal.isEmpty()) {
        QCOMPARE(failureOf(TarnCallCalls::saveCallCell(client.as(maren), before.id, cell)), row.refusal);
        return;
    }
    const TarnCall after = tarnWaitFor(TarnCallCalls::saveCallCell(client.as(maren), before.id, cell));
    QCOMPARE(after.version, before.version + 1);
    if (row.column == "outcome"_L1)
        QCOMPARE(after.outcome, row.value);
    else if (row.column == "notes"_L1)
        QCOMPARE(after.notes, row.value);
    else
        QCOMPARE(after.client_id.value_or(QString()), row.value);
    // Put back, so every row starts from the planted call.
    const TarnCallCell back { row.column, row.column == "outcome"_L1 ? before.outcome : u"c-fernhill"_s,
        after.version };
    if (row.column != "notes"_L1)
        (void)tarnWaitFor(TarnCallCalls::saveCallCell(client.as(maren), before.id, back));
}

void TestCallCalls::staleEditAnswersWithTheCurrentCall()
{
    const TarnCall before = firstCall([](const TarnCall &c) { return c.client_id == u"c-marlow"_s; });
    QVERIFY(!before.id.isEmpty());
    const TarnCall theirs = tarnWaitFor(TarnCallCalls::saveCallCell(
        client.as(maren), before.id, TarnCallCell { u"outcome"_s, u"busy"_s, before.version }));

    // As another client would send it: the refusal carries the call as it now is.
    const QString token = client.workspace->signIn(u"tomas@halvard.example"_s);
    const TestWorkspace::Headers csrf { { "X-CSRF-Token",
        client.workspace->session(token).value("csrf"_L1).toString().toLatin1() } };
    const TestWorkspace::Answer answer = client.workspace->send("PATCH", u"api/calls/"_s + before.id, token,
        QJsonObject { { u"version"_s, before.version }, { u"notes"_s, u"Mine"_s } }, csrf);
    QCOMPARE(answer.status, 409);
    const QJsonObject current = answer.json().value("call"_L1).toObject();
    QCOMPARE(current.value("version"_L1).toInteger(), theirs.version);
    QCOMPARE(current.value("outcome"_L1).toString(), u"busy"_s);
    QCOMPARE(current.value("notes"_L1).toString(), before.notes);
    QVERIFY(answer.json().value("error"_L1).toString().startsWith(u"Maren Holt changed this call"_s));
}

void TestCallCalls::placingRefusals_data()
{
    QTest::addColumn<TarnSalesCallStart>("start");
    QTest::addColumn<QString>("refusal");
    QTest::addRow("short number") << TarnSalesCallStart { u"555 01"_s, {}, u"computer"_s }
                                  << u"That is not a number that can be called."_s;
    QTest::addRow("unknown mode") << TarnSalesCallStart { u"+1 555 0112"_s, {}, u"pigeon"_s }
                                  << u"A call's mode is \"phone-first\" or \"computer\"."_s;
    QTest::addRow("unknown customer") << TarnSalesCallStart { u"+1 555 0112"_s, u"c-nobody"_s, u"computer"_s }
                                      << u"No such customer."_s;
}

void TestCallCalls::placingRefusals()
{
    QFETCH(TarnSalesCallStart, start);
    QFETCH(QString, refusal);
    QCOMPARE(failureOf(TarnCallCalls::startSalesCall(client.as(maren), start)), refusal);
}

void TestCallCalls::recordingDecodes()
{
    const TarnCall recorded = firstCall([](const TarnCall &c) { return c.has_recording; });
    QVERIFY(!recorded.id.isEmpty());
    const QByteArray bytes = tarnWaitFor(TarnCallCalls::callRecording(client.as(maren), recorded.id));
    QVERIFY(bytes.startsWith("RIFF"));

    QTemporaryFile file(QDir::tempPath() + u"/tst_callcalls-XXXXXX.wav"_s);
    QVERIFY(file.open());
    file.write(bytes);
    file.flush();
    QAudioDecoder decoder;
    decoder.setSource(QUrl::fromLocalFile(file.fileName()));
    QSignalSpy finished(&decoder, &QAudioDecoder::finished);
    qint64 decodedUs = 0;
    int sampleRate = 0;
    connect(&decoder, &QAudioDecoder::bufferReady, this, [&] {
        const QAudioBuffer buffer = decoder.read();
        decodedUs += buffer.duration();
        sampleRate = buffer.format().sampleRate();
    });
    decoder.start();
    QVERIFY2(finished.wait(10'000), qPrintable(decoder.errorString()));
    QCOMPARE(sampleRate, 8000);
    const qint64 expectedUs = std::clamp<qint64>(recorded.duration, 2, 6) * 1'000'000;
    QVERIFY2(std::abs(decodedUs - expectedUs) < 50'000, qPrintable(QString::number(decodedUs)));

    // A call that is still ringing has nothing to play yet.
    const TarnCall placed = tarnWaitFor(
        TarnCallCalls::startSalesCall(client.as(maren), TarnSalesCallStart { u"+1 555 0112"_s, {}, u"computer"_s }));
    QCOMPARE(placed.status, u"ringing"_s);
    QCOMPARE(placed.client_name, u"Oakline Studio"_s);
    QCOMPARE(failureOf(TarnCallCalls::callRecording(client.as(maren), placed.id)), u"The call is still going on."_s);
}

void TestCallCalls::onlyPeopleWithCalls()
{
    QCOMPARE(failureOf(TarnCallCalls::calls(client.as(sam))), u"Calls are not open to you."_s);
    QCOMPARE(failureOf(TarnCallCalls::salesLeads(client.as(sam))), u"Sales is not open to you."_s);
}

QTEST_GUILESS_MAIN(TestCallCalls)
#include "tst_callcalls.moc"
