#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/documents/TarnDocumentCalls.h"
#include "support/FailureOf.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString jonah = u"jonah@halvard.example"_s;

const TarnEnvelopeRecipient customer { u"Nia Harbor"_s, u"nia@harbor.example"_s };
const TarnEnvelopeRecipient owner { u"Maren Holt"_s, u"maren@halvard.example"_s };

QStringList statuses(const TarnEnvelope &envelope)
{
    QStringList out;
    for (const TarnEnvelopeSigner &s : envelope.signers)
        out.append(s.status);
    return out;
}

} // namespace

Q_DECLARE_METATYPE(TarnEnvelopeDraft)

// The documents' and envelopes' endpoints against the local workspace and its
// demo documents.
class TestDocumentCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void documentsByKind_data();
    void documentsByKind();
    void demoEnvelopeIsHalfSigned();
    void draftRefusals_data();
    void draftRefusals();
    void sendingTwiceSendsOnce();
    void signersSignInOrder();
    void onlyPeopleWithDocs();

private:
    InboxTestClient client;
    QString sentEnvelope;
};

void TestDocumentCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

void TestDocumentCalls::documentsByKind_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addRow("worksheets") << u"worksheet"_s;
    QTest::addRow("agreements") << u"agreement"_s;
    QTest::addRow("proposals") << u"proposal"_s;
    QTest::addRow("every kind") << QString();
}

void TestDocumentCalls::documentsByKind()
{
    QFETCH(QString, kind);
    const QList<TarnDocument> documents = tarnWaitFor(TarnDocumentCalls::legacyDocuments(client.as(maren), kind));
    QVERIFY(documents.size() >= 3);
    QSet<QString> kinds;
    for (qsizetype i = 0; i < documents.size(); ++i) {
        kinds.insert(documents.at(i).kind);
        if (i > 0)
            QVERIFY(documents.at(i - 1).updated_at >= documents.at(i).updated_at);
    }
    QCOMPARE(kinds.size(), kind.isEmpty() ? 3 : 1);
    QVERIFY(kind.isEmpty() || kinds.contains(kind));
}

void TestDocumentCalls::demoEnvelopeIsHalfSigned()
{
    const QList<TarnDocument> agreements
        = tarnWaitFor(TarnDocumentCalls::legacyDocuments(client.as(maren), u"agreement"_s));
    const auto oakline = std::find_if(
        agreements.begin(), agreements.end(), [](const TarnDocument &d) { return d.id == "doc-ag-oakline"_L1; });
    QVERIFY(oakline != agreements.end() && oakline->envelope_id);
    QCOMPARE(oakline->envelope_status, u"sent"_s);
    const TarnEnvelope envelope = tarnWaitFor(TarnDocumentCalls::envelope(client.as(maren), *oakline->envelope_id));
    QCOMPARE(statuses(envelope), (QStringList { u"signed"_s, u"sent"_s, u"waiting"_s }));
    QVERIFY(envelope.signers.first().signed_at && !envelope.signers.at(1).signed_at);
}

void TestDocumentCalls::draftRefusals_data()
{
    QTest::addColumn<TarnEnvelopeDraft>("draft");
    QTest::addColumn<QString>("refusal");
    QTest::addRow("no such document") << TarnEnvelopeDraft { u"doc-none"_s, {}, { customer } }
                                      << u"No such document."_s;
    QTest::addRow("a worksheet") << TarnEnvelopeDraft { u"doc-ws-scope"_s, {}, { customer } }
                                 << u"A worksheet is a template; make an agreement or proposal from it first."_s;
    QTest::addRow("nobody to sign") << TarnEnvelopeDraft { u"doc-pr-quill"_s, {}, {} }
                                    << u"An envelope goes to between 1 and 10 signers."_s;
    QTest::addRow("no address") << TarnEnvelopeDraft { u"doc-pr-quill"_s, {}, { { u"Nia"_s, u"nia@"_s } } }
                                << u"Every signer needs a name and an email address."_s;
    QTest::addRow("same signer twice") << TarnEnvelopeDraft { u"doc-pr-quill"_s, {},
        { owner, { u"M. Holt"_s, u"MAREN@halvard.example"_s } } }
                                       << u"maren@halvard.example is on the envelope twice."_s;
    QTest::addRow("already out for signature") << TarnEnvelopeDraft { u"doc-ag-oakline"_s, {}, { customer } }
                                               << u"This document already has an envelope that is not finished."_s;
    QTest::addRow("a draft waits to be sent") << TarnEnvelopeDraft { u"doc-ag-fernhill"_s, {}, { customer } }
                                              << u"This document already has an envelope that is not finished."_s;
}

void TestDocumentCalls::draftRefusals()
{
    QFETCH(TarnEnvelopeDraft, draft);
    QFETCH(QString, refusal);
    QCOMPARE(failureOf(TarnDocumentCalls::googleSignatureDoc(client.as(maren), draft)), refusal);
}

void TestDocumentCalls::sendingTwiceSendsOnce()
{
    const TarnEnvelopeDraft draft { u"doc-pr-harbor"_s, u"For your signature."_s, { customer, owner } };
    const TarnEnvelope made = tarnWaitFor(TarnDocumentCalls::googleSignatureDoc(client.as(maren), draft));
    QCOMPARE(made.status, u"draft"_s);
    QCOMPARE(statuses(made), (QStringList { u"waiting"_s, u"waiting"_s }));

    const TarnEnvelope first = tarnWaitFor(TarnDocumentCalls::sendEnvelope(client.as(maren), made.id));
    const TarnEnvelope again = tarnWaitFor(TarnDocumentCalls::sendEnvelope(client.as(maren), made.id));
    QCOMPARE(first.status, u"sent"_s);
    QVERIFY(first.sent_at);
    QCOMPARE(again.sent_at, first.sent_at);
    QCOMPARE(statuses(first), (QStringList { u"sent"_s, u"waiting"_s }));
    sentEnvelope = made.id;
}

void TestDocumentCalls::signersSignInOrder()
{
    QVERIFY(!sentEnvelope.isEmpty());
    TarnEnvelope latest;
    QStringList seen;
    QVERIFY(QTest::qWaitFor(
        [&] {
            latest = tarnWaitFor(TarnDocumentCalls::envelope(client.as(maren), sentEnvelope));
            const QString step = statuses(latest).join(u' ');
            if (seen.isEmpty() || seen.last() != step)
                seen.append(step);
            return latest.status == "completed"_L1;
        },
        15'000));
    // Never the second before the first.
    QCOMPARE(seen, (QStringList { u"sent waiting"_s, u"signed sent"_s, u"signed signed"_s }));
    QVERIFY(latest.signers.at(0).signed_at < latest.signers.at(1).signed_at);
    QCOMPARE(latest.completed_at, latest.signers.at(1).signed_at);

    const QList<TarnDocument> proposals
        = tarnWaitFor(TarnDocumentCalls::legacyDocuments(client.as(maren), u"proposal"_s));
    const auto harbor = std::find_if(
        proposals.begin(), proposals.end(), [](const TarnDocument &d) { return d.id == "doc-pr-harbor"_L1; });
    QVERIFY(harbor != proposals.end());
    QCOMPARE(harbor->status, u"signed"_s);
    QCOMPARE(harbor->envelope_status, u"completed"_s);
}

void TestDocumentCalls::onlyPeopleWithDocs()
{
    QCOMPARE(failureOf(TarnDocumentCalls::legacyDocuments(client.as(jonah), {})), u"Documents are not open to you."_s);
    QCOMPARE(failureOf(TarnDocumentCalls::sendEnvelope(client.as(jonah), u"env-any"_s)),
        u"Documents are not open to you."_s);
}

QTEST_GUILESS_MAIN(TestDocumentCalls)
#include "tst_documentcalls.moc"
