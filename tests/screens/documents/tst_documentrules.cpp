#include "screens/documents/DocumentRules.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct RecipientsRow {
    QList<TarnEnvelopeRecipient> recipients;
    QString problem;
};

struct StatusRow {
    QString status;
    std::optional<QString> envelope;
    QString label;
};

struct ProgressRow {
    QString status;
    QStringList signers;
    QString label;
};

const TarnEnvelopeRecipient ines { u"Ines Calder"_s, u"ines@brightwater.example"_s };

} // namespace

Q_DECLARE_METATYPE(RecipientsRow)
Q_DECLARE_METATYPE(StatusRow)
Q_DECLARE_METATYPE(ProgressRow)

class TestDocumentRules : public QObject {
    Q_OBJECT

private slots:
    void recipients_data();
    void recipients();
    void statusLabels_data();
    void statusLabels();
    void progress_data();
    void progress();
};

void TestDocumentRules::recipients_data()
{
    QTest::addColumn<RecipientsRow>("row");
    QTest::addRow("one signer") << RecipientsRow { { ines }, {} };
    QTest::addRow("nobody") << RecipientsRow { {}, u"Add someone to sign."_s };
    QTest::addRow("eleven") << RecipientsRow { QList<TarnEnvelopeRecipient>(11, ines),
        u"An envelope goes to at most 10 signers."_s };
    QTest::addRow("no name") << RecipientsRow { { { u"  "_s, u"a@b.example"_s } }, u"Every signer needs a name."_s };
    for (const QString &bad : { u"ines"_s, u"@brightwater.example"_s, u"ines@brightwater"_s, u"ines@@b.example"_s,
             u"in es@b.example"_s, u"ines@b.example."_s })
        QTest::addRow("address %s", qPrintable(bad))
            << RecipientsRow { { { u"Ines"_s, bad } }, u"%1 is not an email address."_s.arg(bad) };
    QTest::addRow("same address in other case")
        << RecipientsRow { { ines, { u"I. Calder"_s, u" INES@Brightwater.example"_s } },
               u"ines@brightwater.example is on the envelope twice."_s };
}

void TestDocumentRules::recipients()
{
    QFETCH(RecipientsRow, row);
    QCOMPARE(DocumentRules::recipientsProblem(row.recipients), row.problem);
}

void TestDocumentRules::statusLabels_data()
{
    QTest::addColumn<StatusRow>("row");
    QTest::addRow("draft") << StatusRow { u"draft"_s, std::nullopt, u"Draft"_s };
    QTest::addRow("final") << StatusRow { u"final"_s, std::nullopt, u"Final"_s };
    QTest::addRow("envelope made") << StatusRow { u"final"_s, u"draft"_s, u"Ready to send"_s };
    QTest::addRow("out") << StatusRow { u"final"_s, u"sent"_s, u"Out for signature"_s };
    QTest::addRow("signed") << StatusRow { u"signed"_s, u"completed"_s, u"Signed"_s };
    QTest::addRow("declined") << StatusRow { u"final"_s, u"declined"_s, u"Declined"_s };
}

void TestDocumentRules::statusLabels()
{
    QFETCH(StatusRow, row);
    TarnDocument document;
    document.status = row.status;
    document.envelope_status = row.envelope;
    QCOMPARE(DocumentRules::statusLabel(document), row.label);
}

void TestDocumentRules::progress_data()
{
    QTest::addColumn<ProgressRow>("row");
    QTest::addRow("draft") << ProgressRow { u"draft"_s, { u"waiting"_s }, u"Not sent yet"_s };
    QTest::addRow("under way") << ProgressRow { u"sent"_s, { u"signed"_s, u"sent"_s, u"waiting"_s },
        u"1 of 3 signed"_s };
    QTest::addRow("link expired") << ProgressRow { u"sent"_s, { u"signed"_s, u"expired"_s },
        u"1 of 2 signed; the signing link has expired"_s };
    QTest::addRow("declined by the second")
        << ProgressRow { u"declined"_s, { u"signed"_s, u"declined"_s }, u"Declined by Signer 2"_s };
    QTest::addRow("completed") << ProgressRow { u"completed"_s, { u"signed"_s }, u"Signed by everyone"_s };
}

void TestDocumentRules::progress()
{
    QFETCH(ProgressRow, row);
    TarnEnvelope envelope;
    envelope.status = row.status;
    for (const QString &status : row.signers)
        envelope.signers.append({ .order = envelope.signers.size() + 1,
            .name = u"Signer %1"_s.arg(envelope.signers.size() + 1),
            .email = {},
            .status = status });
    QCOMPARE(DocumentRules::progressLabel(envelope), row.label);
}

QTEST_GUILESS_MAIN(TestDocumentRules)
#include "tst_documentrules.moc"
