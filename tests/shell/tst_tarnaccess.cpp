#include "shell/DemoPeople.h"

#include "service/TarnDecodeError.h"
#include "shell/TarnAccess.h"
#include "shell/TarnShell.h"

#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

class TestTarnAccess : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void has_data();
    void has();
    void reviewsBlockedWork_data();
    void reviewsBlockedWork();
    void fromSessionKeepsAnEmptyAppList();
    void fromSessionRefusesAnAnswerWithoutApps();
};

struct HasRow {
    const char *name;
    std::optional<QStringList> apps;
    bool owner;
    bool booksOwner;
    QString app;
    bool allowed;
};

void TestTarnAccess::has_data()
{
    QTest::addColumn<HasRow>("row");
    const std::optional<QStringList> every;
    const QList<HasRow> rows {
        { "no app name passes an empty list", QStringList(), false, false, u""_s, true },
        { "absent list allows a plain app", every, false, false, u"Kiln"_s, true },
        { "empty list refuses a plain app", QStringList(), false, false, u"Home"_s, false },
        { "listed app", QStringList { u"Home"_s }, false, false, u"Home"_s, true },
        { "names are exact", QStringList { u"Home"_s }, false, false, u"home"_s, false },
        { "books: absent list without the flag", every, true, false, u"Books"_s, false },
        { "books: the flag with an absent list", every, false, true, u"Books"_s, true },
        { "books: the flag but not listed", QStringList { u"Home"_s }, false, true, u"Books"_s, false },
        { "payroll: owner with an absent list", every, true, false, u"Payroll"_s, true },
        { "payroll: books owner is not the owner", every, false, true, u"Payroll"_s, false },
        { "payroll: listed without the owner flag", QStringList { u"Payroll"_s }, false, true, u"Payroll"_s, false },
        { "payments: owner but only payroll listed", QStringList { u"Payroll"_s }, true, true, u"Payments"_s, false },
        { "payments: owner and listed", QStringList { u"Payments"_s }, true, false, u"Payments"_s, true },
    };
    for (const HasRow &row : rows)
        QTest::newRow(row.name) << row;
}

void TestTarnAccess::has()
{
    QFETCH(HasRow, row);
    TarnAccess access;
    access.apps = row.apps;
    access.owner = row.owner;
    access.booksOwner = row.booksOwner;
    QCOMPARE(access.has(row.app), row.allowed);
}

struct ReviewRow {
    const char *name;
    std::optional<QString> role;
    QString email;
    QString ownerAddress;
    bool reviews;
};

void TestTarnAccess::reviewsBlockedWork_data()
{
    QTest::addColumn<ReviewRow>("row");
    const QString maren = TarnAccess::defaultOwnerAddress;
    const QList<ReviewRow> rows {
        { "the owner's admin account", u"admin"_s, maren, maren, true },
        { "email in capitals", u"admin"_s, u"Maren@Halvard.Example"_s, maren, true },
        { "role is exact", u"Admin"_s, maren, maren, false },
        { "no role", std::nullopt, maren, maren, false },
        { "another admin", u"admin"_s, u"tomas@halvard.example"_s, maren, false },
        { "another deployment's owner", u"admin"_s, u"boss@elsewhere.example"_s, u"boss@elsewhere.example"_s, true },
        { "no address configured", u"admin"_s, u""_s, u""_s, false },
    };
    for (const ReviewRow &row : rows)
        QTest::newRow(row.name) << row;
}

void TestTarnAccess::reviewsBlockedWork()
{
    QFETCH(ReviewRow, row);
    TarnAccess access;
    access.role = row.role;
    access.email = row.email;
    access.ownerAddress = row.ownerAddress;
    QCOMPARE(access.reviewsBlockedWork(), row.reviews);
    // Only the reviewer may open the blocked work at all.
    const TarnDestination blocked { .screen = TarnScreen::agent, .section = u"Blocked work"_s };
    QCOMPARE(TarnShell::canOpen(blocked, access), row.reviews);
}

void TestTarnAccess::fromSessionKeepsAnEmptyAppList()
{
    // A session always carries its list; an empty one must not turn into
    // "every app", which is what an absent list means.
    const TarnAccess access = DemoPeople::accessFromAnswer(
        R"({"id":"p","name":"N","email":"n@x","csrf":"c","apps":[],"owner":null,"books_owner":null})");
    QVERIFY(access.apps.has_value());
    QVERIFY(access.apps->isEmpty());
    QVERIFY(!access.owner);
    QVERIFY(!access.booksOwner);
    QVERIFY(!access.role.has_value());
    QVERIFY(!TarnShell::home(access).has_value());
    QVERIFY(TarnShell::navGroups(access).size() == 1);
    QCOMPARE(TarnShell::navGroups(access).constFirst().items.constFirst().key, u"company"_s);
}

void TestTarnAccess::fromSessionRefusesAnAnswerWithoutApps()
{
    QVERIFY_THROWS_EXCEPTION(
        TarnDecodeError, DemoPeople::accessFromAnswer(R"({"id":"p","name":"N","email":"n@x","csrf":"c"})"));
}

QTEST_APPLESS_MAIN(TestTarnAccess)
#include "tst_tarnaccess.moc"
