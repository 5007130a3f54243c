#include "SigningForm.h"
#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/documents/NativeDocumentsView.h"
#include "screens/documents/TarnDocumentCalls.h"

#include <QBuffer>
#include <QPdfDocument>

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList column(const QAbstractItemModel &model, const QByteArray &role)
{
    QStringList out;
    const int r = model.roleNames().key(role);
    for (int i = 0; i < model.rowCount(); ++i)
        out.append(model.index(i, 0).data(r).toString());
    return out;
}

} // namespace

// The documents screen's state against the local workspace's demo documents.
class TestDocumentsView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void sections_data();
    void sections();
    void envelopeWrittenSentOnceAndSigned();
    void previewDrawsTheLastDocumentAsked();

private:
    InboxTestClient client;
    std::unique_ptr<NativeDocumentsView> view;
};

void TestDocumentsView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
    view = std::make_unique<NativeDocumentsView>(client.as(u"maren@halvard.example"_s));
    QSignalSpy refreshed(view.get(), &NativeDocumentsView::refreshed);
    view->appear();
    QVERIFY(refreshed.wait());
    QVERIFY(view->errorText().isEmpty());
}

void TestDocumentsView::sections_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("search");
    QTest::addColumn<QStringList>("titles");
    QTest::addRow("worksheets") << u"Worksheets"_s << QString()
                                << QStringList { u"Project handover checklist"_s, u"Scope of work"_s,
                                       u"Discovery call notes"_s, u"New client onboarding"_s };
    QTest::addRow("agreements by customer")
        << u"Agreements"_s << u"oakline"_s << QStringList { u"Oakline Studio retainer"_s };
    QTest::addRow("proposals by owner") << u"Proposals"_s << u"priya"_s
                                        << QStringList { u"Tidewater Yoga booking site"_s };
    QTest::addRow("envelopes") << u"Envelopes"_s << u"a"_s
                               << QStringList { u"Fernhill Bakery maintenance plan"_s, u"Oakline Studio retainer"_s,
                                      u"Harbor front desk inbox"_s, u"Tidewater Yoga booking site"_s,
                                      u"Brightwater Dental service agreement"_s };
    QTest::addRow("nothing") << u"Agreements"_s << u"zzz"_s << QStringList();
}

void TestDocumentsView::sections()
{
    QFETCH(QString, section);
    QFETCH(QString, search);
    QFETCH(QStringList, titles);
    view->setSection(section);
    view->setSearch(search);
    QCOMPARE(column(*view->documents(), "title"), titles);
    QVERIFY(!view->emptyText().isEmpty());
    view->setSearch({});
}

void TestDocumentsView::envelopeWrittenSentOnceAndSigned()
{
    view->setSection(u"Proposals"_s);
    view->openDocument(u"doc-pr-quill"_s);
    QCOMPARE(view->draftDocumentId(), u"doc-pr-quill"_s);
    view->createEnvelope();
    QCOMPARE(view->errorText(), u"Add someone to sign."_s);

    view->addRecipient(u"Maren Holt"_s, u"maren@halvard.example"_s);
    view->addRecipient(u"Wren Quill"_s, u"wren@quill.example"_s);
    view->moveRecipient(1, -1);
    QSignalSpy finished(view.get(), &NativeDocumentsView::actionFinished);
    view->createEnvelope();
    QVERIFY(finished.wait());
    QVERIFY2(view->errorText().isEmpty(), qPrintable(view->errorText()));
    QCOMPARE(view->openEnvelope().value(u"status"_s), u"draft"_s);
    QCOMPARE(column(*view->signers(), "name"), (QStringList { u"Wren Quill"_s, u"Maren Holt"_s }));
    QVERIFY(view->canSend());

    // A retried click while the first send is on sends nothing more.
    view->send();
    QVERIFY(!view->canSend());
    view->send();
    QVERIFY(finished.wait());
    QCOMPARE(finished.size(), 2);
    QCOMPARE(view->openEnvelope().value(u"status"_s), u"sent"_s);
    QVERIFY(!view->canSend());

    // The open envelope follows the signing page, one signer after the other.
    QCOMPARE(SigningForm::sign(*client.workspace, view->signUrl(), u"Wren Quill"_s).status, 200);
    QTRY_COMPARE(column(*view->signers(), "status"), (QStringList { u"signed"_s, u"sent"_s }));
    QVERIFY(!view->signUrl().isEmpty());
    QCOMPARE(SigningForm::sign(*client.workspace, view->signUrl(), u"Maren Holt"_s).status, 200);
    QTRY_COMPARE(view->openEnvelope().value(u"status"_s), u"completed"_s);
    QVERIFY(view->signUrl().isEmpty());
    QCOMPARE(column(*view->signers(), "status"), (QStringList { u"signed"_s, u"signed"_s }));
    QCOMPARE(view->openEnvelope().value(u"progress"_s), u"Signed by everyone"_s);
    QCOMPARE(finished.size(), 2);
    QTRY_COMPARE(
        column(*view->documents(), "status").value(column(*view->documents(), "documentId").indexOf(u"doc-pr-quill"_s)),
        u"Signed"_s);
    // Signed: a new envelope for the document starts from here.
    view->newEnvelope();
    QCOMPARE(view->draftDocumentId(), u"doc-pr-quill"_s);
    QCOMPARE(view->openEnvelopeId(), QString());
}

// The preview reads the PDF the service draws: every page, the title on
// them, and only the document asked for last when two are asked in turn.
void TestDocumentsView::previewDrawsTheLastDocumentAsked()
{
    view->setSection(u"Worksheets"_s);
    view->setSearch({});
    const QList<TarnDocument> rows = view->documents()->rows();
    const auto longer = std::find_if(rows.begin(), rows.end(), [](const TarnDocument &d) { return d.pages > 1; });
    QVERIFY(longer != rows.end() && rows.size() > 1);
    const TarnDocument other = rows.constFirst().id == longer->id ? rows.at(1) : rows.constFirst();

    NativePdfPreview *preview = view->preview();
    QSignalSpy loaded(preview, &NativePdfPreview::loaded);
    preview->show(other.id, other.title);
    preview->show(longer->id, longer->title);
    QVERIFY(loaded.wait());
    // The first document's answer, whenever it comes, is dropped unheard.
    QVERIFY(!loaded.wait(300));
    QCOMPARE(loaded.count(), 1);
    QCOMPARE(preview->errorText(), QString());
    QCOMPARE(preview->title(), longer->title);
    QCOMPARE(preview->pageCount(), longer->pages);

    const QImage page = preview->render(0, QSize(300, 400));
    QVERIFY(!page.isNull() && page.width() <= 300 && page.height() <= 400);
    bool inked = false;
    for (int y = 0; y < page.height() && !inked; y += 2)
        for (int x = 0; x < page.width() && !inked; x += 2)
            inked = qGray(page.pixel(x, y)) < 128;
    QVERIFY2(inked, "the page has text on it");
    QVERIFY(preview->render(longer->pages, QSize(300, 400)).isNull());

    QByteArray bytes = tarnWaitFor(TarnDocumentCalls::documentPdf(client.as(u"maren@halvard.example"_s), longer->id));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QPdfDocument pdf;
    pdf.load(&buffer);
    QCOMPARE(pdf.pageCount(), longer->pages);
    QVERIFY(pdf.getAllText(pdf.pageCount() - 1).text().contains(longer->title));
    preview->close();
    QVERIFY(!preview->isOpen());
}

QTEST_GUILESS_MAIN(TestDocumentsView)
#include "tst_documentsview.moc"
