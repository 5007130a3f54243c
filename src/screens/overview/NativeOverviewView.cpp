#include "screens/overview/NativeOverviewView.h"

#include "screens/overview/OverviewRules.h"
#include "screens/overview/TarnOverviewCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeFirstLoad.h"
#include "shell/NativeStateErrors.h"

#include <QDate>
#include <QPointer>
#include <QVariantMap>

using namespace Qt::StringLiterals;

namespace {

// Late orders first, then by the day they are due, then as they came.
QList<TarnOrder> fulfilmentOrder(QList<TarnOrder> orders)
{
    const QDate today = QDate::currentDate();
    std::stable_sort(orders.begin(), orders.end(), [&today](const TarnOrder &a, const TarnOrder &b) {
        const bool aDone = a.status == "delivered"_L1;
        const bool bDone = b.status == "delivered"_L1;
        if (aDone != bDone)
            return bDone;
        if (OverviewRules::late(a, today) != OverviewRules::late(b, today))
            return OverviewRules::late(a, today);
        return a.eta < b.eta;
    });
    return orders;
}

} // namespace

NativeOverviewView::NativeOverviewView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_team(new NativeTeamActivityModel(this))
    , m_orders(new NativeOrderModel(this))
{
}

QVariantList NativeOverviewView::boards() const
{
    QVariantList rows;
    for (const TarnProductBoard &board : m_boards)
        rows.append(QVariantMap { { u"id"_s, board.id }, { u"name"_s, board.name } });
    return rows;
}

void NativeOverviewView::setBoardId(const QString &id)
{
    if (m_boardId == id)
        return;
    m_boardId = id;
    fillStages();
    Q_EMIT boardsChanged();
}

QStringList NativeOverviewView::stages() const
{
    for (const TarnProductBoard &board : m_boards) {
        if (board.id == m_boardId)
            return board.stages;
    }
    return {};
}

QAbstractListModel *NativeOverviewView::stageModel(const QString &stage) const
{
    return m_stages.value(stage);
}

int NativeOverviewView::clockedIn() const
{
    const QList<TarnTeamActivity> &rows = m_team->rows();
    return int(std::count_if(rows.begin(), rows.end(), [](const TarnTeamActivity &p) { return p.clocked_in; }));
}

int NativeOverviewView::lateOrders() const
{
    const QDate today = QDate::currentDate();
    const QList<TarnOrder> &rows = m_orders->rows();
    return int(std::count_if(
        rows.begin(), rows.end(), [&today](const TarnOrder &o) { return OverviewRules::late(o, today); }));
}

void NativeOverviewView::appear()
{
    TarnRefreshLoop::run(
        this, &NativeOverviewView::m_generation, ++m_generation, refreshIntervalMs, &NativeOverviewView::refreshOnce);
}

void NativeOverviewView::disappear()
{
    ++m_generation;
}

void NativeOverviewView::refresh()
{
    refreshOnce();
}

void NativeOverviewView::moveItem(const QString &itemId, const QString &stage)
{
    for (TarnProductBoard &board : m_boards) {
        for (TarnBoardItem &item : board.items) {
            if (item.id != itemId || item.stage == stage || !board.stages.contains(stage))
                continue;
            const TarnBoardMove move { .stage = stage, .version = item.version };
            // The card moves now; the service's answer settles where it stays.
            item.stage = stage;
            fillStages();
            moveTask(itemId, move);
            return;
        }
    }
}

void NativeOverviewView::advanceOrder(const QString &orderId)
{
    if (m_busy)
        return;
    setBusy(true);
    advanceTask(orderId);
}

void NativeOverviewView::clear()
{
    ++m_generation;
    m_team->setRows({});
    m_orders->setRows({});
    m_boards.clear();
    m_boardId.clear();
    fillStages();
    m_busy = m_loading = m_loaded = false;
    m_error.clear();
    Q_EMIT teamChanged();
    Q_EMIT boardsChanged();
    Q_EMIT ordersChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeOverviewView::refreshOnce()
{
    const QPointer<NativeOverviewView> self(this);
    const int generation = m_generation;
    NativeFirstLoad::begin(*this, m_loading, m_loaded);
    try {
        const QList<TarnTeamActivity> team = co_await TarnOverviewCalls::overviewTeam(m_api);
        if (!self || generation != m_generation)
            co_return;
        m_team->setRows(team);
        Q_EMIT teamChanged();
        co_await readBoards();
        if (!self || generation != m_generation)
            co_return;
        const QList<TarnOrder> orders = co_await TarnOverviewCalls::fulfilmentOrders(m_api);
        if (!self || generation != m_generation)
            co_return;
        m_orders->setRows(fulfilmentOrder(orders));
        Q_EMIT ordersChanged();
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    NativeFirstLoad::end(*this, m_loading, m_loaded);
}

QCoro::Task<> NativeOverviewView::readBoards()
{
    const QPointer<NativeOverviewView> self(this);
    const QList<TarnProductBoard> boards = co_await TarnOverviewCalls::productBoards(m_api);
    if (self)
        showBoards(boards);
}

void NativeOverviewView::showBoards(const QList<TarnProductBoard> &boards)
{
    const bool changed = boards != m_boards;
    m_boards = boards;
    const bool known = std::any_of(
        m_boards.begin(), m_boards.end(), [this](const TarnProductBoard &b) { return b.id == m_boardId; });
    if (!known)
        m_boardId = m_boards.isEmpty() ? QString() : m_boards.constFirst().id;
    fillStages();
    if (changed || !known)
        Q_EMIT boardsChanged();
}

void NativeOverviewView::fillStages()
{
    const QStringList names = stages();
    // Stages the chosen board no longer has go; the others keep their model.
    for (auto it = m_stages.begin(); it != m_stages.end();) {
        if (names.contains(it.key())) {
            ++it;
            continue;
        }
        it.value()->deleteLater();
        it = m_stages.erase(it);
    }
    QHash<QString, QList<TarnBoardItem>> items;
    for (const TarnProductBoard &board : std::as_const(m_boards)) {
        if (board.id != m_boardId)
            continue;
        for (const TarnBoardItem &item : board.items)
            items[item.stage].append(item);
    }
    for (const QString &stage : names) {
        if (!m_stages.contains(stage))
            m_stages.insert(stage, new NativeBoardItemModel(this));
        m_stages.value(stage)->setRows(items.value(stage));
    }
}

QCoro::Task<> NativeOverviewView::moveTask(QString itemId, TarnBoardMove move)
{
    const QPointer<NativeOverviewView> self(this);
    try {
        co_await TarnOverviewCalls::moveBoardItem(m_api, itemId, move);
        if (!self)
            co_return;
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    try {
        co_await readBoards();
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (self)
        Q_EMIT refreshed();
}

QCoro::Task<> NativeOverviewView::advanceTask(QString orderId)
{
    const QPointer<NativeOverviewView> self(this);
    try {
        const TarnOrder advanced = co_await TarnOverviewCalls::advanceOrder(m_api, orderId);
        if (!self)
            co_return;
        QList<TarnOrder> orders = m_orders->rows();
        for (TarnOrder &order : orders) {
            if (order.id == advanced.id)
                order = advanced;
        }
        m_orders->setRows(fulfilmentOrder(orders));
        Q_EMIT ordersChanged();
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    setBusy(false);
    Q_EMIT refreshed();
}

void NativeOverviewView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeOverviewView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}

void NativeOverviewView::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}
