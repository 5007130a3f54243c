#include "chat/NativeChatRoomModel.h"
#include "chat/NativeChatTimelineModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Message n of a conversation: two people taking turns in pairs, a minute apart.
TarnMessage message(int n, const QString &body = {})
{
    TarnMessage m;
    m.id = u"m%1"_s.arg(n);
    m.user_id = (n / 2) % 2 == 0 ? u"p-maren"_s : u"p-tomas"_s;
    m.author = m.user_id == "p-maren"_L1 ? u"Maren Holt"_s : u"Tomas Reyes"_s;
    m.body = body.isEmpty() ? u"line %1"_s.arg(n) : body;
    m.created_at = QDateTime(QDate(2024, 3, 1), QTime(9, n), Qt::UTC).toString(Qt::ISODate);
    m.seq = n;
    return m;
}

QList<TarnMessage> messages(int first, int last)
{
    QList<TarnMessage> out;
    for (int n = first; n <= last; ++n)
        out.append(message(n));
    return out;
}

// Every change a model announced, by kind.
struct Changes {
    explicit Changes(QAbstractItemModel *model)
        : reset(model, &QAbstractItemModel::modelReset)
        , inserted(model, &QAbstractItemModel::rowsInserted)
        , removed(model, &QAbstractItemModel::rowsRemoved)
        , moved(model, &QAbstractItemModel::rowsMoved)
        , changed(model, &QAbstractItemModel::dataChanged)
        , layout(model, &QAbstractItemModel::layoutChanged)
    {
    }
    QSignalSpy reset, inserted, removed, moved, changed, layout;
};

QList<int> rowsOf(const QSignalSpy &spy, bool indexes)
{
    QList<int> rows;
    for (const QList<QVariant> &signal : spy)
        rows.append(indexes ? signal.at(0).value<QModelIndex>().row() : signal.at(1).toInt());
    return rows;
}

} // namespace

// The chat lists change only the rows a refresh touches: never a reset, and
// nothing at all when nothing changed.
class TestChatModels : public QObject {
    Q_OBJECT

private slots:
    void timelineChanges_data();
    void timelineChanges();
    void roomPreviews();
};

void TestChatModels::timelineChanges_data()
{
    QTest::addColumn<QList<TarnMessage>>("before");
    QTest::addColumn<QList<TarnMessage>>("after");
    QTest::addColumn<std::optional<qint64>>("newFrom");
    QTest::addColumn<QList<int>>("inserted");
    QTest::addColumn<QList<int>>("changed");

    QList<TarnMessage> edited = messages(1, 6);
    edited[3].body = u"edited"_s;
    QTest::addRow("nothing new") << messages(1, 6) << messages(1, 6) << std::optional<qint64>() << QList<int>()
                                 << QList<int>();
    // The old first row loses its day divider: it now follows a message of the same day.
    QTest::addRow("older messages paged in front")
        << messages(3, 6) << messages(1, 6) << std::optional<qint64>() << QList<int> { 0 } << QList<int> { 2 };
    QTest::addRow("a new message at the end")
        << messages(1, 5) << messages(1, 6) << std::optional<qint64>() << QList<int> { 5 } << QList<int>();
    QTest::addRow("one message edited") << messages(1, 6) << edited << std::optional<qint64>() << QList<int>()
                                        << QList<int> { 3 };
    QTest::addRow("read up to the end") << messages(1, 6) << messages(1, 6) << std::optional<qint64>(5) << QList<int>()
                                        << QList<int> { 4 };
}

void TestChatModels::timelineChanges()
{
    QFETCH(QList<TarnMessage>, before);
    QFETCH(QList<TarnMessage>, after);
    QFETCH(std::optional<qint64>, newFrom);
    QFETCH(QList<int>, inserted);
    QFETCH(QList<int>, changed);

    NativeChatTimelineModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QDateTime now = QDateTime(QDate(2024, 3, 1), QTime(12, 0), Qt::UTC);
    model.setMessages(before, std::nullopt, now);

    const Changes changes(&model);
    model.setMessages(after, newFrom, now);
    QCOMPARE(changes.reset.count(), 0);
    QCOMPARE(changes.removed.count(), 0);
    QCOMPARE(changes.moved.count(), 0);
    QCOMPARE(changes.layout.count(), 0);
    QCOMPARE(rowsOf(changes.inserted, false), inserted);
    QCOMPARE(rowsOf(changes.changed, true), changed);
    QCOMPARE(model.rows(), NativeChatTimelineModel::rowsOf(after, newFrom, now));
}

void TestChatModels::roomPreviews()
{
    NativeChatRoomModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const TarnRoom general { u"r1"_s, u"general"_s, u"channel"_s, 2, 0, true };
    const TarnRoom direct { u"r2"_s, u"Tomas Reyes"_s, u"dm"_s, 0, 1, true };
    model.setRows({ { general, u"hello"_s, u"Maren Holt"_s }, { direct, {}, {} } });

    const Changes changes(&model);
    model.setRows({ { general, u"hello"_s, u"Maren Holt"_s }, { direct, {}, {} } });
    model.setRows({ { general, u"hello"_s, u"Maren Holt"_s }, { direct, u"see you"_s, u"Tomas Reyes"_s } });
    QCOMPARE(rowsOf(changes.changed, true), QList<int> { 1 });
    QCOMPARE(changes.reset.count() + changes.inserted.count() + changes.removed.count(), 0);
    QCOMPARE(model.data(model.index(1), Qt::UserRole + 6).toString(), u"see you"_s);
}

QTEST_GUILESS_MAIN(TestChatModels)
#include "tst_chatmodels.moc"
