#include "SigningForm.h"
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

// The order of the one signer with a link, 0 when nobody has one.
qint64 linkHolder(const TarnEnvelope &envelope)
{
    qint64 holder = 0;
    for (const TarnEnvelopeSigner &s : envelope.signers)
        if (s.sign_url)
            holder = holder == 0 ? s.order : -1;
    return holder;
}

struct DemoRow {
    QString document;
    QString status;
    QStringList signers;
    qint64 linkHolder;
};

struct RefusalRow {
    SigningForm::Fields fields;
    QString refusal;
    QString kept;
};

} // namespace

Q_DECLARE_METATYPE(TarnEnvelopeDraft)
Q_DECLARE_METATYPE(DemoRow)
Q_DECLARE_METATYPE(RefusalRow)

// The documents' and envelopes' endpoints against the local workspace and its
// demo documents.
class TestDocumentCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void documentsByKind_data();
    void documentsByKind();
    void demoEnvelopes_data();
    void demoEnvelopes();
    void draftRefusals_data();
    void draftRefusals();
    void sendingTwiceSendsOnce();
    void signersSignInOrderOnThePage();
    void pageRefusesAndKeepsWhatWasTyped_data();
    void pageRefusesAndKeepsWhatWasTyped();
    void linksThatCannotBeUsed();
    void onlyPeopleWithDocs();

private:
    [[nodiscard]] TarnEnvelope envelopeOf(const QString &document)
    {
        const QList<TarnDocument> all = tarnWaitFor(TarnDocumentCalls::legacyDocuments(client.as(maren), {}));
        const auto found
            = std::find_if(all.begin(), all.end(), [&document](const TarnDocument &d) { return d.id == document; });
        return found == all.end() || !found->envelope_id
            ? TarnEnvelope()
            : tarnWaitFor(TarnDocumentCalls::envelope(client.as(maren), *found->envelope_id));
    }
    [[nodiscard]] TarnEnvelope sentTo(const QString &document, const QList<TarnEnvelopeRecipient> &recipients)
    {
        const TarnEnvelopeDraft draft { document, {}, recipients };
        const TarnEnvelope made = tarnWaitFor(TarnDocumentCalls::googleSignatureDoc(client.as(maren), draft));
        return tarnWaitFor(TarnDocumentCalls::sendEnvelope(client.as(maren), made.id));
    }

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

void TestDocumentCalls::demoEnvelopes_data()
{
    QTest::addColumn<DemoRow>("row");
    QTest::addRow("completed") << DemoRow { u"doc-ag-brightwater"_s, u"completed"_s, { u"signed"_s, u"signed"_s }, 0 };
    QTest::addRow("second signer's turn")
        << DemoRow { u"doc-ag-oakline"_s, u"sent"_s, { u"signed"_s, u"sent"_s, u"waiting"_s }, 2 };
    QTest::addRow("declined") << DemoRow { u"doc-pr-harbor"_s, u"declined"_s, { u"declined"_s, u"cancelled"_s }, 0 };
    QTest::addRow("draft") << DemoRow { u"doc-ag-fernhill"_s, u"draft"_s, { u"waiting"_s, u"waiting"_s }, 0 };
}

void TestDocumentCalls::demoEnvelopes()
{
    QFETCH(DemoRow, row);
    const TarnEnvelope envelope = envelopeOf(row.document);
    QCOMPARE(envelope.status, row.status);
    QCOMPARE(statuses(envelope), row.signers);
    QCOMPARE(linkHolder(envelope), row.linkHolder);
    if (row.linkHolder > 0)
        QCOMPARE(QUrl(*envelope.signers.at(row.linkHolder - 1).sign_url).host(), client.workspace->url().host());
    QCOMPARE(envelope.completed_at.has_value(), row.status == "completed"_L1);
    QCOMPARE(envelope.signers.first().decline_reason.has_value(), row.status == "declined"_L1);
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
    QCOMPARE(linkHolder(again), 1);
    QCOMPARE(again.signers.first().sign_url, first.signers.first().sign_url);
    sentEnvelope = made.id;
}

void TestDocumentCalls::signersSignInOrderOnThePage()
{
    QVERIFY(!sentEnvelope.isEmpty());
    TestWorkspace &workspace = *client.workspace;
    const TarnEnvelope out = tarnWaitFor(TarnDocumentCalls::envelope(client.as(maren), sentEnvelope));
    const QString first = *out.signers.at(0).sign_url;
    const TestWorkspace::Answer page = SigningForm::open(workspace, first);
    QCOMPARE(page.status, 200);
    for (const char *shown : { "Harbor front desk inbox", "Nia Harbor", "Maren Holt", "Prepared for Harbor",
             "I agree to sign this document electronically", "/pdf\">Download the PDF" })
        QVERIFY2(page.body.contains(shown), shown);
    QVERIFY(workspace.send("GET", QUrl(first).path() + u"/pdf"_s).body.startsWith("%PDF-"));

    // Case and spaces aside, the name is the signer's.
    QVERIFY(SigningForm::sign(workspace, first, u"  nia   HARBOR "_s).body.contains("You signed"));
    const TarnEnvelope half = tarnWaitFor(TarnDocumentCalls::envelope(client.as(maren), sentEnvelope));
    QCOMPARE(statuses(half), (QStringList { u"signed"_s, u"sent"_s }));
    QCOMPARE(half.signers.at(0).answered_from, u"127.0.0.1"_s);
    QCOMPARE(linkHolder(half), 2);
    QCOMPARE(SigningForm::sign(workspace, first, u"Nia Harbor"_s).status, 410);

    QCOMPARE(SigningForm::sign(workspace, *half.signers.at(1).sign_url, u"Maren Holt"_s).status, 200);
    const TarnEnvelope done = tarnWaitFor(TarnDocumentCalls::envelope(client.as(maren), sentEnvelope));
    QCOMPARE(done.status, u"completed"_s);
    QVERIFY(done.signers.at(0).signed_at < done.signers.at(1).signed_at);
    QCOMPARE(done.completed_at, done.signers.at(1).signed_at);
    QCOMPARE(linkHolder(done), 0);
    QCOMPARE(envelopeOf(u"doc-pr-harbor"_s).id, done.id);
}

void TestDocumentCalls::pageRefusesAndKeepsWhatWasTyped_data()
{
    QTest::addColumn<RefusalRow>("row");
    const auto signAs = [](const QString &name) {
        return SigningForm::Fields { { u"name"_s, name }, { u"agree"_s, u"yes"_s }, { u"action"_s, u"sign"_s } };
    };
    QTest::addRow("someone else's name") << RefusalRow { signAs(u"Maren Holt"_s), u"is not the name"_s,
        u"value=\"Maren Holt\""_s };
    QTest::addRow("markup typed as a name") << RefusalRow { signAs(u"<b>Wren</b> & \"Quill\""_s), u"is not the name"_s,
        u"value=\"&lt;b&gt;Wren&lt;/b&gt; &amp; &quot;Quill&quot;\""_s };
    QTest::addRow("not agreed") << RefusalRow { { { u"name"_s, u"Wren Quill"_s }, { u"action"_s, u"sign"_s } },
        u"to sign."_s, u"value=\"Wren Quill\""_s };
    QTest::addRow("a decline without reason")
        << RefusalRow { { { u"reason"_s, u"  "_s }, { u"agree"_s, u"yes"_s }, { u"action"_s, u"decline"_s } },
               u"Say why you decline"_s, u"value=\"yes\" checked"_s };
}

void TestDocumentCalls::pageRefusesAndKeepsWhatWasTyped()
{
    QFETCH(RefusalRow, row);
    TarnEnvelope envelope = envelopeOf(u"doc-pr-quill"_s);
    if (envelope.id.isEmpty())
        envelope = sentTo(u"doc-pr-quill"_s, { { u"Wren Quill"_s, u"wren@quill.example"_s }, owner });
    const TestWorkspace::Answer page
        = SigningForm::post(*client.workspace, *envelope.signers.at(0).sign_url, row.fields);
    QCOMPARE(page.status, 422);
    QVERIFY2(page.body.contains(row.refusal.toUtf8()), page.body.constData());
    QVERIFY2(page.body.contains(row.kept.toUtf8()), page.body.constData());
    QVERIFY(!page.body.contains("<b>Wren"));
    QCOMPARE(statuses(envelopeOf(u"doc-pr-quill"_s)), (QStringList { u"sent"_s, u"waiting"_s }));
}

// An expired, superseded, spent or made-up link shows a plain page and
// nothing of the envelope; a decline ends the envelope with its reason.
void TestDocumentCalls::linksThatCannotBeUsed()
{
    TestWorkspace &workspace = *client.workspace;
    const TarnEnvelope envelope = envelopeOf(u"doc-pr-quill"_s);
    const QString first = *envelope.signers.at(0).sign_url;
    const auto refused = [&workspace](const QString &url, int status, const char *says) {
        const TestWorkspace::Answer page = SigningForm::open(workspace, url);
        return page.status == status && page.body.contains(says) && !page.body.contains("Quill");
    };
    QCOMPARE(workspace.send("POST", u"/api/test/envelopes/%1/expire-link"_s.arg(envelope.id)).status, 200);
    QVERIFY(refused(first, 410, "This signing link has expired."));
    const TarnEnvelope expired = tarnWaitFor(TarnDocumentCalls::envelope(client.as(maren), envelope.id));
    QCOMPARE(statuses(expired), (QStringList { u"expired"_s, u"waiting"_s }));
    QCOMPARE(linkHolder(expired), 0);

    const TarnEnvelope renewed = tarnWaitFor(TarnDocumentCalls::sendEnvelope(client.as(maren), envelope.id));
    const QString second = *renewed.signers.at(0).sign_url;
    QVERIFY(second != first);
    QVERIFY(refused(first, 410, "replaced by a newer one"));
    QVERIFY(refused(QUrl(first).resolved(QUrl(u"/sign/made-up"_s)).toString(), 404, "not valid"));

    const TestWorkspace::Answer declined = SigningForm::post(
        workspace, second, { { u"reason"_s, u"Not <this> year."_s }, { u"action"_s, u"decline"_s } });
    QVERIFY2(declined.body.contains("You declined"), declined.body.constData());
    QVERIFY(refused(second, 410, "already been used"));
    const TarnEnvelope ended = tarnWaitFor(TarnDocumentCalls::envelope(client.as(maren), envelope.id));
    QCOMPARE(ended.status, u"declined"_s);
    QCOMPARE(ended.signers.at(0).decline_reason, u"Not <this> year."_s);
    QCOMPARE(statuses(ended), (QStringList { u"declined"_s, u"cancelled"_s }));
}

void TestDocumentCalls::onlyPeopleWithDocs()
{
    QCOMPARE(failureOf(TarnDocumentCalls::legacyDocuments(client.as(jonah), {})), u"Documents are not open to you."_s);
    QCOMPARE(failureOf(TarnDocumentCalls::sendEnvelope(client.as(jonah), u"env-any"_s)),
        u"Documents are not open to you."_s);
}

QTEST_GUILESS_MAIN(TestDocumentCalls)
#include "tst_documentcalls.moc"
