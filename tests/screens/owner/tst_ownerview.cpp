#include "inbox/InboxTestClient.h"
#include "screens/owner/NativeOwnerView.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

// The dashboard's state against the local workspace and its demo company.
class TestOwnerView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void ownerSeesTheCompany();
    void unchangedRefreshKeepsTheRows();
    void refusalIsShown();

private:
    [[nodiscard]] static bool load(NativeOwnerView &view);

    InboxTestClient client;
};

void TestOwnerView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

bool TestOwnerView::load(NativeOwnerView &view)
{
    QSignalSpy refreshed(&view, &NativeOwnerView::refreshed);
    view.refresh();
    return refreshed.wait(10'000);
}

void TestOwnerView::ownerSeesTheCompany()
{
    NativeOwnerView view(client.as(u"maren@halvard.example"_s));
    QSignalSpy busy(&view, &NativeOwnerView::busyChanged);
    QVERIFY(load(view));
    QVERIFY(busy.count() >= 2);
    QVERIFY(view.loaded() && !view.loading());
    QCOMPARE(view.errorText(), QString());
    QCOMPARE(view.figures()->rowCount(), 8);
    QCOMPARE(view.team()->rowCount(), 6);
    QVERIFY(view.weekLabel().startsWith("Week of "_L1));
    QCOMPARE(view.chartMonths().size(), 2);
    // Every bar fits under the axis's top.
    for (const QVariantList &bars : { view.chartIn(), view.chartOut() }) {
        QCOMPARE(bars.size(), 2);
        for (const QVariant &bar : bars)
            QVERIFY(bar.toDouble() >= 0 && bar.toDouble() <= view.chartTop());
    }
}

void TestOwnerView::unchangedRefreshKeepsTheRows()
{
    NativeOwnerView view(client.as(u"maren@halvard.example"_s));
    QVERIFY(load(view));
    QSignalSpy reset(view.team(), &QAbstractItemModel::modelReset);
    QSignalSpy removed(view.figures(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy snapshot(&view, &NativeOwnerView::snapshotChanged);
    QVERIFY(load(view));
    QCOMPARE(reset.count(), 0);
    QCOMPARE(removed.count(), 0);
    QCOMPARE(snapshot.count(), 0);
}

void TestOwnerView::refusalIsShown()
{
    NativeOwnerView view(client.as(u"priya@halvard.example"_s));
    QVERIFY(load(view));
    QVERIFY(view.loaded());
    QCOMPARE(view.errorText(), u"The dashboard is open to the company's owners."_s);
    QCOMPARE(view.figures()->rowCount(), 0);
}

QTEST_GUILESS_MAIN(TestOwnerView)
#include "tst_ownerview.moc"
