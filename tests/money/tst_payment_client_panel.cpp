#include "money/MoneyTestSession.h"
#include "money/NativePaymentClientPanel.h"
#include "money/NativePaymentsView.h"

#include <QDate>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList column(QAbstractListModel *model, const QByteArray &role)
{
    QStringList values;
    for (int row = 0; row < model->rowCount(); ++row)
        values.append(model->index(row).data(model->roleNames().key(role)).toString());
    return values;
}

} // namespace

// The chosen client's cards, schedules and card sessions on the payments
// screen, driven without a window against the demo workspace.
class TestPaymentClientPanel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void lastPayerChosenWithTheirSchedule();
    void schedulePausedAndRefused();
    void cardAddedThroughTheBrowser();
    void expiredSessionStopsFollowing();
    void cancelStopsFollowing();

private:
    // Runs the action and waits until the panel has read the client again.
    void settle(const std::function<void()> &action);
    // Starts a card session and answers the page's address.
    QString openCardPage();

    MoneyTestSession session;
    std::unique_ptr<NativePaymentsView> view;
    NativePaymentClientPanel *panel = nullptr;
    QList<QUrl> opened;
};

void TestPaymentClientPanel::init()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    view = std::make_unique<NativePaymentsView>(*session.api);
    panel = view->client();
    opened.clear();
    panel->setOpener([this](const QUrl &url) {
        opened.append(url);
        return true;
    });
    QSignalSpy chosen(panel, &NativePaymentClientPanel::clientChanged);
    view->reload();
    QVERIFY(chosen.wait());
    QTRY_VERIFY(!panel->loading() && panel->cards()->rowCount() > 0);
}

void TestPaymentClientPanel::settle(const std::function<void()> &action)
{
    QSignalSpy read(panel, &NativePaymentClientPanel::stateChanged);
    action();
    while (read.isEmpty() || panel->loading() || panel->busy())
        QVERIFY(read.wait());
}

QString TestPaymentClientPanel::openCardPage()
{
    QSignalSpy progress(panel, &NativePaymentClientPanel::cardSessionChanged);
    panel->addCard();
    while (opened.isEmpty())
        if (!progress.wait())
            return {};
    return opened.last().toString();
}

void TestPaymentClientPanel::lastPayerChosenWithTheirSchedule()
{
    // The demo's newest payment is today's run of Tidewater Yoga's weekly charge.
    QCOMPARE(panel->clientId(), u"c-tidewater"_s);
    QCOMPARE(column(panel->cards(), "label"),
        QStringList {
            u"Discover ending 6011, expires %1"_s.arg(QDate::currentDate().addYears(2).toString(u"MM/yy"_s)) });
    QCOMPARE(column(panel->schedules(), "interval"), QStringList { u"weekly"_s });
    QCOMPARE(column(panel->schedules(), "card"), QStringList { u"Discover ending 6011"_s });
    QCOMPARE(column(panel->schedules(), "amount"), QStringList { u"$85.00"_s });

    settle([this] { panel->setClientId(u"c-harbor"_s); });
    QCOMPARE(panel->cards()->rowCount(), 0);
    QCOMPARE(panel->schedules()->rowCount(), 0);
    QCOMPARE(panel->errorText(), QString());
}

void TestPaymentClientPanel::schedulePausedAndRefused()
{
    const QString schedule = column(panel->schedules(), "scheduleId").value(0);
    settle([&] { panel->pauseSchedule(schedule); });
    QCOMPARE(column(panel->schedules(), "status"), QStringList { u"Paused"_s });
    // Another screen paused it too: the refusal shows over the service's state.
    settle([&] { panel->pauseSchedule(schedule); });
    QCOMPARE(panel->errorText(), u"This schedule is already paused."_s);
    QCOMPARE(column(panel->schedules(), "status"), QStringList { u"Paused"_s });

    session.workspace->clearRequests();
    const QString card = column(panel->cards(), "profileId").value(0);
    const QString tomorrow = QDate::currentDate().addDays(1).toString(Qt::ISODate);
    QVERIFY(!panel->createSchedule(card, u"0"_s, u"monthly"_s, tomorrow));
    QVERIFY(!panel->createSchedule(card, u"20"_s, u"daily"_s, tomorrow));
    QVERIFY(!panel->createSchedule({}, u"20"_s, u"monthly"_s, tomorrow));
    QCOMPARE(panel->errorText(), u"Choose a saved card to charge."_s);
    QCOMPARE(session.workspace->requests().size(), 0);
    settle([&] { QVERIFY(panel->createSchedule(card, u"20"_s, u"monthly"_s, tomorrow)); });
    QCOMPARE(panel->errorText(), QString());
    // Soonest first.
    QCOMPARE(column(panel->schedules(), "status"), (QStringList { u"Active"_s, u"Paused"_s }));
}

void TestPaymentClientPanel::cardAddedThroughTheBrowser()
{
    const QString page = openCardPage();
    QVERIFY(panel->following());
    const QString expiry = QDate::currentDate().addYears(3).toString(u"MM%2Fyy"_s);
    const TestWorkspace::Answer saved = session.workspace->send("POST", QUrl(page).path(),
        "number=4000056655665556&cvc=999&expiry=" + expiry.toLatin1(),
        { { "Content-Type", "application/x-www-form-urlencoded" } });
    QCOMPARE(saved.status, 200);

    QSignalSpy cards(panel->cards(), &QAbstractItemModel::rowsInserted);
    QTRY_VERIFY_WITH_TIMEOUT(!panel->following(), 10000);
    QVERIFY(cards.count() > 0 || cards.wait());
    QCOMPARE(panel->cardSessionText(),
        u"Saved the Visa ending 5556, expires %1."_s.arg(QUrl::fromPercentEncoding(expiry.toLatin1())));
    QCOMPARE(column(panel->cards(), "cardType"), (QStringList { u"Discover"_s, u"Visa"_s }));
}

void TestPaymentClientPanel::expiredSessionStopsFollowing()
{
    const QString token = QUrl(openCardPage()).path().section(u'/', -1);
    QVERIFY(!token.isEmpty());
    const QString expire = u"api/test/payments-terminal/card-sessions/%1/expire"_s.arg(token);
    QCOMPARE(session.workspace->send("POST", expire).status, 200);
    QSignalSpy stopped(panel, &NativePaymentClientPanel::cardSessionChanged);
    QVERIFY(stopped.wait(NativePaymentClientPanel::followIntervalMs * 3));
    QVERIFY(!panel->following());
    QCOMPARE(panel->cardSessionText(), u"The card page expired after 15 minutes. Add the card again."_s);
}

void TestPaymentClientPanel::cancelStopsFollowing()
{
    const QString page = openCardPage();
    QVERIFY(!page.isEmpty());
    panel->cancelCard();
    QVERIFY(!panel->following());
    QCOMPARE(panel->cardSessionText(), QString());
    // Completed after the cancel: nobody is asking any more.
    session.workspace->clearRequests();
    const QString expiry = QDate::currentDate().addYears(1).toString(u"MM%2Fyy"_s);
    QCOMPARE(session.workspace
                 ->send("POST", QUrl(page).path(), "number=6011111111111117&cvc=123&expiry=" + expiry.toLatin1(),
                     { { "Content-Type", "application/x-www-form-urlencoded" } })
                 .status,
        200);
    QSignalSpy changed(panel, &NativePaymentClientPanel::cardSessionChanged);
    QVERIFY(!changed.wait(NativePaymentClientPanel::followIntervalMs * 2));
    QCOMPARE(panel->cards()->rowCount(), 1);
    for (const QJsonValue &request : session.workspace->requests())
        QVERIFY(!request.toObject().value("path"_L1).toString().endsWith("/finish"_L1));
}

QTEST_GUILESS_MAIN(TestPaymentClientPanel)
#include "tst_payment_client_panel.moc"
