#include "screens/customers/NativeCustomersView.h"

#include "screens/customers/CustomerRules.h"
#include "screens/customers/TarnCustomerCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeStateErrors.h"

#include <QPointer>

using namespace Qt::StringLiterals;

NativeCustomersView::NativeCustomersView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_list(makeModel())
    , m_profile(new NativeCustomerProfile(api, &QDateTime::currentDateTime, this))
{
    for (const CustomerRules::Stage &stage : CustomerRules::stages())
        m_columns.insert(stage.id, makeModel());
    m_searchDelay.setSingleShot(true);
    m_searchDelay.setInterval(searchDelayMs);
    connect(&m_searchDelay, &QTimer::timeout, this, [this] {
        m_applied = m_search;
        apply();
    });
    connect(m_profile, &NativeCustomerProfile::customerChanged, this, &NativeCustomersView::refresh);
    connect(m_profile, &NativeCustomerProfile::signedOut, this, &NativeCustomersView::signedOut);
}

NativeCustomersView::~NativeCustomersView() = default;

NativeCustomersView::Model *NativeCustomersView::makeModel()
{
    return new Model(
        {
            { "clientId", &TarnCustomerSummary::id },
            { "name", &TarnCustomerSummary::name },
            { "stage", &TarnCustomerSummary::stage },
            { "stageLabel", [](const TarnCustomerSummary &c) { return CustomerRules::stageLabel(c.stage); } },
            { "email", &TarnCustomerSummary::email },
            { "phone", &TarnCustomerSummary::phone },
            { "company", &TarnCustomerSummary::company },
            { "followUp",
                [](const TarnCustomerSummary &c) {
                    return CustomerRules::dayText(c.follow_up_on.value_or(QString()));
                } },
            { "openTasks", &TarnCustomerSummary::open_tasks },
        },
        this);
}

QVariantList NativeCustomersView::stages() const
{
    QVariantList out;
    for (const CustomerRules::Stage &stage : CustomerRules::stages())
        out.append(QVariantMap { { u"id"_s, stage.id }, { u"label"_s, stage.label } });
    return out;
}

QVariantList NativeCustomersView::stageFilters() const
{
    return QVariantList { QVariantMap { { u"id"_s, QString() }, { u"label"_s, u"Every stage"_s } } } + stages();
}

void NativeCustomersView::setSearchText(const QString &text)
{
    if (m_search == text)
        return;
    m_search = text;
    Q_EMIT searchTextChanged();
    m_searchDelay.start();
}

void NativeCustomersView::setStageFilter(const QString &stage)
{
    if (m_stage == stage)
        return;
    m_stage = stage;
    Q_EMIT stageFilterChanged();
    apply();
}

QAbstractListModel *NativeCustomersView::stageModel(const QString &stage) const
{
    return m_columns.value(stage);
}

QString NativeCustomersView::customerAt(int row) const
{
    return row >= 0 && row < m_list->rows().size() ? m_list->rows().at(row).id : QString();
}

void NativeCustomersView::appear()
{
    TarnRefreshLoop::run(this, &NativeCustomersView::m_loopGeneration, ++m_loopGeneration, refreshIntervalMs,
        &NativeCustomersView::refreshOnce);
}

void NativeCustomersView::disappear()
{
    ++m_loopGeneration;
}

void NativeCustomersView::refresh()
{
    loadTask(m_generation);
}

void NativeCustomersView::open(const QString &clientId)
{
    m_profile->open(clientId);
}

void NativeCustomersView::clear()
{
    ++m_generation;
    ++m_loopGeneration;
    m_all.clear();
    m_search.clear();
    m_applied.clear();
    m_stage.clear();
    m_loaded = m_loading = false;
    m_profile->close();
    apply();
    setError({});
    Q_EMIT searchTextChanged();
    Q_EMIT stageFilterChanged();
    Q_EMIT loadingChanged();
}

QCoro::Task<> NativeCustomersView::refreshOnce()
{
    co_await loadTask(m_generation);
}

QCoro::Task<> NativeCustomersView::loadTask(int generation)
{
    const QPointer<NativeCustomersView> self(this);
    m_loading = true;
    Q_EMIT loadingChanged();
    const QString everyStage;
    try {
        TarnCustomerList list = co_await TarnCustomerCalls::crm360Clients(m_api, everyStage);
        if (!self || generation != m_generation)
            co_return;
        m_all = std::move(list.clients);
        m_loaded = true;
        setError({});
        apply();
    } catch (const TarnAPIError &error) {
        if (self && generation == m_generation)
            fail(error);
    }
    if (!self || generation != m_generation)
        co_return;
    m_loading = false;
    Q_EMIT loadingChanged();
    Q_EMIT refreshed();
}

void NativeCustomersView::changeStage(const QString &clientId, const QString &stage)
{
    const auto it = std::find_if(
        m_all.begin(), m_all.end(), [&clientId](const TarnCustomerSummary &c) { return c.id == clientId; });
    if (it == m_all.end() || it->stage == stage || !m_columns.contains(stage))
        return;
    // The card moves now; the service's answer settles where it stays.
    it->stage = stage;
    apply();
    stageTask(clientId, stage);
}

QCoro::Task<> NativeCustomersView::stageTask(QString id, QString stage)
{
    const QPointer<NativeCustomersView> self(this);
    try {
        co_await TarnCustomerCalls::crm360ChangeStage(m_api, id, stage);
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (!self)
        co_return;
    if (m_profile->clientId() == id)
        m_profile->reload();
    co_await loadTask(m_generation);
}

void NativeCustomersView::apply()
{
    QHash<QString, QList<TarnCustomerSummary>> columns;
    QList<TarnCustomerSummary> listed;
    for (const TarnCustomerSummary &customer : std::as_const(m_all)) {
        if (!CustomerRules::matches(customer, m_applied))
            continue;
        columns[customer.stage].append(customer);
        if (m_stage.isEmpty() || customer.stage == m_stage)
            listed.append(customer);
    }
    for (auto it = m_columns.cbegin(); it != m_columns.cend(); ++it)
        it.value()->setRows(columns.value(it.key()));
    const int before = count();
    m_list->setRows(listed);
    if (count() != before || !listed.isEmpty())
        Q_EMIT listChanged();
}

void NativeCustomersView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeCustomersView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}
