#include "mail/MailBlockRows.h"
#include "mail/MailTestClient.h"
#include "mail/NativeMailImageProvider.h"
#include "mail/NativeMailView.h"
#include "shell/design/NativeTheme.h"
#include "support/QuickItems.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <algorithm>
#include <memory>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_MailPlugin)

using namespace Qt::StringLiterals;

// The mail screen drawn offscreen over the demo workspace: a conversation
// opened draws each message from its blocks, and the keys act on the list.
class TestMailScreen : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void drawsTheOpenThreadsBlocks();
    void labelsBccAndTheAssistantsInstruction();
    void keysActOnTheList();
    void sendsAndUndoesFromTheComposer();
    void asksBeforeADeceptiveLink();
    void offersToConnectWithoutAMailbox();
    void cleanupTestCase();

private:
    [[nodiscard]] QStringList texts(const QString &name) const
    {
        return tarnTextsOf(tarnNamedItems(window.contentItem(), name));
    }
    void open(const QString &subject);

    MailTestClient client;
    QTemporaryDir folder;
    std::unique_ptr<QSettings> settings;
    std::unique_ptr<NativeMailView> mail;
    std::unique_ptr<NativeTheme> theme;
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QObject> screen;
};

void TestMailScreen::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
    TarnAPI *owner = client.signIn(u"maren@halvard.example"_s);
    QVERIFY(owner);
    mail = std::make_unique<NativeMailView>(*owner);
    settings = std::make_unique<QSettings>(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    theme = std::make_unique<NativeTheme>(*settings);
    theme->attach(engine);
    engine.addImageProvider(u"mail"_s, new NativeMailImageProvider(mail->images()));
    window.resize(1100, 760);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Mail\nMailScreen { width: 1100; height: 760 }", QUrl());
    QSignalSpy loaded(mail.get(), &NativeMailView::listLoaded);
    screen.reset(component.createWithInitialProperties({ { u"mail"_s, QVariant::fromValue(mail.get()) } }));
    auto *item = qobject_cast<QQuickItem *>(screen.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    item->setParentItem(window.contentItem());
    // Once made, the screen loads on its own.
    QVERIFY(loaded.wait(20000));
    QVERIFY(mail->threads()->rowCount() > 0);
}

void TestMailScreen::cleanupTestCase()
{
    screen.reset();
}

void TestMailScreen::open(const QString &subject)
{
    const NativeMailThreadModel &threads = *mail->threads();
    for (int row = 0; row < threads.rowCount(); ++row)
        if (threads.card(threads.ids().at(row))->subject == subject) {
            QSignalSpy parsed(mail.get(), &NativeMailView::threadParsed);
            mail->select(threads.ids().at(row));
            QVERIFY(parsed.wait(20000));
            return;
        }
    QFAIL("not listed");
}

void TestMailScreen::drawsTheOpenThreadsBlocks()
{
    open(u"RE: Clay order for December"_s);
    QTRY_COMPARE(texts(u"threadSubject"_s), QStringList { u"RE: Clay order for December"_s });
    QTRY_VERIFY(texts(u"mailBlockText"_s).contains(u"Dear Maren,"_s));
    // The quotation's table, header row first.
    QTRY_VERIFY(
        texts(u"mailTableCell"_s).mid(0, 3) == QStringList({ u"<b>Item</b>"_s, u"<b>Qty</b>"_s, u"<b>Price</b>"_s }));

    // Images come through the provider: side by side, never from their host.
    open(u"The Glaze Letter: winter glazes that behave"_s);
    QTRY_VERIFY(tarnNamedItems(window.contentItem(), u"mailImage"_s).size() >= 3);
    for (QQuickItem *image : tarnNamedItems(window.contentItem(), u"mailImage"_s))
        QVERIFY(image->property("source").toUrl().scheme() == "image"_L1);
    QTRY_COMPARE(tarnNamedItems(window.contentItem(), u"mailImage"_s).first()->property("status").toInt(), 1);

    // A long newsletter comes in a screenful at a time, to its last block.
    open(u"The Glaze Letter: the year in glazes (archive issue)"_s);
    const QList<MailBlockRow> rows = MailBlockRows::rows(mail->document(mail->messages()->rows().first().key)->blocks);
    const qsizetype textRows = std::count_if(rows.begin(), rows.end(), [](const MailBlockRow &row) {
        return row.kind == "paragraph"_L1 || row.kind == "heading"_L1 || row.kind == "preformatted"_L1;
    });
    QVERIFY(textRows > 1000);
    QTRY_COMPARE_WITH_TIMEOUT(tarnNamedItems(window.contentItem(), u"mailBlockText"_s).size(), textRows, 20000);
}

void TestMailScreen::labelsBccAndTheAssistantsInstruction()
{
    open(u"RE: Clay order for December"_s);
    QSignalSpy acted(mail.get(), &NativeMailView::actionFinished);
    // The thread menu offers the mailbox's labels, each by its id.
    QObject *studio = nullptr;
    QTRY_VERIFY((studio = screen->findChild<QObject *>(u"lbl-studio"_s)));
    QMetaObject::invokeMethod(studio, "triggered");
    QVERIFY(acted.wait());
    QCOMPARE(mail->errorText(), QString());

    // The assistant's draft rewritten as told.
    QQuickItem *instruction = nullptr;
    QTRY_VERIFY((instruction = tarnNamedItems(window.contentItem(), u"draftInstruction"_s).value(0)));
    instruction->setProperty("text", u"Thursday works, thank you"_s);
    QMetaObject::invokeMethod(tarnNamedItems(window.contentItem(), u"instructDraft"_s).value(0), "clicked");
    QVERIFY(acted.wait());
    QVERIFY(mail->replyDrafts().value(0).toMap().value(u"draft"_s).toString().contains("Thursday works"_L1));
    QCOMPARE(instruction->property("text").toString(), QString());

    // Bcc reaches the draft that is sent.
    mail->reply(false);
    QQuickItem *bcc = nullptr;
    QTRY_VERIFY((bcc = tarnNamedItems(window.contentItem(), u"mailBcc"_s).value(0)));
    bcc->setProperty("text", u"sam@halvard.example"_s);
    QCOMPARE(mail->composer()->bcc(), u"sam@halvard.example"_s);
    mail->composer()->discard();
}

void TestMailScreen::keysActOnTheList()
{
    const QStringList before = mail->threads()->ids();
    mail->select(before.at(1));
    window.requestActivate();
    QTest::keyClick(&window, Qt::Key_J);
    QCOMPARE(mail->selectedThread(), before.at(2));
    QTest::keyClick(&window, Qt::Key_K);
    QCOMPARE(mail->selectedThread(), before.at(1));

    QSignalSpy acted(mail.get(), &NativeMailView::actionFinished);
    QTest::keyClick(&window, Qt::Key_E);
    QVERIFY(acted.wait());
    QVERIFY(!mail->threads()->ids().contains(before.at(1)));
    QCOMPARE(mail->selectedThread(), before.at(2));

    QTest::keyClick(&window, Qt::Key_C);
    QVERIFY(mail->composer()->isOpen());
}

void TestMailScreen::sendsAndUndoesFromTheComposer()
{
    NativeMailComposer &composer = *mail->composer();
    composer.discard();
    window.requestActivate();
    QTest::keyClick(&window, Qt::Key_C);
    QVERIFY(composer.isOpen());
    composer.setTo(u"tomas@halvard.example"_s);
    composer.setSubject(u"From the screen"_s);
    QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier);
    QSignalSpy finished(&composer, &NativeMailComposer::finished);
    QVERIFY(finished.wait());
    QVERIFY(!composer.isOpen());
    QTRY_VERIFY(tarnNamedItems(window.contentItem(), u"sendStatus"_s).size() == 1);

    // While a send waits, the list's keys are the list's again.
    QVERIFY(composer.undoAvailable());
    composer.undo();
    QVERIFY(finished.wait());
    QVERIFY(composer.isOpen());
    QCOMPARE(composer.subject(), u"From the screen"_s);
    composer.discard();
}

void TestMailScreen::asksBeforeADeceptiveLink()
{
    open(u"Your parcel HLV-2291 is on hold"_s);
    const QString message = mail->messages()->rows().first().key;
    QString link;
    for (const TarnMailBlock &block : mail->document(message)->blocks)
        for (const TarnMailRun &run : block.runs())
            if (run.link)
                link = run.link->text();
    mail->openLink(link);
    QTRY_VERIFY(texts(u"pendingLink"_s).contains(u"http://parcel-customs-fee.example/pay?ref=HLV-2291"_s));
    mail->cancelLink();
    QTRY_VERIFY(texts(u"pendingLink"_s).isEmpty());
}

void TestMailScreen::offersToConnectWithoutAMailbox()
{
    TarnAPI *jonah = client.signIn(u"jonah@halvard.example"_s);
    QVERIFY(jonah);
    NativeMailView unconnected(*jonah);
    QQmlComponent component(&engine);
    component.setData("import PiloTarn.Mail\nMailScreen { width: 1100; height: 760 }", QUrl());
    QSignalSpy loaded(&unconnected, &NativeMailView::listLoaded);
    std::unique_ptr<QObject> other(
        component.createWithInitialProperties({ { u"mail"_s, QVariant::fromValue(&unconnected) } }));
    auto *item = qobject_cast<QQuickItem *>(other.get());
    QVERIFY2(item, qPrintable(component.errorString()));
    qobject_cast<QQuickItem *>(screen.get())->setVisible(false);
    item->setParentItem(window.contentItem());
    QVERIFY(loaded.wait(20000));
    QQuickItem *connect = nullptr;
    QTRY_VERIFY((connect = tarnNamedItems(window.contentItem(), u"connectMail"_s).value(0)));
    QCOMPARE(connect->property("text").toString(), u"Connect Google Mail"_s);

    // The button asks the service where the browser starts the connection.
    QSignalSpy started(&unconnected, &NativeMailView::connectStarted);
    QMetaObject::invokeMethod(connect, "clicked");
    QVERIFY(started.wait());
    const QUrl start = started.first().first().toUrl();
    QCOMPARE(start.path(), u"/api/native/google/start"_s);
    QVERIFY(start.query().contains("service=gmail"_L1));
    other.reset();
    qobject_cast<QQuickItem *>(screen.get())->setVisible(true);
}

QTEST_MAIN(TestMailScreen)
#include "tst_mailscreen.moc"
