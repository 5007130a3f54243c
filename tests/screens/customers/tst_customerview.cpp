#include "TarnWaitFor.h"
#include "inbox/InboxTestClient.h"
#include "screens/customers/CustomerRules.h"
#include "screens/customers/NativeCustomerSearchFeed.h"
#include "screens/customers/NativeCustomersView.h"
#include "screens/customers/TarnCustomerCalls.h"
#include "service/TarnAPI.h"
#include "shell/NativeCommandSearch.h"
#include "shell/TarnNavigation.h"

#include <QJsonArray>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString maren = u"maren@halvard.example"_s;
const QString tomas = u"tomas@halvard.example"_s;

// Runs `trigger` and waits for `object` to say it is done.
template <typename Object, typename Signal, typename Trigger>
bool settle(Object &object, Signal signal, Trigger trigger)
{
    QSignalSpy spy(&object, signal);
    trigger();
    return spy.wait(15'000);
}

QStringList column(const NativeCustomersView &view, const QString &stage)
{
    QStringList ids;
    const QAbstractItemModel *model = view.stageModel(stage);
    for (int row = 0; row < model->rowCount(); ++row)
        ids.append(model->index(row, 0).data(Qt::UserRole + 1).toString());
    return ids;
}

QStringList roleValues(const QAbstractItemModel *model, const QByteArray &role)
{
    const int key = model->roleNames().key(role);
    QStringList out;
    for (int row = 0; row < model->rowCount(); ++row)
        out.append(model->index(row, 0).data(key).toString());
    return out;
}

} // namespace

// The register's screen state over a real workspace, without a window.
class TestCustomerView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void searchAppliesAfterTyping();
    void stageMoveShowsTheFinalState();
    void staleEditShowsTheOtherSave();
    void oversizedFileNeverLeaves();
    void archiveAsksFirst();
    void sentDraftJoinsTheTimeline();
    void olderPagesSurviveAChange();
    void commandSearchOpensTheProfile();

private:
    // A view of `email`, loaded, with `client` open when given.
    [[nodiscard]] std::unique_ptr<NativeCustomersView> openOn(const QString &email, const QString &client = {});

    InboxTestClient client;
};

void TestCustomerView::initTestCase()
{
    const QString error = client.start();
    QVERIFY2(error.isEmpty(), qPrintable(error));
}

std::unique_ptr<NativeCustomersView> TestCustomerView::openOn(const QString &email, const QString &id)
{
    auto view = std::make_unique<NativeCustomersView>(client.as(email));
    if (!settle(*view, &NativeCustomersView::refreshed, [&] { view->appear(); }))
        return nullptr;
    if (!id.isEmpty() && !settle(*view->profile(), &NativeCustomerProfile::loaded, [&] { view->open(id); }))
        return nullptr;
    return view;
}

void TestCustomerView::searchAppliesAfterTyping()
{
    const std::unique_ptr<NativeCustomersView> view = openOn(maren);
    QVERIFY(view);
    const int all = view->count();
    int columns = 0;
    for (const CustomerRules::Stage &stage : CustomerRules::stages())
        columns += int(column(*view, stage.id).size());
    QCOMPARE(columns, all);

    // Keystrokes in quick succession filter once, after the last.
    QSignalSpy changed(view.get(), &NativeCustomersView::listChanged);
    view->setSearchText(u"f"_s);
    view->setSearchText(u"fe"_s);
    view->setSearchText(u"fern"_s);
    QCOMPARE(view->count(), all);
    QVERIFY(changed.wait(2'000));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(roleValues(view->customers(), "name"), QStringList { u"Fernhill Bakery"_s });
    QCOMPARE(column(*view, u"proposal"_s), QStringList { u"c-fernhill"_s });
    QVERIFY(column(*view, u"customer"_s).isEmpty());

    view->setSearchText({});
    view->setStageFilter(u"lost"_s);
    QVERIFY(changed.wait(2'000));
    const QStringList stages = roleValues(view->customers(), "stageLabel");
    QVERIFY(!stages.isEmpty());
    QCOMPARE(stages, QStringList(stages.size(), u"Lost"_s));
}

void TestCustomerView::stageMoveShowsTheFinalState()
{
    const std::unique_ptr<NativeCustomersView> view = openOn(maren, u"c-quill"_s);
    QVERIFY(view);
    QVERIFY(column(*view, u"lead"_s).contains(u"c-quill"_s));
    QSignalSpy refreshed(view.get(), &NativeCustomersView::refreshed);
    view->changeStage(u"c-quill"_s, u"qualified"_s);
    // The card moves before the service answers.
    QVERIFY(column(*view, u"qualified"_s).contains(u"c-quill"_s));
    QVERIFY(!column(*view, u"lead"_s).contains(u"c-quill"_s));
    QVERIFY(refreshed.wait(15'000));
    QVERIFY(column(*view, u"qualified"_s).contains(u"c-quill"_s));
    QTRY_COMPARE(view->profile()->stageLabel(), u"Qualified"_s);
    QTRY_COMPARE(roleValues(view->profile()->timeline(), "body").value(0), u"Lead → Qualified"_s);
}

void TestCustomerView::staleEditShowsTheOtherSave()
{
    const std::unique_ptr<NativeCustomersView> mine = openOn(maren, u"c-northfield"_s);
    const std::unique_ptr<NativeCustomersView> theirs = openOn(tomas, u"c-northfield"_s);
    QVERIFY(mine && theirs);
    NativeCustomerProfile &first = *mine->profile();
    NativeCustomerProfile &second = *theirs->profile();
    QVERIFY(settle(first, &NativeCustomerProfile::actionFinished,
        [&] { first.saveDetails(u"Northfield Fitness"_s, first.email(), first.phone(), {}, {}); }));
    QCOMPARE(first.errorText(), QString());
    QVERIFY(settle(second, &NativeCustomerProfile::actionFinished,
        [&] { second.saveDetails(u"Northfield Gym & Pool"_s, second.email(), second.phone(), {}, {}); }));
    QVERIFY2(second.errorText().contains(u"changed this customer"_s), qPrintable(second.errorText()));
    QCOMPARE(second.name(), u"Northfield Fitness"_s);
    QCOMPARE(second.version(), first.version());
    // The list beside it follows the saved name.
    QTRY_VERIFY(roleValues(theirs->customers(), "name").contains(u"Northfield Fitness"_s));
}

void TestCustomerView::oversizedFileNeverLeaves()
{
    const std::unique_ptr<NativeCustomersView> view = openOn(maren, u"c-harbor"_s);
    QVERIFY(view);
    QTemporaryDir dir;
    QFile big(dir.filePath(u"site-survey.mov"_s));
    QVERIFY(big.open(QIODevice::WriteOnly) && big.resize(CustomerRules::fileLimitBytes + 1));
    big.close();
    client.workspace->clearRequests();
    view->profile()->uploadFile(QUrl::fromLocalFile(big.fileName()));
    QCOMPARE(view->profile()->errorText(), *CustomerRules::fileRefusal(u"site-survey.mov"_s, big.size()));
    QCOMPARE(client.workspace->requests().size(), 0);

    // One within the limit goes up and comes back the same.
    QFile small(dir.filePath(u"plan.txt"_s));
    QVERIFY(small.open(QIODevice::WriteOnly) && small.write("floor plan") == 10);
    small.close();
    NativeCustomerProfile &profile = *view->profile();
    QVERIFY(settle(profile, &NativeCustomerProfile::actionFinished,
        [&] { profile.uploadFile(QUrl::fromLocalFile(small.fileName())); }));
    QCOMPARE(profile.errorText(), QString());
    const int at = int(roleValues(profile.files(), "name").indexOf(u"plan.txt"_s));
    QVERIFY(at >= 0);
    const QString fileId = roleValues(profile.files(), "fileId").at(at);
    QSignalSpy saved(&profile, &NativeCustomerProfile::fileSaved);
    profile.downloadFile(fileId, QUrl::fromLocalFile(dir.filePath(u"back.txt"_s)));
    QVERIFY(saved.wait(15'000));
    QFile back(dir.filePath(u"back.txt"_s));
    QVERIFY(back.open(QIODevice::ReadOnly));
    QCOMPARE(back.readAll(), "floor plan"_ba);
}

void TestCustomerView::archiveAsksFirst()
{
    const std::unique_ptr<NativeCustomersView> view = openOn(maren, u"c-copper"_s);
    QVERIFY(view);
    NativeCustomerProfile &profile = *view->profile();
    client.workspace->clearRequests();
    profile.askArchive();
    QVERIFY(profile.confirmingArchive());
    profile.cancelArchive();
    profile.confirmArchive();
    QCOMPARE(client.workspace->requests().size(), 0);
    QVERIFY(!profile.archived());

    profile.askArchive();
    QSignalSpy refreshed(view.get(), &NativeCustomersView::refreshed);
    profile.confirmArchive();
    QVERIFY(refreshed.wait(15'000));
    QVERIFY(profile.archived());
    QVERIFY(!roleValues(view->customers(), "clientId").contains(u"c-copper"_s));
}

void TestCustomerView::sentDraftJoinsTheTimeline()
{
    const std::unique_ptr<NativeCustomersView> view = openOn(maren, u"c-brightwater"_s);
    QVERIFY(view);
    NativeCustomerProfile &profile = *view->profile();
    const QStringList drafts = roleValues(profile.drafts(), "draftId");
    QVERIFY(!drafts.isEmpty());
    const QString body = roleValues(profile.drafts(), "body").first();
    QVERIFY(settle(profile, &NativeCustomerProfile::actionFinished, [&] { profile.sendDraft(drafts.first()); }));
    QCOMPARE(profile.drafts()->rowCount(), drafts.size() - 1);
    QCOMPARE(roleValues(profile.timeline(), "kindLabel").value(0), u"Mail"_s);
    QCOMPARE(roleValues(profile.timeline(), "body").value(0), body);
    QCOMPARE(roleValues(profile.timeline(), "author").value(0), u"Maren Holt"_s);
}

void TestCustomerView::olderPagesSurviveAChange()
{
    const std::unique_ptr<NativeCustomersView> view = openOn(maren, u"c-marlow"_s);
    QVERIFY(view);
    NativeCustomerProfile &profile = *view->profile();
    // More than two pages of history.
    for (int i = 0; i < NativeCustomerProfile::timelinePage * 2; ++i)
        tarnWaitFor(TarnCustomerCalls::crm360AddNote(client.as(maren), u"c-marlow"_s, u"Visit %1"_s.arg(i)));
    QVERIFY(settle(profile, &NativeCustomerProfile::loaded, [&] { profile.reload(); }));
    QCOMPARE(profile.timeline()->rowCount(), NativeCustomerProfile::timelinePage);
    QVERIFY(profile.hasMoreTimeline());
    QVERIFY(settle(profile, &NativeCustomerProfile::loaded, [&] { profile.loadMoreTimeline(); }));
    QCOMPARE(profile.timeline()->rowCount(), NativeCustomerProfile::timelinePage * 2);

    QSignalSpy removed(profile.timeline(), &QAbstractItemModel::rowsRemoved);
    QVERIFY(settle(profile, &NativeCustomerProfile::actionFinished, [&] { profile.addNote(u"Latest"_s); }));
    QCOMPARE(profile.timeline()->rowCount(), NativeCustomerProfile::timelinePage * 2 + 1);
    QCOMPARE(removed.size(), 0);
    QCOMPARE(roleValues(profile.timeline(), "body").value(0), u"Latest"_s);
    QVERIFY(profile.hasMoreTimeline());
}

void TestCustomerView::commandSearchOpensTheProfile()
{
    TarnAPI &api = client.as(maren);
    QTemporaryDir folder;
    QSettings settings(folder.filePath(u"prefs.ini"_s), QSettings::IniFormat);
    TarnNavigation navigation(&settings);
    navigation.setAccess(TarnAccess::fromSession(*api.session()));
    NativeCommandSearch search(navigation);
    NativeCustomerSearchFeed feed(api, search);
    QSignalSpy offered(&feed, &NativeCustomerSearchFeed::offered);
    // Only the query typing settled on is asked about.
    search.setQuery(u"f"_s);
    search.setQuery(u"fe"_s);
    search.setQuery(u"brightw"_s);
    QVERIFY(offered.wait(5'000));
    QCOMPARE(offered.size(), 1);
    QCOMPARE(offered.first().first().toString(), u"brightw"_s);

    int at = -1;
    for (int row = 0; row < search.rowCount(); ++row) {
        if (search.rows().at(row).key == "customer:c-brightwater"_L1)
            at = row;
    }
    QVERIFY(at >= 0);
    QCOMPARE(search.rows().at(at).label, u"Brightwater Dental"_s);
    QVERIFY(search.activate(at));
    QCOMPARE(navigation.destination().resolvedSection(), u"Customers"_s);
    QCOMPARE(navigation.openRecord().value_or(TarnOpenRecord()).id, u"c-brightwater"_s);
}

QTEST_GUILESS_MAIN(TestCustomerView)
#include "tst_customerview.moc"
