#include "money/MoneyTestSession.h"
#include "money/NativeBooksView.h"

#include <QDate>
#include <QMap>
#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

QVariant cell(QAbstractItemModel *model, int row, const char *role)
{
    return model->data(model->index(row, 0), model->roleNames().key(role));
}

} // namespace

// The books area's state against the demo company, as its owner and as a
// books keeper without the payments terminal.
class TestBooksView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void pagesFromOneOverview();
    void linkAndPostActivity();
    void invoicePostedToItsIncome_data();
    void invoicePostedToItsIncome();
    void reverseAndVoid();
    void withoutTheTerminal();
    void documentsUnderWhatTheySettle();
    void voidDocument_data();
    void voidDocument();
    void changesSayWhatWasDone_data();
    void changesSayWhatWasDone();

private:
    // Runs the action and waits until the books are loaded again.
    void settle(const std::function<void()> &action);

    MoneyTestSession session;
    std::unique_ptr<NativeBooksView> view;
};

void TestBooksView::init()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    view = std::make_unique<NativeBooksView>(*session.api);
    settle([this] { view->reload(); });
}

void TestBooksView::settle(const std::function<void()> &action)
{
    QSignalSpy loaded(view.get(), &NativeBooksView::stateChanged);
    action();
    while (loaded.isEmpty() || view->loading() || view->busy())
        QVERIFY(loaded.wait());
    QCOMPARE(view->error(), QString());
}

void TestBooksView::pagesFromOneOverview()
{
    QCOMPARE(view->company(), u"Halvard & Co. LLC"_s);
    QCOMPARE(view->bankAccounts().size(), 1);
    QAbstractListModel *accounts = view->accounts();
    QCOMPARE(accounts->data(accounts->index(0), accounts->roleNames().key("group")).toString(), u"Assets"_s);
    QVERIFY(view->transactions()->transactions()->rowCount() > 150);
    QCOMPARE(view->bankRows()->unmatched()->rowCount(), 3);
    QSignalSpy drawn(view->dashboard(), &NativeBooksDashboard::changed);
    while (view->dashboard()->loading())
        QVERIFY(drawn.wait());
    QCOMPARE(view->dashboard()->bars()->rowCount(), 24);
}

void TestBooksView::linkAndPostActivity()
{
    QCOMPARE(view->sourceTitle(), u"Tarn activity is not linked"_s);
    QVERIFY(!view->sourceDetail().isEmpty());
    settle([this] { view->setSourceLinked(true); });
    QCOMPARE(view->sourceTitle(), u"Connected to this legal company. Review each eligible record before posting it."_s);
    QAbstractListModel *records = view->sourceRecords();
    const int waiting = records->rowCount();
    QVERIFY(waiting > 0);
    const QHash<int, QByteArray> roles = records->roleNames();
    const QString kind = records->data(records->index(0), roles.key("kind")).toString();
    const QString id = records->data(records->index(0), roles.key("recordId")).toString();
    settle([&] { view->postSource(kind, id, QString()); });
    QCOMPARE(view->formError(), QString());
    QCOMPARE(records->rowCount(), waiting - 1);
}

void TestBooksView::reverseAndVoid()
{
    QVERIFY(!view->reverseEntry(u"je-1"_s, u"2026-02-30"_s));
    QCOMPARE(view->formError(), u"Give the day as YYYY-MM-DD."_s);
    QAbstractListModel *invoices = view->transactions()->invoices();
    const int openBefore = invoices->rowCount();
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    // An invoice still owed, with no payment applied: void it.
    QString owed;
    const QHash<int, QByteArray> roles = invoices->roleNames();
    for (int row = 0; row < invoices->rowCount() && owed.isEmpty(); ++row) {
        const QModelIndex at = invoices->index(row);
        if (invoices->data(at, roles.key("status")).toString() == "Open"_L1)
            owed = invoices->data(at, roles.key("invoiceId")).toString();
    }
    QVERIFY(!owed.isEmpty());
    settle([&] { QVERIFY(view->voidRecord(u"invoice"_s, owed, today)); });
    QCOMPARE(view->formError(), QString());
    QCOMPARE(invoices->rowCount(), openBefore);
    for (int row = 0; row < invoices->rowCount(); ++row) {
        const QModelIndex at = invoices->index(row);
        if (invoices->data(at, roles.key("invoiceId")).toString() == owed)
            QCOMPARE(invoices->data(at, roles.key("status")).toString(), u"Voided"_s);
    }
}

void TestBooksView::withoutTheTerminal()
{
    // Tomas keeps the books but has no Payments app: the books alone.
    const QString failed = session.signInAs(u"tomas@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    view = std::make_unique<NativeBooksView>(*session.api);
    settle([this] { view->reload(); });
    view->transactions()->setSource(u"payments"_s);
    QCOMPARE(view->transactions()->transactions()->rowCount(), 0);
    view->transactions()->setSource(u"books"_s);
    QVERIFY(view->transactions()->transactions()->rowCount() > 0);
}

// Each bill leads its payments and each invoice's receipts stay together, so
// a list drawn in sections shows every payment under what it paid.
void TestBooksView::documentsUnderWhatTheySettle()
{
    for (QAbstractListModel *documents : { view->bills(), view->receipts() }) {
        QVERIFY(documents->rowCount() > 10);
        QSet<QString> closed;
        QString current;
        for (int row = 0; row < documents->rowCount(); ++row) {
            const QString section = cell(documents, row, "section").toString();
            if (section == current)
                continue;
            QVERIFY2(!closed.contains(section), qPrintable(section));
            closed.insert(current);
            current = section;
            if (documents == view->bills())
                QCOMPARE(cell(documents, row, "kind").toString(), u"bill"_s);
        }
    }
}

struct IncomeRow {
    QString chosen;
    // The account the sale lands in; none when the choice is refused.
    QString credited;
};
Q_DECLARE_METATYPE(IncomeRow)

void TestBooksView::invoicePostedToItsIncome_data()
{
    QTest::addColumn<IncomeRow>("row");
    QTest::addRow("left to the books") << IncomeRow { QString(), u"acct-4000"_s };
    QTest::addRow("design services chosen") << IncomeRow { u"acct-4100"_s, u"acct-4100"_s };
    QTest::addRow("refused: an expense account") << IncomeRow { u"acct-6000"_s, QString() };
}

// The chosen income account reaches the ledger: only it moves, and an
// account that takes no income is refused with nothing posted.
void TestBooksView::invoicePostedToItsIncome()
{
    QFETCH(IncomeRow, row);
    settle([this] { view->setSourceLinked(true); });
    QCOMPARE(cell(view->sourceRecords(), 0, "kind").toString(), u"invoice"_s);
    const QVariantList choices = view->incomeChoices();
    QCOMPARE(choices.first().toMap().value(u"id"_s).toString(), QString());
    QCOMPARE(choices.size(), 3);
    QAbstractListModel *accounts = view->accounts();
    const auto balances = [accounts] {
        QMap<QString, QString> byID;
        for (int at = 0; at < accounts->rowCount(); ++at)
            byID.insert(cell(accounts, at, "accountId").toString(), cell(accounts, at, "balance").toString());
        return byID;
    };
    const QMap<QString, QString> before = balances();
    const int waiting = view->sourceRecords()->rowCount();
    const QString id = cell(view->sourceRecords(), 0, "recordId").toString();
    settle([&] { view->postSource(u"invoice"_s, id, row.chosen); });
    QCOMPARE(view->formError().isEmpty(), !row.credited.isEmpty());
    QCOMPARE(view->sourceRecords()->rowCount(), row.credited.isEmpty() ? waiting : waiting - 1);
    const QMap<QString, QString> after = balances();
    for (const QString &income : { u"acct-4000"_s, u"acct-4100"_s })
        QCOMPARE(after.value(income) != before.value(income), income == row.credited);
}

struct VoidRow {
    bool receipts;
    // Voided in this order, each under the first's section.
    QStringList kinds;
};
Q_DECLARE_METATYPE(VoidRow)

void TestBooksView::voidDocument_data()
{
    QTest::addColumn<VoidRow>("row");
    QTest::addRow("payment, then its bill") << VoidRow { false, { u"bill_payment"_s, u"bill"_s } };
    QTest::addRow("receipt") << VoidRow { true, { u"receipt"_s } };
}

// Voided through its own kind's path: the record reads "Voided" and is no
// longer offered. A paid bill is offered only once its payment is voided,
// and is owed again until then.
void TestBooksView::voidDocument()
{
    QFETCH(VoidRow, row);
    QAbstractListModel *documents = row.receipts ? view->receipts() : view->bills();
    const auto find = [&](const QString &kind, const QString &section) {
        for (int at = 0; at < documents->rowCount(); ++at) {
            if (cell(documents, at, "kind").toString() == kind
                && (section.isEmpty() ? cell(documents, at, "voidable").toBool()
                                      : cell(documents, at, "section").toString() == section))
                return at;
        }
        return -1;
    };
    const int first = find(row.kinds.first(), QString());
    QVERIFY(first >= 0);
    const QString section = cell(documents, first, "section").toString();
    for (const QString &later : row.kinds.mid(1))
        QVERIFY(!cell(documents, find(later, section), "voidable").toBool());
    for (const QString &kind : row.kinds) {
        int at = find(kind, section);
        QVERIFY(at >= 0);
        QVERIFY(cell(documents, at, "voidable").toBool());
        const QString id = cell(documents, at, "recordId").toString();
        settle([&] { QVERIFY(view->voidRecord(kind, id, QDate::currentDate().toString(Qt::ISODate))); });
        QCOMPARE(view->formError(), QString());
        at = find(kind, section);
        QCOMPARE(cell(documents, at, "recordId").toString(), id);
        QCOMPARE(cell(documents, at, "status").toString(), u"Voided"_s);
        QVERIFY(!cell(documents, at, "voidable").toBool());
        if (kind == "bill_payment"_L1)
            QVERIFY(cell(documents, find(u"bill"_s, section), "status").toString().endsWith(u" remaining"_s));
    }
}

using Change = std::function<void(NativeBooksView &)>;
Q_DECLARE_METATYPE(Change)

void TestBooksView::changesSayWhatWasDone_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("said");
    QTest::addRow("company renamed") << Change([](NativeBooksView &v) { v.setCompany(u"Halvard Works LLC"_s); })
                                     << u"Company name saved"_s;
    QTest::addRow("activity linked") << Change([](NativeBooksView &v) { v.setSourceLinked(true); })
                                     << u"Tarn activity linked"_s;
    QTest::addRow("entry reversed") << Change([](NativeBooksView &v) {
        QAbstractListModel *entries = v.transactions()->transactions();
        v.transactions()->setSource(u"books"_s);
        const QString entry = entries->data(entries->index(0), entries->roleNames().key("transactionId")).toString();
        v.reverseEntry(entry, QDate::currentDate().toString(Qt::ISODate));
    }) << u"Entry reversed"_s;
    QTest::addRow("bank row categorized") << Change([](NativeBooksView &v) {
        QAbstractListModel *rows = v.bankRows()->unmatched();
        v.bankRows()->categorize(rows->data(rows->index(0), Qt::UserRole + 1).toString(), u"acct-6400"_s);
    }) << u"Categorized"_s;
    QTest::addRow("refused: no such day")
        << Change([](NativeBooksView &v) { v.voidRecord(u"invoice"_s, u"ci-1"_s, u"2026-02-30"_s); }) << QString();
}

// A change the service took says so once, after which the books are loaded
// again; one refused here says nothing.
void TestBooksView::changesSayWhatWasDone()
{
    QFETCH(Change, change);
    QFETCH(QString, said);
    QSignalSpy done(view.get(), &NativeBooksView::done);
    if (said.isEmpty()) {
        change(*view);
        QVERIFY(!view->formError().isEmpty());
    } else {
        settle([&] { change(*view); });
        QCOMPARE(view->formError(), QString());
    }
    QCOMPARE(done.size(), said.isEmpty() ? 0 : 1);
    if (!said.isEmpty())
        QCOMPARE(done.first().first().toString(), said);
}

QTEST_GUILESS_MAIN(TestBooksView)
#include "tst_books_view.moc"
