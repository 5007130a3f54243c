#include "TarnWaitFor.h"
#include "mail/MailTestClient.h"
#include "mail/NativeMailImageProvider.h"
#include "mail/NativeMailView.h"
#include "mail/TarnMailHTML.h"
#include "service/TarnAPI.h"

#include <QAbstractItemModelTester>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;

bool waitFor(QObject *object, const char *signal, int timeoutMs = 20000)
{
    QSignalSpy spy(object, signal);
    return spy.wait(timeoutMs);
}

QVariant role(const QAbstractItemModel &model, int row, const char *name)
{
    return model.data(model.index(row, 0), model.roleNames().key(name));
}

} // namespace

// The mail screen's state without a window, against the local workspace:
// the list paged to its end, search, threads parsed off the main thread,
// actions moving the selection, and the composer's limits, send, undo and
// retry.
class TestMailView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void notConnected();
    void pagesToTheEnd();
    void search_data();
    void search();
    void threadParsing_data();
    void threadParsing();
    void entireMessage();
    void imagesThroughTheProxy();
    void imageIds_data();
    void imageIds();
    void links_data();
    void links();
    void actionsMoveTheSelection();
    void replyForwardAndDrafts();
    void savesAnAttachment();
    void attachmentLimits();
    void sendUndoAndRetry();
    void undoAfterItsTime();

private:
    // Opens the thread with this subject, loading pages until it is listed.
    [[nodiscard]] bool open(const QString &subject);

    MailTestClient client;
    TarnAPI *owner = nullptr;
    std::unique_ptr<NativeMailView> view;
};

void TestMailView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
    owner = client.signIn(maren);
    QVERIFY(owner);
}

void TestMailView::init()
{
    view = std::make_unique<NativeMailView>(*owner);
    new QAbstractItemModelTester(view->threads(), QAbstractItemModelTester::FailureReportingMode::QtTest, view.get());
    new QAbstractItemModelTester(view->messages(), QAbstractItemModelTester::FailureReportingMode::QtTest, view.get());
    view->appear();
    QVERIFY(waitFor(view.get(), SIGNAL(listLoaded())));
}

bool TestMailView::open(const QString &subject)
{
    for (int pages = 0; pages < 20; ++pages) {
        const NativeMailThreadModel &threads = *view->threads();
        for (int row = 0; row < threads.rowCount(); ++row)
            if (role(threads, row, "subject").toString() == subject) {
                view->select(role(threads, row, "threadId").toString());
                return waitFor(view.get(), SIGNAL(threadParsed()));
            }
        if (!view->hasMore())
            return false;
        view->loadMore();
        if (!waitFor(view.get(), SIGNAL(listLoaded())))
            return false;
    }
    return false;
}

void TestMailView::notConnected()
{
    TarnAPI *jonah = client.signIn(u"jonah@halvard.example"_s);
    QVERIFY(jonah);
    NativeMailView unconnected(*jonah);
    unconnected.appear();
    QVERIFY(waitFor(&unconnected, SIGNAL(listLoaded())));
    QVERIFY(unconnected.statusKnown());
    QVERIFY(!unconnected.connected());
    QCOMPARE(unconnected.threads()->rowCount(), 0);
    QVERIFY(unconnected.labels().isEmpty());
    QVERIFY(view->connected());
    QCOMPARE(view->email(), maren);
    // The labels the picker offers come with the mailbox.
    if (view->labels().isEmpty())
        QVERIFY(waitFor(view.get(), SIGNAL(labelsChanged())));
    QStringList names;
    for (const QVariant &label : view->labels())
        names.append(label.toMap().value(u"name"_s).toString());
    names.sort();
    QCOMPARE(names, QStringList({ u"Receipts"_s, u"Studio"_s, u"Suppliers"_s }));
}

void TestMailView::pagesToTheEnd()
{
    QVERIFY(view->hasMore());
    QCOMPARE(role(*view->threads(), 0, "section").toString(), u"Pinned"_s);
    int pages = 1;
    while (view->hasMore() && pages < 20) {
        const int before = view->threads()->rowCount();
        view->loadMore();
        QVERIFY(waitFor(view.get(), SIGNAL(listLoaded())));
        QVERIFY(view->threads()->rowCount() > before);
        ++pages;
    }
    QVERIFY(!view->hasMore());
    QVERIFY(pages >= 2);
    view->loadMore();
    QVERIFY(!view->loadingMore());
}

void TestMailView::search_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("subject"); // one thread it finds; empty when none
    QTest::addRow("a word of the body") << u"bisque"_s << u"Re: Glaze firing on Thursday"_s;
    QTest::addRow("every word must match") << u"quotation stoneware"_s << u"RE: Clay order for December"_s;
    QTest::addRow("nothing") << u"zzqx"_s << QString();
}

void TestMailView::search()
{
    QFETCH(QString, query);
    QFETCH(QString, subject);
    view->setSearchText(query);
    QVERIFY(waitFor(view.get(), SIGNAL(listLoaded())));
    QCOMPARE(view->threads()->rowCount() > 0, !subject.isEmpty());
    if (!subject.isEmpty())
        QCOMPARE(role(*view->threads(), 0, "subject").toString(), subject);
    else
        QCOMPARE(view->emptyText(), u"No conversations match “zzqx”"_s);
    QVERIFY(!view->hasMore());
}

void TestMailView::threadParsing_data()
{
    QTest::addColumn<QString>("subject");
    QTest::addColumn<QString>("text"); // in the last message's blocks
    QTest::addColumn<bool>("hasQuoted");
    QTest::addColumn<bool>("trackers");

    QTest::addRow("reply with a quote block")
        << u"Re: Glaze firing on Thursday"_s << u"bisque shelves"_s << true << false;
    QTest::addRow("reply under a From/Sent header")
        << u"RE: Clay order for December"_s << u"Grolleg"_s << true << false;
    QTest::addRow("whitespace-only HTML: its text")
        << u"Shelf labels"_s << u"blue box under the counter"_s << false << false;
    QTest::addRow("newsletter with a tracking pixel")
        << u"The Glaze Letter: winter glazes that behave"_s << u"Kiln clinic"_s << false << true;
}

void TestMailView::threadParsing()
{
    QFETCH(QString, subject);
    QFETCH(QString, text);
    QFETCH(bool, hasQuoted);
    QFETCH(bool, trackers);

    // Every message is listed as being formatted before its document arrives.
    QList<bool> parsingWhenListed;
    connect(view->messages(), &QAbstractItemModel::rowsInserted, this, [&](const QModelIndex &, int first, int last) {
        for (int row = first; row <= last; ++row)
            parsingWhenListed.append(role(*view->messages(), row, "parsing").toBool());
    });
    QVERIFY(open(subject));
    QCOMPARE(view->threadSubject(), subject);
    const NativeMailMessageModel &messages = *view->messages();
    QCOMPARE(parsingWhenListed, QList<bool>(messages.rowCount(), true));
    const int last = messages.rowCount() - 1;
    QVERIFY(!role(messages, last, "parsing").toBool());
    const TarnMailDocument *document = view->document(role(messages, last, "messageId").toString());
    QVERIFY(document);
    QVERIFY2(TarnMailHTML::plainText(document->blocks).contains(text),
        qPrintable(TarnMailHTML::plainText(document->blocks)));
    QCOMPARE(role(messages, last, "hasQuoted").toBool(), hasQuoted);
    QCOMPARE(role(messages, last, "blockedTrackers").toInt() > 0, trackers);
    QVERIFY(!role(messages, last, "truncated").toBool());
}

void TestMailView::entireMessage()
{
    QVERIFY(open(u"The Glaze Letter: the year in glazes (archive issue)"_s));
    const NativeMailMessageModel &messages = *view->messages();
    const QString id = role(messages, 0, "messageId").toString();
    QVERIFY(role(messages, 0, "truncated").toBool());
    const qsizetype shortBlocks = view->document(id)->blocks.size();
    view->showEntireMessage(id);
    QVERIFY(role(messages, 0, "parsing").toBool());
    QVERIFY(waitFor(view.get(), SIGNAL(threadParsed())));
    QVERIFY(!role(messages, 0, "truncated").toBool());
    QVERIFY(view->document(id)->blocks.size() > shortBlocks);

    // A parse that finishes after another thread was opened is dropped.
    view->showEntireMessage(id);
    QVERIFY(open(u"Shelf labels"_s));
    QCOMPARE(view->messages()->rowCount(), 1);
    QVERIFY(!view->document(id));
}

void TestMailView::imagesThroughTheProxy()
{
    QVERIFY(open(u"The Glaze Letter: winter glazes that behave"_s));
    const QString message = role(*view->messages(), 0, "messageId").toString();
    QStringList loaded;
    QStringList failed;
    for (const QUrl &url : view->document(message)->remoteImageURLs()) {
        const QString source = url.toString(QUrl::FullyEncoded);
        const std::optional<QByteArray> bytes = tarnWaitFor(view->images()->load(message, source));
        (bytes && bytes->startsWith("\x89PNG") ? loaded : failed).append(url.fileName());
    }
    QCOMPARE(loaded, QStringList({ u"masthead.png"_s, u"celadon.png"_s, u"tenmoku.png"_s }));
    QCOMPARE(failed, QStringList { u"missing-footer.png"_s });
    QCOMPARE(view->images()->failures(message), 1);
    QCOMPARE(NativeMailView::imageFailureText(view->images()->failures(message)), u"1 image could not be loaded."_s);

    QVERIFY(open(u"Re: Pop-up photos"_s));
    const QString photos = role(*view->messages(), 0, "messageId").toString();
    QCOMPARE(view->document(photos)->cidReferences(), QStringList { u"popup-table@halvard.example"_s });
    const std::optional<QByteArray> inlined
        = tarnWaitFor(view->images()->load(photos, u"cid:popup-table@halvard.example"_s));
    QVERIFY(inlined && inlined->startsWith("\x89PNG"));
    QVERIFY(!tarnWaitFor(view->images()->load(photos, u"cid:nothing@halvard.example"_s)));
    QCOMPARE(view->images()->failures(photos), 1);

    // The same through QML's image provider, scaled to the size asked for.
    NativeMailImageProvider provider(view->images());
    std::unique_ptr<QQuickImageResponse> found(provider.requestImageResponse(
        NativeMailImageProvider::imageId(photos, u"cid:popup-table@halvard.example"_s), QSize(120, 80)));
    QVERIFY(waitFor(found.get(), SIGNAL(finished())));
    std::unique_ptr<QQuickTextureFactory> texture(found->textureFactory());
    QCOMPARE(texture->image().size(), QSize(120, 80));
    QVERIFY(found->errorString().isEmpty());
    std::unique_ptr<QQuickImageResponse> missing(
        provider.requestImageResponse(NativeMailImageProvider::imageId(photos, u"cid:none@x"_s), QSize()));
    QVERIFY(waitFor(missing.get(), SIGNAL(finished())));
    QCOMPARE(missing->errorString(), u"The image could not be loaded."_s);
}

void TestMailView::imageIds_data()
{
    QTest::addColumn<QString>("messageId");
    QTest::addColumn<QString>("source");

    QTest::addRow("plain URL") << u"msg-1"_s << u"https://img.example/masthead.png"_s;
    // The URL's own escapes must reach the proxy as they are: decoding them
    // again would sign a different URL than the mail named.
    QTest::addRow("URL with escapes") << u"msg-1"_s << u"https://img.example/a%20b%2Fc.png?x=1%26y=%25"_s;
    QTest::addRow("message id with a slash") << u"a/b@host"_s << u"cid:part1.x@host"_s;
}

void TestMailView::imageIds()
{
    QFETCH(QString, messageId);
    QFETCH(QString, source);
    // Qt Quick hands the provider the path of "image://mail/ID" as written.
    const QUrl url(u"image://mail/"_s + NativeMailImageProvider::imageId(messageId, source));
    const std::optional<NativeMailImageProvider::Request> asked
        = NativeMailImageProvider::request(url.path(QUrl::FullyEncoded).mid(1));
    QVERIFY(asked);
    QCOMPARE(asked->messageId, messageId);
    QCOMPARE(asked->source, source);
}

void TestMailView::links_data()
{
    QTest::addColumn<QString>("subject");
    QTest::addColumn<QString>("shown"); // the link's text in the message
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("asks");

    QTest::addRow("plain link opens") << u"Invoice NF-20931 from Northwind Freight"_s
                                      << u"pay.northwind-freight.example"_s
                                      << u"https://pay.northwind-freight.example/invoice/NF-20931"_s << false;
    QTest::addRow("text naming another site asks first")
        << u"Your parcel HLV-2291 is on hold"_s << u"https://www.northwind-freight.example/track/HLV-2291"_s
        << u"http://parcel-customs-fee.example/pay?ref=HLV-2291"_s << true;
}

void TestMailView::links()
{
    QFETCH(QString, subject);
    QFETCH(QString, shown);
    QFETCH(QString, target);
    QFETCH(bool, asks);
    QVERIFY(open(subject));
    QString link;
    for (const TarnMailBlock &block : view->document(role(*view->messages(), 0, "messageId").toString())->blocks)
        for (const TarnMailRun &run : block.runs())
            if (run.text == shown && run.link)
                link = run.link->text();
    QVERIFY(!link.isEmpty());
    QSignalSpy opened(view.get(), &NativeMailView::openExternally);
    view->openLink(link);
    QCOMPARE(view->pendingLink(), asks ? target : QString());
    if (asks) {
        QCOMPARE(opened.size(), 0);
        view->confirmLink();
        QVERIFY(view->pendingLink().isEmpty());
    }
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.first().first().toUrl().toString(), target);
}

void TestMailView::actionsMoveTheSelection()
{
    const QStringList before = view->threads()->ids();
    QVERIFY(before.size() > 4);
    view->select(before.at(1));
    view->act(u"done"_s);
    QVERIFY(waitFor(view.get(), SIGNAL(actionFinished())));
    QCOMPARE(view->selectedThread(), before.at(2));
    QVERIFY(!view->threads()->ids().contains(before.at(1)));

    view->moveSelection(1);
    QCOMPARE(view->selectedThread(), before.at(3));
    view->act(u"pin"_s);
    QVERIFY(waitFor(view.get(), SIGNAL(actionFinished())));
    QCOMPARE(view->selectedThread(), before.at(3));

    // Acting on the last thread listed walks up.
    const QString last = view->threads()->ids().last();
    const QString aboveLast = view->threads()->ids().at(view->threads()->rowCount() - 2);
    view->select(last);
    view->act(u"trash"_s);
    QVERIFY(waitFor(view.get(), SIGNAL(actionFinished())));
    QCOMPARE(view->selectedThread(), aboveLast);
    view->setView(u"trash"_s);
    QVERIFY(waitFor(view.get(), SIGNAL(listLoaded())));
    QVERIFY(view->threads()->ids().contains(last));
}

void TestMailView::replyForwardAndDrafts()
{
    QVERIFY(open(u"RE: Clay order for December"_s));
    NativeMailComposer &composer = *view->composer();
    view->reply(true);
    QVERIFY(composer.isOpen());
    QCOMPARE(composer.to(), u"ingrid@erdwerk.example"_s);
    QCOMPARE(composer.cc(), u"tomas@halvard.example"_s);
    QCOMPARE(composer.subject(), u"RE: Clay order for December"_s);
    const QString replyKey = composer.idempotencyKey();
    view->forward();
    QCOMPARE(composer.to(), QString());
    QVERIFY(composer.text().contains("---------- Forwarded message ----------\nFrom: Ingrid Baumann"_L1));
    QVERIFY(composer.idempotencyKey() != replyKey);
    QVERIFY(composer.sendHint().contains("Ctrl+Enter"_L1));

    QCOMPARE(view->replyDrafts().size(), 1);
    const QVariantMap draft = view->replyDrafts().first().toMap();
    view->useReplyDraft(draft.value(u"id"_s).toString());
    QCOMPARE(composer.text(), draft.value(u"draft"_s).toString());
    QCOMPARE(composer.to(), u"ingrid@erdwerk.example"_s);
    view->skipReplyDraft(draft.value(u"id"_s).toString());
    QVERIFY(waitFor(view.get(), SIGNAL(actionFinished())));
    QCOMPARE(view->replyDrafts().size(), 0);
}

void TestMailView::savesAnAttachment()
{
    QVERIFY(open(u"RE: Clay order for December"_s));
    const NativeMailMessageModel &messages = *view->messages();
    const QVariantList files = role(messages, 0, "attachments").toList();
    QCOMPARE(files.size(), 1);
    QTemporaryDir folder;
    const QUrl target = QUrl::fromLocalFile(folder.filePath(u"form.pdf"_s));
    QSignalSpy saved(view.get(), &NativeMailView::attachmentSaved);
    view->saveAttachment(
        role(messages, 0, "messageId").toString(), files.first().toMap().value(u"id"_s).toString(), target);
    QVERIFY(saved.wait());
    QFile file(target.toLocalFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().startsWith("%PDF"));
    QCOMPARE(NativeMailView::imageFailureText(1), u"1 image could not be loaded."_s);
    QCOMPARE(NativeMailView::imageFailureText(3), u"3 images could not be loaded."_s);
}

void TestMailView::attachmentLimits()
{
    NativeMailComposer &composer = *view->composer();
    composer.compose();
    for (int i = 0; i < 20; ++i)
        QVERIFY(composer.attach({ QString::number(i), u"f%1.txt"_s.arg(i), "x"_ba }));
    QVERIFY(!composer.attach({ u"21"_s, u"f21.txt"_s, "x"_ba }));
    QCOMPARE(composer.errorText(), u"Attach up to 20 files totaling 18 MB."_s);
    QCOMPARE(composer.files().size(), 20);
    for (int i = 0; i < 20; ++i)
        composer.removeFile(QString::number(i));
    QVERIFY(composer.attach({ u"big"_s, u"big.bin"_s, QByteArray(18 * 1024 * 1024, 'x') }));
    QVERIFY(!composer.attach({ u"one more byte"_s, u"b.bin"_s, "x"_ba }));
    QCOMPARE(composer.files().size(), 1);
    QVERIFY(composer.isOpen());

    // Files chosen on disk: read in order, up to the first that does not fit.
    composer.removeFile(u"big"_s);
    QTemporaryDir folder;
    const auto write = [&folder](const QString &name, qint64 size) {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.resize(size) ? QUrl::fromLocalFile(file.fileName()) : QUrl();
    };
    const QList<QUrl> chosen { write(u"a.pdf"_s, 10), write(u"huge.iso"_s, 18 * 1024 * 1024 + 1),
        write(u"b.pdf"_s, 10) };
    QVERIFY(!composer.attachFiles(chosen));
    QCOMPARE(composer.errorText(), u"Attach up to 20 files totaling 18 MB."_s);
    QCOMPARE(composer.files().size(), 1);
    QCOMPARE(composer.files().first().toMap().value(u"name"_s).toString(), u"a.pdf"_s);
}

void TestMailView::sendUndoAndRetry()
{
    NativeMailComposer &composer = *view->composer();
    composer.compose();
    composer.setTo(u"Tomas Reyes <tomas@halvard.example>"_s);
    composer.setSubject(u"Undo me"_s);
    composer.setText(u"Kiln is free on Friday."_s);
    const QString key = composer.idempotencyKey();

    // A failed send keeps the draft and its key.
    client.workspace->setFault({ { u"method"_s, u"POST"_s }, { u"path"_s, u"/api/tarn-mail/rpc"_s },
        { u"status"_s, 503 }, { u"body"_s, u"{\"error\":\"Mail is resting.\"}"_s } });
    composer.send();
    QVERIFY(waitFor(&composer, SIGNAL(finished())));
    QCOMPARE(composer.errorText(), u"Mail is resting."_s);
    QVERIFY(composer.isOpen() && !composer.undoAvailable());
    QCOMPARE(composer.idempotencyKey(), key);

    composer.send();
    QVERIFY(waitFor(&composer, SIGNAL(finished())));
    QVERIFY2(composer.undoAvailable() && !composer.isOpen(), qPrintable(composer.errorText()));
    composer.undo();
    QVERIFY(waitFor(&composer, SIGNAL(finished())));
    QVERIFY(composer.isOpen() && !composer.undoAvailable());
    QCOMPARE(composer.subject(), u"Undo me"_s);
    QCOMPARE(composer.idempotencyKey(), key);

    // Sent again, with the same key, and gone out before the undo.
    client.workspace->clearRequests();
    composer.send();
    QVERIFY(waitFor(&composer, SIGNAL(finished())));
    const QJsonArray requests = client.workspace->requests();
    QCOMPARE(requests.size(), 1);
    const QJsonObject body = QJsonDocument::fromJson(requests.first()[u"body"_s].toString().toUtf8()).object();
    QCOMPARE(body.value("params"_L1)[u"idempotencyKey"_s].toString(), key);
    const QJsonObject due { { u"sendId"_s, composer.queuedSendId() } };
    QCOMPARE(client.workspace->send("POST", u"/api/test/mail/due"_s, QJsonDocument(due).toJson()).status, 200);
    composer.undo();
    QVERIFY(waitFor(&composer, SIGNAL(finished())));
    QCOMPARE(composer.statusText(), u"The undo period ended. Check Sent to confirm delivery."_s);
    QVERIFY(!composer.isOpen() && !composer.undoAvailable());
    QVERIFY(composer.idempotencyKey() != key);
}

void TestMailView::undoAfterItsTime()
{
    // A clock past sendsAtMs: the undo period has ended without asking.
    qint64 offset = 0;
    NativeMailComposer composer(*owner, [&offset] { return QDateTime::currentMSecsSinceEpoch() + offset; });
    composer.compose();
    composer.setTo(u"tomas@halvard.example"_s);
    composer.setSubject(u"Too late"_s);
    composer.send();
    QVERIFY(waitFor(&composer, SIGNAL(finished())));
    QVERIFY(composer.undoAvailable());
    offset = 11'000;
    client.workspace->clearRequests();
    QSignalSpy sent(&composer, &NativeMailComposer::sent);
    composer.undo();
    QCOMPARE(composer.statusText(), u"The undo period ended. Check Sent to confirm delivery."_s);
    QVERIFY(!composer.undoAvailable() && !composer.isOpen());
    QCOMPARE(client.workspace->requests().size(), 0);
    QCOMPARE(sent.size(), 1);

    // A new message while one waits: that one keeps going, the new one sends.
    offset = 0;
    composer.compose();
    composer.setTo(u"tomas@halvard.example"_s);
    composer.send();
    QVERIFY(waitFor(&composer, SIGNAL(finished())));
    const QString waiting = composer.queuedSendId();
    composer.compose();
    QVERIFY(!composer.undoAvailable());
    composer.setTo(u"tomas@halvard.example"_s);
    composer.send();
    QVERIFY(waitFor(&composer, SIGNAL(finished())));
    QVERIFY(composer.undoAvailable());
    QVERIFY(composer.queuedSendId() != waiting);
}

QTEST_MAIN(TestMailView)
#include "tst_mailview.moc"
