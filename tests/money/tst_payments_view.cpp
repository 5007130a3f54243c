#include "money/MoneyTestSession.h"
#include "money/NativePaymentsView.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The value of a role for the row whose first role is `key`.
QVariant cell(QAbstractListModel *model, const QString &key, const QByteArray &role)
{
    const QHash<int, QByteArray> names = model->roleNames();
    for (int row = 0; row < model->rowCount(); ++row) {
        const QModelIndex index = model->index(row);
        if (model->data(index, names.keys(names.value(Qt::UserRole + 1)).value(0)).toString() == key)
            return model->data(index, names.key(role));
    }
    return {};
}

QStringList chargeKeys(TestWorkspace &workspace)
{
    QStringList keys;
    for (const QJsonValue &request : workspace.requests()) {
        const QJsonObject sent = request.toObject();
        if (sent.value("path"_L1).toString() == "/api/payments-terminal/charge"_L1) {
            keys.append(QJsonDocument::fromJson(sent.value("body"_L1).toString().toUtf8())
                            .object()
                            .value("request_key"_L1)
                            .toString());
        }
    }
    return keys;
}

} // namespace

// The payments screen's state against the demo workspace, without a window.
class TestPaymentsView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void listAndFilter();
    void refundRequestedThenApproved();
    void invalidAmountIsNotSent();
    void chargeRetriedWithTheSameKey();
    void recordedPaymentMarkedPaid();
    void staleMarkShowsTheirChange();

private:
    // Runs the action and waits for the list loaded after it.
    void settle(const std::function<void()> &action);

    MoneyTestSession session;
    std::unique_ptr<NativePaymentsView> view;
};

void TestPaymentsView::init()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    view = std::make_unique<NativePaymentsView>(*session.api);
    settle([this] { view->reload(); });
    // The client panel reads its client after the list.
    QTRY_VERIFY(!view->client()->clientId().isEmpty() && !view->client()->loading());
}

void TestPaymentsView::settle(const std::function<void()> &action)
{
    QSignalSpy changed(view.get(), &NativePaymentsView::stateChanged);
    action();
    while (changed.isEmpty() || view->loading() || view->busy())
        QVERIFY(changed.wait());
}

void TestPaymentsView::listAndFilter()
{
    QCOMPARE(view->error(), QString());
    const int all = view->payments()->rowCount();
    QVERIFY(all >= 13);
    QVERIFY(view->receivedCount() > 0);
    QVERIFY(view->receivedTotal().startsWith(u'$'));
    QCOMPARE(cell(view->payments(), u"pay-1032"_s, "pill").toString(), u"Refund requested"_s);
    QCOMPARE(cell(view->payments(), u"pay-1032"_s, "tone").toInt(), 2);

    view->setFilter(u"refunded"_s);
    const int refunded = view->payments()->rowCount();
    QVERIFY(refunded >= 2 && refunded < all);
    QVERIFY(!cell(view->payments(), u"refund-rr-2"_s, "pill").isNull());
    view->setFilter(u"pending"_s);
    QCOMPARE(cell(view->payments(), u"pay-1034"_s, "tone").toInt(), 1);
    QVERIFY(cell(view->payments(), u"pay-1031"_s, "pill").isNull());

    // Signing out leaves nothing of this person's terminal behind.
    view->clear();
    QCOMPARE(view->payments()->rowCount(), 0);
    QCOMPARE(view->openInvoices()->rowCount(), 0);
    QCOMPARE(view->receivedCount(), 0);
}

void TestPaymentsView::refundRequestedThenApproved()
{
    QVERIFY(cell(view->payments(), u"pay-1031"_s, "refundable").toBool());
    settle([this] { QVERIFY(view->requestRefund(u"pay-1031"_s, u"480.00"_s, u"Returned"_s)); });
    QCOMPARE(view->formError(), QString());
    QCOMPARE(cell(view->payments(), u"pay-1031"_s, "pill").toString(), u"Refund requested"_s);
    QVERIFY(!cell(view->payments(), u"pay-1031"_s, "refundable").toBool());
    const QString request = cell(view->payments(), u"pay-1031"_s, "requestId").toString();
    QVERIFY(!request.isEmpty());

    settle([&] { view->decideRefund(request, true, u"Checked"_s); });
    QCOMPARE(cell(view->payments(), u"pay-1031"_s, "pill").toString(), u"Refunded"_s);
    QCOMPARE(cell(view->payments(), u"pay-1031"_s, "tone").toInt(), 3);

    // A denied request puts the payment back as it was.
    settle([this] { QVERIFY(view->requestRefund(u"pay-1033"_s, u"10"_s, u"Wrong size"_s)); });
    const QString denied = cell(view->payments(), u"pay-1033"_s, "requestId").toString();
    settle([&] { view->decideRefund(denied, false, QString()); });
    QCOMPARE(cell(view->payments(), u"pay-1033"_s, "pill").toString(), u"Paid"_s);
}

void TestPaymentsView::invalidAmountIsNotSent()
{
    session.workspace->clearRequests();
    for (const QString &typed : { u"12.345"_s, u"-5"_s, u"0"_s, u"480.01"_s, u"abc"_s })
        QVERIFY2(!view->requestRefund(u"pay-1031"_s, typed, u"Returned"_s), qPrintable(typed));
    QCOMPARE(view->formError(), u"Type an amount from 0.01 to 480.00."_s);
    QVERIFY(!view->recordOffline(u"inv-1043"_s, u"Cheque 1"_s, u"2026-02-30"_s));
    QCOMPARE(view->formError(), u"Give the day it was paid as YYYY-MM-DD."_s);
    QCOMPARE(session.workspace->requests().size(), 0);
}

void TestPaymentsView::chargeRetriedWithTheSameKey()
{
    const QString invoice = u"inv-1043"_s;
    QSignalSpy cardsLoaded(view->cards(), &QAbstractItemModel::rowsInserted);
    view->chooseInvoice(invoice);
    QVERIFY(cardsLoaded.wait());
    const QString card = view->cards()->data(view->cards()->index(0), Qt::UserRole + 1).toString();
    QVERIFY(!card.isEmpty());

    // The connection breaks before the answer comes back.
    const int listed = view->payments()->rowCount();
    session.workspace->clearRequests();
    session.workspace->setFault(QJsonObject { { u"method"_s, u"POST"_s },
        { u"path"_s, u"/api/payments-terminal/charge"_s }, { u"status"_s, 502 }, { u"content_type"_s, u"text/plain"_s },
        { u"body"_s, u"Bad gateway"_s }, { u"times"_s, 1 } });
    settle([&] { view->charge(invoice, card); });
    QVERIFY(!view->formError().isEmpty());
    QVERIFY(!cell(view->openInvoices(), invoice, "remaining").isNull());

    settle([&] { view->charge(invoice, card); });
    QCOMPARE(view->formError(), QString());
    const QStringList keys = chargeKeys(*session.workspace);
    QCOMPARE(keys.size(), 2);
    QCOMPARE(keys.at(1), keys.at(0));
    QCOMPARE(view->payments()->rowCount(), listed + 1);
    QVERIFY(cell(view->openInvoices(), invoice, "remaining").isNull());
}

void TestPaymentsView::recordedPaymentMarkedPaid()
{
    session.workspace->clearRequests();
    const QString marlow = u"c-marlow"_s;
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    QVERIFY(!view->recordPayment({}, u"10"_s, false, u"Transfer"_s, today));
    QCOMPARE(view->formError(), u"Choose who paid."_s);
    QVERIFY(!view->recordPayment(marlow, u"1.005"_s, false, u"Transfer"_s, today));
    QVERIFY(!view->recordPayment(marlow, u"10"_s, false, u" "_s, today));
    QVERIFY(!view->recordPayment(marlow, u"10"_s, false, u"Transfer"_s, u"2026-11-31"_s));
    QCOMPARE(view->formError(), u"Give the day it was paid as YYYY-MM-DD."_s);
    QCOMPARE(session.workspace->requests().size(), 0);

    const int listed = view->payments()->rowCount();
    settle([&] { QVERIFY(view->recordPayment(marlow, u"1,250.50"_s, false, u" Transfer 55 "_s, today)); });
    QCOMPARE(view->formError(), QString());
    QCOMPARE(view->payments()->rowCount(), listed + 1);
    QString recorded;
    for (int row = 0; row < view->payments()->rowCount(); ++row) {
        const QModelIndex index = view->payments()->index(row);
        if (index.data(view->payments()->roleNames().key("detail")).toString() == u"Offline · Transfer 55"_s)
            recorded = index.data(Qt::UserRole + 1).toString();
    }
    QVERIFY(!recorded.isEmpty());
    QCOMPARE(cell(view->payments(), recorded, "amount").toString(), u"$1,250.50"_s);
    QVERIFY(cell(view->payments(), recorded, "markable").toBool());
    // Card payments are never marked by hand.
    QVERIFY(!cell(view->payments(), u"pay-1034"_s, "markable").toBool());

    settle([&] { view->markPaid(recorded); });
    QCOMPARE(view->formError(), QString());
    QCOMPARE(cell(view->payments(), recorded, "pill").toString(), u"Paid"_s);
    QVERIFY(!cell(view->payments(), recorded, "markable").toBool());
}

void TestPaymentsView::staleMarkShowsTheirChange()
{
    const QString id = u"pay-offline-1"_s;
    QVERIFY(cell(view->payments(), id, "markable").toBool());
    // Someone else corrects the reference after this screen read it.
    const TestWorkspace::Answer theirs = session.send("PATCH", u"api/payments-terminal/payments/"_s + id,
        QJsonObject { { u"version"_s, 1 }, { u"reference"_s, u"Transfer 2291"_s } });
    QCOMPARE(theirs.status, 200);
    settle([&] { view->markPaid(id); });
    QCOMPARE(view->formError(), u"Someone changed this payment in the meantime; it now shows their change."_s);
    QCOMPARE(cell(view->payments(), id, "detail").toString(), u"Offline · Transfer 2291"_s);
    QCOMPARE(cell(view->payments(), id, "pill").toString(), u"Pending"_s);
}

QTEST_GUILESS_MAIN(TestPaymentsView)
#include "tst_payments_view.moc"
