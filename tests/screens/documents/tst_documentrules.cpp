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

const TarnEnvelopeRecipient ines { u"Ines Calder"_s, u"ines@brightwater.example"_s };

} // namespace

Q_DECLARE_METATYPE(RecipientsRow)
Q_DECLARE_METATYPE(StatusRow)

class TestDocumentRules : public QObject {
    Q_OBJECT

private slots:
    void recipients_data();
    void recipients();
    void statusLabels_data();
    void statusLabels();
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
}

void TestDocumentRules::statusLabels()
{
    QFETCH(StatusRow, row);
    TarnDocument document;
    document.status = row.status;
    document.envelope_status = row.envelope;
    QCOMPARE(DocumentRules::statusLabel(document), row.label);
}

QTEST_GUILESS_MAIN(TestDocumentRules)
#include "tst_documentrules.moc"
