#include "TarnWaitFor.h"
#include "mail/MailTestClient.h"
#include "mail/TarnMailCalls.h"
#include "mail/TarnMailProxy.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "support/FailureOf.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTest>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

using Views = QStringList;
const Views allViews { u"inbox"_s, u"starred"_s, u"sent"_s, u"snoozed"_s, u"done"_s, u"trash"_s };

QStringList idsOf(const TarnMailInbox &page)
{
    QStringList ids;
    for (const TarnMailSection &section : page.sections)
        for (const TarnMailCard &card : section.threads)
            ids.append(card.id);
    return ids;
}

// Every thread of a view, page by page, and how many pages it took.
std::pair<QStringList, int> wholeView(TarnAPI &api, const QString &view)
{
    QStringList ids;
    std::optional<QString> cursor;
    int pages = 0;
    do {
        const TarnMailInbox page = tarnWaitFor(TarnMailCalls::inbox(api, view, cursor));
        ids += idsOf(page);
        cursor = page.nextCursor;
        ++pages;
    } while (cursor && pages < 100);
    return { ids, pages };
}

std::optional<TarnMailCard> findCard(TarnAPI &api, const QString &view, const QString &subject)
{
    std::optional<QString> cursor;
    do {
        const TarnMailInbox page = tarnWaitFor(TarnMailCalls::inbox(api, view, cursor));
        for (const TarnMailSection &section : page.sections)
            for (const TarnMailCard &card : section.threads)
                if (card.subject == subject)
                    return card;
        cursor = page.nextCursor;
    } while (cursor);
    return std::nullopt;
}

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

} // namespace

// The mail calls against the local workspace's mail service: what each
// view lists after an action, paging, sending with undo and its key, the
// attachment limits, the image proxy's signatures and the reply drafts.
class TestMailCalls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void notConnected();
    void pagingEndsWithoutCursor_data();
    void pagingEndsWithoutCursor();
    void actionsMoveThreads_data();
    void actionsMoveThreads();
    void snoozedThreadReturns();
    void sendAndUndo_data();
    void sendAndUndo();
    void retriedSendDeliversOnce();
    void attachmentLimits_data();
    void attachmentLimits();
    void proxy_data();
    void proxy();
    void threadAndAttachment();
    void replyDrafts();
    void sendAsAndLabels();

private:
    [[nodiscard]] TarnMailSend mail(const QString &subject) const;
    [[nodiscard]] QString threadWith(const QString &subject);
    [[nodiscard]] QString freshThread(const QString &subject);
    // The queued send's time comes now; false when the workspace refused.
    [[nodiscard]] bool makeDue(const QString &sendId);

    MailTestClient client;
    TarnAPI *owner = nullptr;
    TarnAPI *recipient = nullptr;
};

void TestMailCalls::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
    owner = client.signIn(maren);
    recipient = client.signIn(tomas);
    QVERIFY(owner && recipient);
}

TarnMailSend TestMailCalls::mail(const QString &subject) const
{
    return { .to = { tomas },
        .subject = subject,
        .text = u"Body of "_s + subject,
        .idempotencyKey = QUuid::createUuid().toString(QUuid::WithoutBraces) };
}

QString TestMailCalls::threadWith(const QString &subject)
{
    for (const QString &view : allViews)
        if (const std::optional<TarnMailCard> card = findCard(*owner, view, subject))
            return card->id;
    return {};
}

bool TestMailCalls::makeDue(const QString &sendId)
{
    const QJsonObject body { { u"sendId"_s, sendId } };
    return client.workspace->send("POST", u"/api/test/mail/due"_s, QJsonDocument(body).toJson()).status == 200;
}

// A conversation of the owner's that nothing else touches: sent to Tomas,
// whose reply brings it into the owner's inbox.
QString TestMailCalls::freshThread(const QString &subject)
{
    const TarnMailQueued queued = tarnWaitFor(TarnMailCalls::send(*owner, mail(subject)));
    if (!makeDue(queued.sendId))
        return {};
    const std::optional<TarnMailCard> theirs = findCard(*recipient, u"inbox"_s, subject);
    if (!theirs)
        return {};
    TarnMailSend reply = mail(subject);
    reply.to = { maren };
    reply.threadId = theirs->id;
    const TarnMailQueued answer = tarnWaitFor(TarnMailCalls::send(*recipient, reply));
    if (!makeDue(answer.sendId))
        return {};
    return threadWith(subject);
}

void TestMailCalls::notConnected()
{
    TarnAPI *jonah = client.signIn(u"jonah@halvard.example"_s);
    QVERIFY(jonah);
    QCOMPARE(tarnWaitFor(TarnMailCalls::status(*jonah)).configured, false);
    QCOMPARE(failureOf(TarnMailCalls::inbox(*jonah, u"inbox"_s)), u"Connect your Google mailbox first."_s);
    const TarnMailStatus mine = tarnWaitFor(TarnMailCalls::status(*owner));
    QVERIFY(mine.configured && mine.sending);
    QCOMPARE(mine.email, maren);
}

void TestMailCalls::pagingEndsWithoutCursor_data()
{
    QTest::addColumn<QString>("view");
    QTest::addColumn<int>("minimumPages");
    QTest::addRow("inbox over two pages") << u"inbox"_s << 2;
    QTest::addRow("done") << u"done"_s << 1;
    QTest::addRow("trash, one page") << u"trash"_s << 1;
}

void TestMailCalls::pagingEndsWithoutCursor()
{
    QFETCH(QString, view);
    QFETCH(int, minimumPages);
    const auto [ids, pages] = wholeView(*owner, view);
    QVERIFY2(pages >= minimumPages && pages < 100, qPrintable(QString::number(pages)));
    QCOMPARE(QSet<QString>(ids.begin(), ids.end()).size(), ids.size());
    QVERIFY(!ids.isEmpty());
    QCOMPARE(failureOf(TarnMailCalls::inbox(*owner, view, u"not-a-cursor"_s)),
        u"That \"cursor\" did not come from this mailbox."_s);
}

void TestMailCalls::actionsMoveThreads_data()
{
    QTest::addColumn<QList<TarnMailAction>>("actions");
    QTest::addColumn<Views>("listedIn");

    const auto simple = [](TarnMailAction::Kind kind) { return TarnMailAction::simple(kind); };
    using K = TarnMailAction::Kind;
    const qint64 tomorrow = QDateTime::currentMSecsSinceEpoch() + 24 * 3600 * 1000;
    QTest::addRow("untouched") << QList<TarnMailAction>() << Views { u"inbox"_s, u"sent"_s };
    QTest::addRow("done") << QList { simple(K::Done) } << Views { u"sent"_s, u"done"_s };
    QTest::addRow("trash") << QList { simple(K::Trash) } << Views { u"trash"_s };
    QTest::addRow("done, trash, untrash")
        << QList { simple(K::Done), simple(K::Trash), simple(K::Untrash) } << Views { u"sent"_s, u"done"_s };
    QTest::addRow("done, back to inbox") << QList { simple(K::Done), simple(K::Inbox) }
                                         << Views { u"inbox"_s, u"sent"_s };
    QTest::addRow("snoozed") << QList { TarnMailAction::snooze(tomorrow) } << Views { u"sent"_s, u"snoozed"_s };
    QTest::addRow("snoozed from done") << QList { simple(K::Done), TarnMailAction::snooze(tomorrow) }
                                       << Views { u"sent"_s, u"snoozed"_s };
    QTest::addRow("pinned stays listed") << QList { simple(K::Pin) } << Views { u"inbox"_s, u"sent"_s };
}

void TestMailCalls::actionsMoveThreads()
{
    QFETCH(QList<TarnMailAction>, actions);
    QFETCH(Views, listedIn);
    const QString subject = u"Actions: "_s + QString::fromLatin1(QTest::currentDataTag());
    const QString thread = freshThread(subject);
    QVERIFY(!thread.isEmpty());
    for (const TarnMailAction &action : actions)
        tarnWaitFor(TarnMailCalls::perform(*owner, action, thread));
    Views found;
    for (const QString &view : allViews)
        if (wholeView(*owner, view).first.contains(thread))
            found.append(view);
    QCOMPARE(found, listedIn);
}

void TestMailCalls::snoozedThreadReturns()
{
    const QString thread = freshThread(u"Snoozed briefly"_s);
    QVERIFY(!thread.isEmpty());
    const qint64 until = QDateTime::currentMSecsSinceEpoch() + 1500;
    tarnWaitFor(TarnMailCalls::perform(*owner, TarnMailAction::snooze(until), thread));
    QVERIFY(!wholeView(*owner, u"inbox"_s).first.contains(thread));
    QTRY_VERIFY_WITH_TIMEOUT(wholeView(*owner, u"inbox"_s).first.contains(thread), 10000);
    QVERIFY(!wholeView(*owner, u"snoozed"_s).first.contains(thread));
}

void TestMailCalls::sendAndUndo_data()
{
    QTest::addColumn<bool>("due");
    QTest::addRow("undone in time: nothing delivered") << false;
    QTest::addRow("undone too late: delivered") << true;
}

void TestMailCalls::sendAndUndo()
{
    QFETCH(bool, due);
    const QString subject = u"Undo "_s + QString::fromLatin1(QTest::currentDataTag());
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const TarnMailQueued queued = tarnWaitFor(TarnMailCalls::send(*owner, mail(subject)));
    QVERIFY(queued.queued);
    QVERIFY(queued.sendsAtMs >= before + 9'000 && queued.sendsAtMs <= before + 11'000);
    if (due)
        QVERIFY(makeDue(queued.sendId));
    const TarnMailCancelled cancelled = tarnWaitFor(TarnMailCalls::cancelSend(*owner, queued.sendId));
    QCOMPARE(cancelled.cancelled, !due);
    QCOMPARE(findCard(*owner, u"sent"_s, subject).has_value(), due);
    QCOMPARE(findCard(*recipient, u"inbox"_s, subject).has_value(), due);
}

void TestMailCalls::retriedSendDeliversOnce()
{
    const TarnMailSend once = mail(u"Sent twice"_s);
    const TarnMailQueued first = tarnWaitFor(TarnMailCalls::send(*owner, once));
    const TarnMailQueued second = tarnWaitFor(TarnMailCalls::send(*owner, once));
    QCOMPARE(second.sendId, first.sendId);
    QCOMPARE(second.sendsAtMs, first.sendsAtMs);
    QVERIFY(makeDue(first.sendId));
    QCOMPARE(tarnWaitFor(TarnMailCalls::send(*owner, once)).sendId, first.sendId);
    const std::optional<TarnMailCard> card = findCard(*recipient, u"inbox"_s, u"Sent twice"_s);
    QVERIFY(card);
    QCOMPARE(card->count, 1);
    QCOMPARE(idsOf(tarnWaitFor(TarnMailCalls::search(*recipient, u"Sent twice"_s))), QStringList { card->id });
}

void TestMailCalls::attachmentLimits_data()
{
    QTest::addColumn<int>("files");
    QTest::addColumn<qint64>("bytesEach");
    QTest::addRow("21 files") << 21 << qint64(10);
    QTest::addRow("18 MiB and a byte") << 1 << qint64(18 * 1024 * 1024 + 1);
}

void TestMailCalls::attachmentLimits()
{
    QFETCH(int, files);
    QFETCH(qint64, bytesEach);
    TarnMailSend send = mail(u"Too much attached"_s);
    for (int i = 0; i < files; ++i)
        send.attachments.append({ QString::number(i), u"f%1.pdf"_s.arg(i), QByteArray(bytesEach, 'x') });
    client.workspace->clearRequests();
    QCOMPARE(failureOf(TarnMailCalls::send(*owner, send)), u"Attach up to 20 files totaling 18 MB."_s);
    QCOMPARE(client.workspace->requests().size(), 0);

    // The service refuses them as well, from any client.
    const QString token = client.workspace->signIn(maren);
    const QJsonObject body { { u"method"_s, u"mail.send"_s }, { u"params"_s, send.toJSON() } };
    const TestWorkspace::Answer refused = client.workspace->send("POST", u"/api/tarn-mail/rpc"_s, token, body,
        { { "X-CSRF-Token", client.workspace->session(token).value("csrf"_L1).toString().toLatin1() } });
    QCOMPARE(refused.status, 400);
    QCOMPARE(refused.json().value("error"_L1).toString(), u"Attach up to 20 files totaling 18 MB."_s);
    QVERIFY(!findCard(*owner, u"sent"_s, u"Too much attached"_s));
}

void TestMailCalls::proxy_data()
{
    QTest::addColumn<QString>("change"); // what is done to a good signed query
    QTest::addColumn<int>("status");

    QTest::addRow("as signed") << u""_s << 200;
    QTest::addRow("signature changed") << u"signature"_s << 403;
    QTest::addRow("expiry moved") << u"expiry"_s << 403;
    QTest::addRow("another URL under the signature") << u"url"_s << 403;
    QTest::addRow("expired") << u"expired"_s << 403;
    QTest::addRow("unsigned") << u"unsigned"_s << 403;
    QTest::addRow("signed, but the host has no such image") << u"missing"_s << 404;
}

void TestMailCalls::proxy()
{
    QFETCH(QString, change);
    QFETCH(int, status);
    const QString good = u"https://news.glazeletter.example/img/celadon.png"_s;
    const QString missing = u"https://news.glazeletter.example/img/none.png"_s;
    const TarnMailSignedImages signedImages
        = tarnWaitFor(TarnMailCalls::signImages(*owner, { good, missing, u"ftp://x.example/a.png"_s }));
    QCOMPARE(signedImages.images.size(), 2);
    const QList<TarnMailProxy::Path> paths = TarnMailProxy::proxyPaths({ good, missing }, signedImages);
    QCOMPARE(paths.size(), 2);

    QString path = change == "missing"_L1 ? paths.at(1).path : paths.at(0).path;
    const QString otherUrl
        = QString::fromLatin1(u"https://news.glazeletter.example/img/tenmoku.png"_s.toUtf8().toBase64(
            QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
    if (change == "signature"_L1)
        path[path.size() - 1] = path.endsWith(u'0') ? u'1' : u'0';
    else if (change == "expiry"_L1)
        path.replace(u"&e="_s, u"&e=1"_s);
    else if (change == "url"_L1)
        path.replace(QRegularExpression(u"u=[^&]+"_s), u"u="_s + otherUrl);
    else if (change == "expired"_L1) {
        const TestWorkspace::Answer signedAnswer = client.workspace->send("POST", u"/api/test/mail/sign"_s,
            QJsonDocument(
                QJsonObject { { u"url"_s, good }, { u"expiresAt"_s, QDateTime::currentSecsSinceEpoch() - 1 } })
                .toJson());
        path = u"/api/tarn-mail/img?"_s + signedAnswer.json().value("query"_L1).toString();
    } else if (change == "unsigned"_L1)
        path = u"/api/tarn-mail/img?u="_s + paths.at(0).path.section(u"u="_s, 1).section(u'&', 0, 0);

    try {
        const QByteArray image = tarnWaitFor(TarnMailCalls::proxyImage(*owner, path));
        QCOMPARE(status, 200);
        QVERIFY(image.startsWith("\x89PNG"));
    } catch (const TarnAPIError &error) {
        QVERIFY2(status != 200, qPrintable(error.text()));
        const QString message
            = status == 403 ? u"This image link is not signed or has expired."_s : u"The image could not be fetched."_s;
        QCOMPARE(error.text(), message);
    }
}

void TestMailCalls::threadAndAttachment()
{
    const QString id = threadWith(u"RE: Clay order for December"_s);
    QVERIFY(!id.isEmpty());
    const TarnMailThread thread = tarnWaitFor(TarnMailCalls::thread(*owner, id)).thread;
    QCOMPARE(thread.messages.size(), 1);
    const TarnMailMessage &message = thread.messages.first();
    QVERIFY(message.html && message.html->contains("MsoNormal"_L1));
    QCOMPARE(message.cc.value_or(QList<TarnMailPerson>()).size(), 1);
    QCOMPARE(message.attachments.size(), 1);
    const TarnMailDownloadedFile file
        = tarnWaitFor(TarnMailCalls::attachment(*owner, id, message.id, message.attachments.first().id));
    QCOMPARE(file.name, u"quotation-Q-5512.pdf"_s);
    QVERIFY(file.data().value_or(QByteArray()).startsWith("%PDF"));
    QCOMPARE(file.size, message.attachments.first().size);
    // Opening it read it.
    QVERIFY(!findCard(*owner, u"inbox"_s, u"RE: Clay order for December"_s)->unread);
    QCOMPARE(failureOf(TarnMailCalls::thread(*recipient, id)), u"That conversation does not exist."_s);
}

void TestMailCalls::replyDrafts()
{
    const TarnMailReplyDrafts before = tarnWaitFor(TarnMailCalls::replyDrafts(*owner));
    QVERIFY(before.enabled);
    QCOMPARE(before.drafts.size(), 2);
    const TarnMailReplyDraft first = before.drafts.at(0);
    const TarnMailReplyDraft second = before.drafts.at(1);
    tarnWaitFor(TarnMailCalls::actOnReplyDraft(*owner, first.id, true, {}));
    tarnWaitFor(TarnMailCalls::actOnReplyDraft(*owner, second.id, false, u"Ask for delivery on the 8th."_s));
    const TarnMailReplyDrafts after = tarnWaitFor(TarnMailCalls::replyDrafts(*owner));
    QCOMPARE(after.drafts.size(), 1);
    QCOMPARE(after.drafts.first().id, second.id);
    QVERIFY(after.drafts.first().draft.contains("Ask for delivery on the 8th."_L1));
    QCOMPARE(
        failureOf(TarnMailCalls::actOnReplyDraft(*owner, first.id, true, {})), u"That draft is no longer waiting."_s);
}

void TestMailCalls::sendAsAndLabels()
{
    const TarnMailAccounts accounts = tarnWaitFor(TarnMailCalls::accounts(*owner));
    QCOMPARE(accounts.accounts.size(), 2);
    QCOMPARE(accounts.accounts.first().email, maren);

    TarnMailSend shared = mail(u"From the shared address"_s);
    shared.from = accounts.accounts.at(1).email;
    QVERIFY(makeDue(tarnWaitFor(TarnMailCalls::send(*owner, shared)).sendId));
    const std::optional<TarnMailCard> card = findCard(*recipient, u"inbox"_s, u"From the shared address"_s);
    QVERIFY(card);
    QCOMPARE(card->from, accounts.accounts.at(1));
    TarnMailSend foreign = mail(u"Not mine to send as"_s);
    foreign.from = tomas;
    QCOMPARE(failureOf(TarnMailCalls::send(*owner, foreign)), u"This mailbox cannot send as that address."_s);

    const QString thread = threadWith(u"From the shared address"_s);
    const QList<TarnMailLabel> labels = tarnWaitFor(TarnMailCalls::labels(*owner)).labels;
    QCOMPARE(labels.size(), 3);
    tarnWaitFor(TarnMailCalls::perform(*owner, TarnMailAction::label(labels.first().id, true), thread));
    tarnWaitFor(TarnMailCalls::perform(*owner, TarnMailAction::label(labels.first().id, false), thread));
    QCOMPARE(failureOf(TarnMailCalls::perform(*owner, TarnMailAction::label(u"lbl-none"_s, true), thread)),
        u"That label does not exist."_s);
    QCOMPARE(failureOf(TarnMailCalls::perform(*recipient, TarnMailAction::label(labels.first().id, true), thread)),
        u"That conversation does not exist."_s);
}

QTEST_GUILESS_MAIN(TestMailCalls)
#include "tst_mailcalls.moc"
