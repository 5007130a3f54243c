#include "money/MoneyTestSession.h"
#include "money/NativeBooksTransactions.h"
#include "money/TarnBooksCalls.h"
#include "money/TarnPaymentsCalls.h"

#include <QTest>

using namespace Qt::StringLiterals;

// The Transactions and Invoices pages over the demo books and payments.
class TestBooksTransactions : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void searchAndSources();
};

void TestBooksTransactions::searchAndSources()
{
    MoneyTestSession session;
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    const TarnPaymentsTerminal terminal = tarnWaitFor(TarnPaymentsCalls::payments(*session.api));
    NativeBooksTransactions pages;
    pages.show(tarnWaitFor(TarnBooksCalls::books(*session.api)), terminal.payments, terminal.open_invoices);

    QAbstractListModel *list = pages.transactions();
    const int all = list->rowCount();
    QVERIFY(all > 150);
    const QHash<int, QByteArray> roles = list->roleNames();
    const auto column = [&](const QByteArray &role) {
        QSet<QString> values;
        for (int row = 0; row < list->rowCount(); ++row)
            values.insert(list->data(list->index(row), roles.key(role)).toString());
        return values;
    };
    QCOMPARE(column("source"), (QSet<QString> { u"books"_s, u"payments"_s, u"mercury"_s }));

    pages.setSource(u"payments"_s);
    QCOMPARE(column("source"), QSet<QString> { u"payments"_s });
    pages.setSource(u"all"_s);
    pages.setQuery(u"  NORTHWOOD "_s);
    QVERIFY(list->rowCount() > 0 && list->rowCount() < all);
    for (const QString &title : column("title"))
        QVERIFY2(title.contains(u"Northwood"_s), qPrintable(title));
    pages.setQuery(QString());
    QCOMPARE(list->rowCount(), all);

    // Open invoices of the books and of the terminal come first.
    QAbstractListModel *invoices = pages.invoices();
    QVERIFY(invoices->rowCount() > terminal.open_invoices.size());
    QVERIFY(invoices->data(invoices->index(0), invoices->roleNames().key("open")).toBool());
}

QTEST_GUILESS_MAIN(TestBooksTransactions)
#include "tst_books_transactions.moc"
