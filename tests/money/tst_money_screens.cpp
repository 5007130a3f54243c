#include "money/MoneyTestSession.h"
#include "money/NativeBooksView.h"
#include "money/NativePaymentsView.h"
#include "shell/design/NativeTheme.h"

#include <QDate>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>
#include <QtQml/QQmlExtensionPlugin>

#include <cstdlib>
#include <functional>

Q_IMPORT_QML_PLUGIN(PiloTarn_DesignPlugin)
Q_IMPORT_QML_PLUGIN(PiloTarn_MoneyPlugin)

using namespace Qt::StringLiterals;

namespace {

QObject *named(QObject *root, const QString &name)
{
    return root->findChild<QObject *>(name);
}

// The value of `role` in the first row whose `match` role holds `value`.
QVariant cell(QAbstractItemModel *model, const QByteArray &match, const QVariant &value, const QByteArray &role)
{
    const QHash<int, QByteArray> roles = model->roleNames();
    const QModelIndexList found = model->match(model->index(0, 0), roles.key(match), value);
    return found.isEmpty() ? QVariant() : found[0].data(roles.key(role));
}

// The object `name` of `page` once it lists something (within ten seconds:
// the page loads when it opens), or null.
QObject *filled(QQuickItem *page, const QString &name)
{
    QObject *list = page ? named(page, name) : nullptr;
    const bool listed = list && QTest::qWaitFor([list] { return list->property("count").toInt() > 0; }, 10000);
    return listed ? list : nullptr;
}

} // namespace

// The money screens drawn offscreen over the demo workspace.
class TestMoneyScreens : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void paymentsFilter();
    void refusedFormStaysOpen_data();
    void refusedFormStaysOpen();
    void approvedRefundShowsRefunded();
    void paymentRecordedAndCardAdded();
    void dashboardDrawsTwoBarsAMonth_data();
    void dashboardDrawsTwoBarsAMonth();
    void dashboardRenamesAndLinks();
    void refusedStatementSendsNothing();
    void booksPagesListTheDemoBooks_data();
    void booksPagesListTheDemoBooks();
    void voidFromItsPage_data();
    void voidFromItsPage();
    void transactionsFollowSearchAndSource();
    void registerPagesAndReverses();
    void statementImportedFromThePage();
    void unbalancedStatementStaysOpen();
    void bankRowCategorizedFromThePage();
    void registerNarrowedToAnAccount();

private:
    // The screen `type` of the module over `view`, shown in the window; the
    // caller keeps it no longer than the view.
    std::unique_ptr<QQuickItem> show(const QByteArray &type, QObject *view);

    MoneyTestSession session;
    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<QSettings> preferences;
    std::unique_ptr<NativeTheme> theme;
    std::unique_ptr<QQmlEngine> engine;
    std::unique_ptr<QQuickWindow> window;
};

void TestMoneyScreens::init()
{
    const QString failed = session.start(u"maren@halvard.example"_s);
    QVERIFY2(failed.isEmpty(), qPrintable(failed));
    folder = std::make_unique<QTemporaryDir>();
    preferences = std::make_unique<QSettings>(folder->filePath(u"prefs.ini"_s), QSettings::IniFormat);
    theme = std::make_unique<NativeTheme>(*preferences);
    engine = std::make_unique<QQmlEngine>();
    theme->attach(*engine);
    window = std::make_unique<QQuickWindow>();
    window->resize(900, 700);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window.get()));
}

void TestMoneyScreens::cleanup()
{
    window.reset();
    engine.reset();
}

std::unique_ptr<QQuickItem> TestMoneyScreens::show(const QByteArray &type, QObject *view)
{
    QQmlComponent component(engine.get());
    component.setData("import PiloTarn.Money\n" + type + " { width: 900; height: 700 }", QUrl());
    // Qt 6.4 crashes creating a component that did not compile.
    if (!component.isReady()) {
        qWarning("%s", qPrintable(component.errorString()));
        return nullptr;
    }
    std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem *>(
        component.createWithInitialProperties({ { u"view"_s, QVariant::fromValue(view) } })));
    if (!item)
        qWarning("%s", qPrintable(component.errorString()));
    else
        item->setParentItem(window->contentItem());
    return item;
}

void TestMoneyScreens::paymentsFilter()
{
    NativePaymentsView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("PaymentsScreen", &view);
    QQuickItem *screen = shown.get();
    QVERIFY(screen);
    auto *list = qobject_cast<QQuickItem *>(named(screen, u"payments"_s));
    QVERIFY(list);
    QTRY_VERIFY(!view.loading() && list->property("count").toInt() > 0);
    const int all = list->property("count").toInt();

    QMetaObject::invokeMethod(named(screen, u"filter-refunded"_s), "clicked");
    QCOMPARE(view.filter(), u"refunded"_s);
    QTRY_VERIFY(list->property("count").toInt() > 0);
    QVERIFY(list->property("count").toInt() < all);
}

struct RefusedForm {
    QString sheet;
    QString field;
    QString reference;
    QString typed;
    QString error;
};
Q_DECLARE_METATYPE(RefusedForm)

void TestMoneyScreens::refusedFormStaysOpen_data()
{
    QTest::addColumn<RefusedForm>("row");
    QTest::addRow("refund above what is left")
        << RefusedForm { u"refundSheet"_s, u"refundAmount"_s, {}, u"99999999"_s, u"Type an amount"_s };
    QTest::addRow("refund not an amount")
        << RefusedForm { u"refundSheet"_s, u"refundAmount"_s, {}, u"1.234"_s, u"Type an amount"_s };
    QTest::addRow("payment without reference")
        << RefusedForm { u"offlineSheet"_s, u"offlineReference"_s, u" "_s, u"2026-01-05"_s, u"Give the payment"_s };
    QTest::addRow("payment on no such day")
        << RefusedForm { u"offlineSheet"_s, u"offlinePaidOn"_s, u"cheque 7"_s, u"2026-02-30"_s, u"Give the day"_s };
}

// A refused form marks its field in place, stays open and sends nothing.
void TestMoneyScreens::refusedFormStaysOpen()
{
    QFETCH(RefusedForm, row);
    NativePaymentsView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("PaymentsScreen", &view);
    QVERIFY(shown);
    QTRY_VERIFY(!view.loading() && view.openInvoices()->rowCount() > 0);
    QObject *sheet = named(shown.get(), row.sheet);
    QVERIFY(sheet);
    if (row.sheet == "refundSheet"_L1) {
        const QString payment = cell(view.payments(), "refundable", true, "paymentId").toString();
        QVERIFY(QMetaObject::invokeMethod(
            sheet, "ask", Q_ARG(QString, payment), Q_ARG(QString, u"client"_s), Q_ARG(QString, u"1.00"_s)));
        named(sheet, u"refundAmount"_s)->setProperty("text", row.typed);
    } else {
        const QString invoice = view.openInvoices()->index(0).data(Qt::UserRole + 1).toString();
        QVERIFY(QMetaObject::invokeMethod(sheet, "ask", Q_ARG(QString, invoice), Q_ARG(QString, u"1042"_s)));
        named(sheet, u"offlineReference"_s)->setProperty("text", row.reference);
        named(sheet, u"offlinePaidOn"_s)->setProperty("text", row.typed);
    }
    const qsizetype sent = session.workspace->requests().size();
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QVERIFY(named(sheet, row.field)->property("error").toString().startsWith(row.error));
    QTRY_VERIFY(sheet->property("opened").toBool());
    QCOMPARE(session.workspace->requests().size(), sent);
}

// Ctrl+N records a payment (a refused form stays open with the reason), and
// the client beside the list adds a card through the browser, waiting with
// Cancel.
void TestMoneyScreens::paymentRecordedAndCardAdded()
{
    NativePaymentsView view(*session.api);
    QList<QUrl> opened;
    view.client()->setOpener([&opened](const QUrl &url) {
        opened.append(url);
        return true;
    });
    const std::unique_ptr<QQuickItem> shown = show("PaymentsScreen", &view);
    QVERIFY(shown);
    QTRY_VERIFY(!view.loading() && view.client()->cards()->rowCount() > 0);
    QCOMPARE(named(shown.get(), u"clientCards"_s)->property("count").toInt(), 1);
    QCOMPARE(named(shown.get(), u"clientSchedules"_s)->property("count").toInt(), 1);

    QObject *sheet = named(shown.get(), u"recordSheet"_s);
    shown->forceActiveFocus();
    QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
    QTRY_VERIFY(sheet->property("opened").toBool());
    named(sheet, u"recordAmount"_s)->setProperty("text", u"12.345"_s);
    named(sheet, u"recordReference"_s)->setProperty("text", u"Cheque 88"_s);
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QTRY_VERIFY(sheet->property("opened").toBool());
    QVERIFY2(named(sheet, u"recordError"_s)->property("text").toString().startsWith("Type an amount"_L1),
        qPrintable(named(sheet, u"recordError"_s)->property("text").toString()));
    named(sheet, u"recordAmount"_s)->setProperty("text", u"12.34"_s);
    const int listed = view.payments()->rowCount();
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QTRY_COMPARE(view.payments()->rowCount(), listed + 1);

    QMetaObject::invokeMethod(named(shown.get(), u"addCard"_s), "clicked");
    QTRY_COMPARE(opened.size(), 1);
    QObject *cancel = named(shown.get(), u"cancelCard"_s);
    QTRY_VERIFY(cancel->property("visible").toBool());
    QMetaObject::invokeMethod(cancel, "clicked");
    QTRY_VERIFY(named(shown.get(), u"addCard"_s)->property("visible").toBool());
    QVERIFY(!view.client()->following());
}

void TestMoneyScreens::approvedRefundShowsRefunded()
{
    NativePaymentsView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("PaymentsScreen", &view);
    QVERIFY(shown);
    QTRY_VERIFY(!view.loading() && view.payments()->rowCount() > 0);
    const QString request = cell(view.payments(), "pill", u"Refund requested"_s, "requestId").toString();
    const QString payment = cell(view.payments(), "requestId", request, "paymentId").toString();
    QVERIFY(!request.isEmpty());
    QObject *sheet = named(shown.get(), u"decideSheet"_s);
    QVERIFY(sheet);
    QVERIFY(QMetaObject::invokeMethod(sheet, "ask", Q_ARG(QString, request), Q_ARG(QString, u"client"_s)));
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QTRY_VERIFY(view.formError().isEmpty() && !view.busy() && !view.loading()
        && cell(view.payments(), "paymentId", payment, "pill") != u"Refund requested"_s);
    QVERIFY(cell(view.payments(), "paymentId", payment, "pill").toString().endsWith("efunded"_L1));
    QVERIFY(!named(shown.get(), u"doneNotice"_s)->property("text").toString().isEmpty());
}

void TestMoneyScreens::dashboardDrawsTwoBarsAMonth_data()
{
    QTest::addColumn<QString>("scheme");
    QTest::addRow("light") << u"light"_s;
    QTest::addRow("dark") << u"dark"_s;
}

// The chart draws offscreen in either scheme: both series' colours, the
// scheme's own, are painted inside it.
void TestMoneyScreens::dashboardDrawsTwoBarsAMonth()
{
    QFETCH(QString, scheme);
    theme->setColorScheme(scheme);
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("BooksDashboard", &view);
    QQuickItem *screen = shown.get();
    QVERIFY(screen);
    QTRY_VERIFY_WITH_TIMEOUT(screen->property("shown").toBool(), 10000);
    QCOMPARE(view.error(), QString());
    auto *chart = qobject_cast<QQuickItem *>(named(screen, u"dashboardChart"_s));
    QVERIFY(chart && chart->isVisible() && chart->height() > 0);
    const auto painted = [&](const QColor &colour) {
        const QImage image = window->grabWindow();
        const QRectF area = chart->mapRectToScene(chart->boundingRect());
        int count = 0;
        for (int y = int(area.top()); y < int(area.bottom()) && y < image.height(); ++y) {
            for (int x = int(area.left()); x < int(area.right()) && x < image.width(); ++x) {
                const QColor seen = image.pixelColor(x, y);
                const int apart = std::abs(seen.red() - colour.red()) + std::abs(seen.green() - colour.green())
                    + std::abs(seen.blue() - colour.blue());
                count += apart < 24;
            }
        }
        return count;
    };
    // Each kind has twelve bars, each several pixels wide and tall.
    QTRY_VERIFY_WITH_TIMEOUT(painted(theme->colours().success) > 12 * 20, 10000);
    QVERIFY(painted(theme->colours().accent) > 12 * 20);
}

struct BooksPage {
    QByteArray type;
    QString list;
};
Q_DECLARE_METATYPE(BooksPage)

void TestMoneyScreens::booksPagesListTheDemoBooks_data()
{
    QTest::addColumn<BooksPage>("page");
    QTest::addRow("transactions") << BooksPage { "BooksTransactions", u"transactions"_s };
    QTest::addRow("invoices") << BooksPage { "BooksInvoices", u"invoices"_s };
    QTest::addRow("receipts") << BooksPage { "BooksInvoices", u"receipts"_s };
    QTest::addRow("bills") << BooksPage { "BooksExpenses", u"bills"_s };
    QTest::addRow("expenses") << BooksPage { "BooksExpenses", u"expenseRows"_s };
    QTest::addRow("expense groups") << BooksPage { "BooksExpenses", u"expenseGroups"_s };
    QTest::addRow("register") << BooksPage { "BooksReports", u"register"_s };
    QTest::addRow("bank rows to review") << BooksPage { "BooksBanking", u"unmatchedRows"_s };
    QTest::addRow("matched bank rows") << BooksPage { "BooksBanking", u"matchedRows"_s };
}

// Each page loads what it shows when it opens, and its rows draw with every
// role their delegate needs (a missing one would leave the list empty).
void TestMoneyScreens::booksPagesListTheDemoBooks()
{
    QFETCH(BooksPage, page);
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show(page.type, &view);
    QObject *list = filled(shown.get(), page.list);
    QVERIFY(list);
    QCOMPARE(view.error(), QString());
}

using ListOf = std::function<QAbstractItemModel *(NativeBooksView &)>;

struct VoidOnPage {
    QByteArray page;
    ListOf list;
    QByteArray idRole;
    // Empty where the list holds one kind only: then this kind is voided.
    QString kind;
};
Q_DECLARE_METATYPE(VoidOnPage)

void TestMoneyScreens::voidFromItsPage_data()
{
    QTest::addColumn<VoidOnPage>("row");
    QTest::addRow("invoice") << VoidOnPage { "BooksInvoices",
        [](NativeBooksView &v) { return v.transactions()->invoices(); }, "invoiceId", u"invoice"_s };
    QTest::addRow("receipt") << VoidOnPage { "BooksInvoices", [](NativeBooksView &v) { return v.receipts(); },
        "recordId", u"receipt"_s };
    QTest::addRow("bill or its payment") << VoidOnPage { "BooksExpenses", [](NativeBooksView &v) { return v.bills(); },
        "recordId", QString() };
}

// Voiding on a day from the record's page: refused here for no such day,
// then done on the service, said by the notice, and no longer offered.
void TestMoneyScreens::voidFromItsPage()
{
    QFETCH(VoidOnPage, row);
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show(row.page, &view);
    QVERIFY(shown);
    QAbstractItemModel *records = row.list(view);
    QTRY_VERIFY_WITH_TIMEOUT(!view.loading() && records->rowCount() > 0, 10000);
    const QString id = cell(records, "voidable", true, row.idRole).toString();
    QVERIFY(!id.isEmpty());
    const QString kind = row.kind.isEmpty() ? cell(records, row.idRole, id, "kind").toString() : row.kind;
    QObject *sheet = named(shown.get(), u"voidSheet"_s);
    QVERIFY(QMetaObject::invokeMethod(
        sheet, "ask", Q_ARG(QString, kind), Q_ARG(QString, id), Q_ARG(QString, u"the record"_s)));

    // The page may still be reading its register: only a void would be wrong.
    const auto voids = [this] {
        qsizetype count = 0;
        for (const QJsonValue &request : session.workspace->requests())
            count += request.toObject().value("path"_L1).toString().endsWith("/void"_L1);
        return count;
    };
    const qsizetype voided = voids();
    named(sheet, u"voidDate"_s)->setProperty("text", u"2026-02-30"_s);
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QTRY_VERIFY(sheet->property("opened").toBool());
    QCOMPARE(voids(), voided);

    named(sheet, u"voidDate"_s)->setProperty("text", QDate::currentDate().toString(Qt::ISODate));
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QTRY_COMPARE(named(shown.get(), u"doneNotice"_s)->property("text").toString(), u"Voided"_s);
    QTRY_COMPARE(cell(records, row.idRole, id, "voidable").toBool(), false);
    QCOMPARE(cell(records, row.idRole, id, "status").toString(), u"Voided"_s);
}

void TestMoneyScreens::transactionsFollowSearchAndSource()
{
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("BooksTransactions", &view);
    QObject *list = filled(shown.get(), u"transactions"_s);
    QVERIFY(list);
    const int all = list->property("count").toInt();

    QMetaObject::invokeMethod(named(shown.get(), u"source-payments"_s), "clicked");
    QCOMPARE(view.transactions()->source(), u"payments"_s);
    QTRY_VERIFY(list->property("count").toInt() < all);
    QMetaObject::invokeMethod(named(shown.get(), u"source-all"_s), "clicked");
    QTRY_COMPARE(list->property("count").toInt(), all);

    QObject *search = named(shown.get(), u"transactionSearch"_s);
    search->setProperty("text", u"payroll"_s);
    QMetaObject::invokeMethod(search, "textEdited");
    QCOMPARE(view.transactions()->query(), u"payroll"_s);
    QTRY_VERIFY(list->property("count").toInt() > 0 && list->property("count").toInt() < all);
}

// The register shows a hundred entries, then the rest on request; reversing
// one loads the period again with the reversal in it.
void TestMoneyScreens::registerPagesAndReverses()
{
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("BooksReports", &view);
    QVERIFY(shown);
    NativeBooksReport *report = view.report();
    QObject *list = named(shown.get(), u"register"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!report->loading() && list->property("count").toInt() == 100, 10000);
    const int total = report->registerTotal();
    QVERIFY(total > 100);
    QVERIFY(named(shown.get(), u"registerMore"_s)->property("visible").toBool());
    QMetaObject::invokeMethod(named(shown.get(), u"registerMore"_s), "clicked");
    QTRY_COMPARE(list->property("count").toInt(), total);
    QVERIFY(!named(shown.get(), u"registerMore"_s)->property("visible").toBool());

    const QString entry = cell(report->registerModel(), "reversal", false, "entryId").toString();
    QObject *sheet = named(shown.get(), u"reverseSheet"_s);
    QVERIFY(QMetaObject::invokeMethod(sheet, "ask", Q_ARG(QString, entry), Q_ARG(QString, u"entry"_s)));
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QTRY_COMPARE(named(shown.get(), u"doneNotice"_s)->property("text").toString(), u"Entry reversed"_s);
    QTRY_COMPARE(report->registerTotal(), total + 1);
}

// A checked statement is sent from the page's button and its answer shown.
void TestMoneyScreens::statementImportedFromThePage()
{
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("BooksBanking", &view);
    QObject *bank = filled(shown.get(), u"bankAccount"_s);
    QVERIFY(bank);
    QObject *send = named(shown.get(), u"importStatement"_s);
    QVERIFY(!send->property("enabled").toBool());

    QFile file(folder->filePath(u"statement.csv"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Date,Description,Amount\n2026-03-02,Lumber,-120.00\n2026-03-03,Deposit,80.00\n");
    file.close();
    view.statementImport()->choose(QUrl::fromLocalFile(file.fileName()), bank->property("currentValue").toString(),
        bank->property("currentText").toString());
    QCOMPARE(named(shown.get(), u"statementStatus"_s)->property("text").toString(),
        u"2 rows ready for Operating checking"_s);
    QVERIFY(send->property("enabled").toBool());
    QMetaObject::invokeMethod(send, "clicked");
    QTRY_COMPARE(named(shown.get(), u"statementResult"_s)->property("text").toString(), u"2 imported, 0 duplicates"_s);
}

// The panel previews at the typed date; a balance that differs is refused
// with the reason shown, and nothing is closed.
void TestMoneyScreens::unbalancedStatementStaysOpen()
{
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("BooksBanking", &view);
    QVERIFY(filled(shown.get(), u"bankAccount"_s));
    NativeReconciliation *reconciliation = view.reconciliation();
    named(shown.get(), u"statementDate"_s)->setProperty("text", u"2026-01-31"_s);
    QMetaObject::invokeMethod(named(shown.get(), u"previewReconciliation"_s), "clicked");
    QTRY_VERIFY(reconciliation->hasPreview() && !reconciliation->loading());
    QVERIFY(named(shown.get(), u"reconciliationFigures"_s)->property("visible").toBool());

    named(shown.get(), u"statementBalance"_s)->setProperty("text", u"1.00"_s);
    QObject *sheet = named(shown.get(), u"closeSheet"_s);
    QMetaObject::invokeMethod(named(shown.get(), u"closeStatement"_s), "clicked");
    QTRY_VERIFY(sheet->property("opened").toBool());
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QTRY_VERIFY(!named(shown.get(), u"reconciliationError"_s)->property("text").toString().isEmpty());
    QCOMPARE(reconciliation->closedID(), QString());
}

// The row sheet hands the chosen account on; the row leaves the review.
void TestMoneyScreens::bankRowCategorizedFromThePage()
{
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("BooksBanking", &view);
    QObject *rows = filled(shown.get(), u"unmatchedRows"_s);
    QVERIFY(rows);
    const int waiting = rows->property("count").toInt();
    QAbstractListModel *unmatched = view.bankRows()->unmatched();
    QObject *sheet = named(shown.get(), u"rowSheet"_s);
    QVERIFY(QMetaObject::invokeMethod(sheet, "ask",
        Q_ARG(QString, unmatched->data(unmatched->index(0), Qt::UserRole + 1).toString()), Q_ARG(QString, u"row"_s),
        Q_ARG(bool, false)));
    QObject *choice = named(shown.get(), u"rowChoice"_s);
    QCOMPARE(choice->property("count").toInt(), view.accountChoices().size());
    choice->setProperty("currentIndex", choice->property("count").toInt() - 1);
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QTRY_COMPARE(named(shown.get(), u"doneNotice"_s)->property("text").toString(), u"Categorized"_s);
    QTRY_COMPARE(rows->property("count").toInt(), waiting - 1);
}

// Choosing an account asks for its register alone.
void TestMoneyScreens::registerNarrowedToAnAccount()
{
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("BooksReports", &view);
    QVERIFY(filled(shown.get(), u"register"_s));
    NativeBooksReport *report = view.report();
    QTRY_VERIFY(!report->loading() && !view.loading());
    const int everything = report->registerTotal();
    QObject *account = named(shown.get(), u"registerAccount"_s);
    QCOMPARE(account->property("count").toInt(), view.accountChoices().size() + 1);
    account->setProperty("currentIndex", 1);
    QVERIFY(QMetaObject::invokeMethod(account, "activated", Q_ARG(int, 1)));
    QTRY_VERIFY(!report->loading() && report->registerTotal() > 0 && report->registerTotal() < everything);
}

// The company is renamed through its sheet, and the workspace's activity
// linked, then one of its records posted, from the Dashboard's panel.
void TestMoneyScreens::dashboardRenamesAndLinks()
{
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("BooksDashboard", &view);
    QVERIFY(shown);
    QTRY_VERIFY_WITH_TIMEOUT(shown->property("shown").toBool(), 10000);
    QObject *sheet = named(shown.get(), u"companySheet"_s);
    QVERIFY(QMetaObject::invokeMethod(sheet, "ask"));
    named(sheet, u"companyName"_s)->setProperty("text", u"Halvard Works LLC"_s);
    QVERIFY(QMetaObject::invokeMethod(sheet, "confirmed"));
    QTRY_COMPARE(named(shown.get(), u"company"_s)->property("text").toString(), u"Halvard Works LLC"_s);

    QMetaObject::invokeMethod(named(shown.get(), u"linkSource"_s), "clicked");
    QObject *records = filled(shown.get(), u"sourceRecords"_s);
    QVERIFY(records);
    const int waiting = records->property("count").toInt();
    QQuickItem *first = nullptr;
    QVERIFY(QMetaObject::invokeMethod(records, "itemAt", Q_RETURN_ARG(QQuickItem *, first), Q_ARG(int, 0)));
    QVERIFY(first);
    // The first is an invoice: its sale goes to the income account chosen
    // beside it, after the books' default and "4000".
    const QString before = cell(view.accounts(), "accountId", u"acct-4100"_s, "balance").toString();
    named(first, u"incomeAccount"_s)->setProperty("currentIndex", 2);
    QMetaObject::invokeMethod(named(first, u"postSource"_s), "clicked");
    QTRY_COMPARE(records->property("count").toInt(), waiting - 1);
    QTRY_VERIFY(cell(view.accounts(), "accountId", u"acct-4100"_s, "balance").toString() != before);
}

// A file the reader refuses shows its message in place of the count and
// leaves nothing to send.
void TestMoneyScreens::refusedStatementSendsNothing()
{
    NativeBooksView view(*session.api);
    const std::unique_ptr<QQuickItem> shown = show("BooksBanking", &view);
    QVERIFY(filled(shown.get(), u"bankAccount"_s));
    QFile file(folder->filePath(u"refused.csv"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("Date,Description,Amount\n2024-02-30,Lumber,-120.00\n");
    file.close();
    view.statementImport()->choose(QUrl::fromLocalFile(file.fileName()), u"acct-1000"_s, u"Operating checking"_s);
    QCOMPARE(named(shown.get(), u"statementStatus"_s)->property("text").toString(), u"Row 2 has an invalid date."_s);
    QVERIFY(!named(shown.get(), u"importStatement"_s)->property("enabled").toBool());
}

QTEST_MAIN(TestMoneyScreens)
#include "tst_money_screens.moc"
