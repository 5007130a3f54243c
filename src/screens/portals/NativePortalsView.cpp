#include "screens/portals/NativePortalsView.h"

#include "screens/portals/TarnPortalCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "shell/NativeFirstLoad.h"
#include "shell/NativeStateErrors.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

QVariant optional(const std::optional<QString> &value)
{
    return value.value_or(QString());
}

} // namespace

NativePortalsView::NativePortalsView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_accounts(new AccountModel(
          {
              { "clientId", [](const TarnPortalAccount &r) { return r.client_id; } },
              { "name", [](const TarnPortalAccount &r) { return r.client_name; } },
              { "status", [](const TarnPortalAccount &r) { return r.status; } },
              { "people", [](const TarnPortalAccount &r) { return r.people_count; } },
              { "openAlerts", [](const TarnPortalAccount &r) { return r.open_alerts; } },
              { "piloKeyTail", [](const TarnPortalAccount &r) { return optional(r.pilo_key_tail); } },
          },
          this))
    , m_alerts(new AlertModel(
          {
              { "alertId", [](const TarnPortalAlert &r) { return r.id; } },
              { "clientId", [](const TarnPortalAlert &r) { return r.client_id; } },
              { "clientName", [](const TarnPortalAlert &r) { return r.client_name; } },
              { "kind", [](const TarnPortalAlert &r) { return r.kind; } },
              { "message", [](const TarnPortalAlert &r) { return r.text; } },
              { "createdAt", [](const TarnPortalAlert &r) { return r.created_at; } },
          },
          this))
    , m_people(new PersonModel(
          {
              { "personId", [](const TarnPortalPerson &r) { return r.id; } },
              { "name", [](const TarnPortalPerson &r) { return r.name; } },
              { "email", [](const TarnPortalPerson &r) { return r.email; } },
              { "lastSeenAt", [](const TarnPortalPerson &r) { return optional(r.last_seen_at); } },
          },
          this))
    , m_reports(new ReportModel(
          {
              { "reportId", [](const TarnPortalReport &r) { return r.id; } },
              { "title", [](const TarnPortalReport &r) { return r.title; } },
              { "month", [](const TarnPortalReport &r) { return r.month; } },
              { "body", [](const TarnPortalReport &r) { return r.body; } },
              { "published", [](const TarnPortalReport &r) { return r.published; } },
          },
          this))
    , m_work(new WorkModel(
          {
              { "workId", [](const TarnPortalWork &r) { return r.id; } },
              { "title", [](const TarnPortalWork &r) { return r.title; } },
              { "status", [](const TarnPortalWork &r) { return r.status; } },
          },
          this))
{
}

NativePortalsView::~NativePortalsView() = default;

QVariantMap NativePortalsView::account() const
{
    if (!m_open)
        return {};
    const TarnPortalAccount &a = m_open->account;
    return { { u"clientId"_s, a.client_id }, { u"name"_s, a.client_name }, { u"status"_s, a.status },
        { u"welcome"_s, a.welcome }, { u"leadKeyTail"_s, optional(a.lead_key_tail) },
        { u"piloKeyTail"_s, optional(a.pilo_key_tail) }, { u"refreshedAt"_s, optional(a.refreshed_at) },
        { u"version"_s, a.version } };
}

QVariantList NativePortalsView::months() const
{
    QVariantList out;
    for (const TarnPerformanceMonth &m : m_months)
        out.append(QVariantMap { { u"month"_s, m.month }, { u"visits"_s, m.visits }, { u"leads"_s, m.leads },
            { u"calls"_s, m.calls }, { u"revenue"_s, m.revenue } });
    return out;
}

void NativePortalsView::refresh()
{
    refreshTask();
}

void NativePortalsView::clear()
{
    ++m_generation;
    setIssued({}, {});
    m_accounts->setRows({});
    m_alerts->setRows({});
    showPortal(std::nullopt, {});
    m_loading = m_loaded = false;
    setError({});
    Q_EMIT busyChanged();
}

QCoro::Task<> NativePortalsView::refreshTask()
{
    const QPointer<NativePortalsView> self(this);
    const int generation = m_generation;
    NativeFirstLoad::begin(*this, m_loading, m_loaded);
    try {
        const TarnPortalDashboard dashboard = co_await TarnPortalCalls::portalDashboard(m_api);
        if (!self || generation != m_generation)
            co_return;
        m_accounts->setRows(dashboard.accounts);
        m_alerts->setRows(dashboard.alerts);
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    NativeFirstLoad::end(*this, m_loading, m_loaded);
}

void NativePortalsView::openPortal(const QString &clientId)
{
    if (clientId == openClientId())
        return;
    ++m_generation;
    setIssued({}, {});
    setError({});
    openTask(clientId);
}

void NativePortalsView::closePortal()
{
    ++m_generation;
    setIssued({}, {});
    showPortal(std::nullopt, {});
}

QCoro::Task<> NativePortalsView::openTask(QString clientId)
{
    const QPointer<NativePortalsView> self(this);
    const int generation = m_generation;
    try {
        const TarnPortalAccountDetail detail = co_await TarnPortalCalls::portalAccountDetail(m_api, clientId);
        if (!self || generation != m_generation)
            co_return;
        const QList<TarnPerformanceMonth> figures = co_await TarnPortalCalls::clientPerformance(m_api, clientId);
        if (!self || generation != m_generation)
            co_return;
        showPortal(detail, figures);
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    Q_EMIT refreshed();
}

QCoro::Task<> NativePortalsView::reloadOpen()
{
    const QString open = openClientId();
    if (!open.isEmpty())
        co_await openTask(open);
    co_await refreshTask();
}

void NativePortalsView::showPortal(std::optional<TarnPortalAccountDetail> detail, QList<TarnPerformanceMonth> figures)
{
    m_people->setRows(detail ? detail->people : QList<TarnPortalPerson>());
    m_reports->setRows(detail ? detail->reports : QList<TarnPortalReport>());
    m_work->setRows(detail ? detail->work : QList<TarnPortalWork>());
    const bool changed = m_open != detail || m_months != figures;
    m_open = std::move(detail);
    m_months = std::move(figures);
    if (changed)
        Q_EMIT portalChanged();
}

template <typename T> QCoro::Task<> NativePortalsView::changeTask(QCoro::Task<T> change)
{
    const QPointer<NativePortalsView> self(this);
    const int generation = m_generation;
    QString refusal;
    try {
        co_await change;
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
        refusal = m_error;
    }
    if (!self || generation != m_generation)
        co_return;
    setIssued({}, {});
    co_await reloadOpen();
    if (!self)
        co_return;
    setError(refusal);
    Q_EMIT actionFinished();
}

QCoro::Task<> NativePortalsView::issueTask(QCoro::Task<TarnPortalKey> issuing)
{
    const QPointer<NativePortalsView> self(this);
    const int generation = m_generation;
    std::optional<TarnPortalKey> issued;
    try {
        issued = co_await issuing;
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    if (!self || generation != m_generation)
        co_return;
    if (issued) {
        setIssued(issued->key, {});
        setError({});
    }
    co_await reloadOpen();
    if (self)
        Q_EMIT actionFinished();
}

QCoro::Task<> NativePortalsView::linkTask(QCoro::Task<TarnPortalLink> making)
{
    const QPointer<NativePortalsView> self(this);
    const int generation = m_generation;
    try {
        const TarnPortalLink link = co_await making;
        if (!self || generation != m_generation)
            co_return;
        setIssued({}, link.url);
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    Q_EMIT actionFinished();
}

void NativePortalsView::acknowledgeAlert(const QString &alertId)
{
    const QList<TarnPortalAlert> &rows = m_alerts->rows();
    const auto alert = std::find_if(rows.begin(), rows.end(), [&](const auto &a) { return a.id == alertId; });
    if (alert != rows.end())
        changeTask(TarnPortalCalls::acknowledgePortalAlert(m_api, alert->client_id, alertId));
}

void NativePortalsView::saveAccount(const QString &status, const QString &welcome)
{
    if (!m_open)
        return;
    TarnPortalAccountUpdate update { .version = m_open->account.version };
    if (status != m_open->account.status)
        update.status = status;
    if (welcome != m_open->account.welcome)
        update.welcome = welcome;
    if (!update.status && !update.welcome)
        return;
    changeTask(TarnPortalCalls::updatePortalAccount(m_api, openClientId(), update));
}

void NativePortalsView::invitePerson(const QString &name, const QString &email)
{
    if (name.trimmed().isEmpty() || !email.contains(u'@')) {
        setError(u"Give the person's name and email address."_s);
        return;
    }
    if (m_open)
        changeTask(TarnPortalCalls::invitePortalPerson(m_api, openClientId(), { name.trimmed(), email.trimmed() }));
}

void NativePortalsView::removePerson(const QString &personId)
{
    if (m_open)
        changeTask(TarnPortalCalls::removePortalPerson(m_api, openClientId(), personId));
}

void NativePortalsView::makePersonLink(const QString &personId)
{
    if (m_open)
        linkTask(TarnPortalCalls::portalPersonLink(m_api, openClientId(), personId));
}

void NativePortalsView::issueLeadKey()
{
    if (m_open)
        issueTask(TarnPortalCalls::issuePortalLeadKey(m_api, openClientId()));
}

void NativePortalsView::issuePiloKey()
{
    if (m_open)
        issueTask(TarnPortalCalls::issuePortalPiloKey(m_api, openClientId()));
}

void NativePortalsView::revokePiloKey()
{
    if (m_open)
        changeTask(TarnPortalCalls::revokePortalPiloKey(m_api, openClientId()));
}

void NativePortalsView::dismissIssued()
{
    setIssued({}, {});
}

void NativePortalsView::createReport(const QString &title, const QString &month)
{
    if (m_open)
        changeTask(TarnPortalCalls::createPortalReport(m_api, openClientId(), { title.trimmed(), month }));
}

void NativePortalsView::setReportPublished(const QString &reportId, bool published)
{
    if (m_open)
        changeTask(TarnPortalCalls::setPortalReportPublished(m_api, openClientId(), reportId, { published }));
}

void NativePortalsView::deleteReport(const QString &reportId)
{
    if (m_open)
        changeTask(TarnPortalCalls::deletePortalReport(m_api, openClientId(), reportId));
}

void NativePortalsView::deleteWork(const QString &workId)
{
    if (m_open)
        changeTask(TarnPortalCalls::deletePortalWork(m_api, openClientId(), workId));
}

void NativePortalsView::syncPerformance()
{
    if (m_open)
        changeTask(TarnPortalCalls::syncClientPerformance(m_api, openClientId()));
}

void NativePortalsView::refreshPortal()
{
    if (m_open)
        changeTask(TarnPortalCalls::refreshPortal(m_api, openClientId()));
}

void NativePortalsView::setIssued(const QString &key, const QString &link)
{
    if (m_issuedKey == key && m_personLink == link)
        return;
    m_issuedKey = key;
    m_personLink = link;
    Q_EMIT issuedKeyChanged();
}

void NativePortalsView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativePortalsView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}
