#include "screens/calls/NativeCallsView.h"

#include "screens/calls/CallBookRules.h"
#include "screens/calls/TarnCallCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeFirstLoad.h"
#include "shell/NativeStateErrors.h"
#include "shell/TarnAccess.h"

#include <QCoroTimer>
#include <QLocale>
#include <QPointer>
#include <QSettings>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

const QString callsApp = u"Calls"_s;
const QString leadsApp = u"Sales"_s;

QString cellOf(const TarnCall &call, const QString &column)
{
    if (column == "outcome"_L1)
        return call.outcome;
    if (column == "notes"_L1)
        return call.notes;
    return call.client_id.value_or(QString());
}

} // namespace

NativeCallsView::NativeCallsView(TarnAPI &api, QSettings &settings, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_settings(settings)
    , m_calls(new NativeCallModel(this))
    , m_recordings(new NativeCallModel(this))
    , m_leads(new NativeLeadModel(this))
    , m_leadCalls(new NativeCallModel(this))
    , m_player(new NativeCallPlayer(this))
{
    const QString remembered = m_settings.value(modeKey).toString();
    m_mode = CallBookRules::isMode(remembered) ? remembered : CallBookRules::modes().first().key;
}

NativeCallsView::~NativeCallsView() = default;

void NativeCallsView::setFilter(const QString &filter)
{
    if (m_filter == filter)
        return;
    m_filter = filter;
    applyFilter();
    Q_EMIT filterChanged();
}

void NativeCallsView::setSearch(const QString &search)
{
    if (m_search == search)
        return;
    m_search = search;
    applyFilter();
    Q_EMIT filterChanged();
}

void NativeCallsView::setLeadSearch(const QString &search)
{
    if (m_leadSearch == search)
        return;
    m_leadSearch = search;
    applyLeadFilter();
    Q_EMIT leadFilterChanged();
}

void NativeCallsView::setLeadStatus(const QString &status)
{
    if (m_leadStatus == status)
        return;
    m_leadStatus = status;
    applyLeadFilter();
    Q_EMIT leadFilterChanged();
}

QVariantList NativeCallsView::leadStatuses() const
{
    QStringList order;
    QHash<QString, int> counts;
    for (const TarnSalesLead &lead : m_allLeads) {
        if (!counts.contains(lead.status))
            order.append(lead.status);
        ++counts[lead.status];
    }
    QVariantList statuses { QVariantMap {
        { u"key"_s, QString() }, { u"label"_s, u"All"_s }, { u"count"_s, int(m_allLeads.size()) } } };
    for (const QString &status : std::as_const(order))
        statuses.append(QVariantMap { { u"key"_s, status }, { u"label"_s, CallBookRules::leadStatusLabel(status) },
            { u"count"_s, counts.value(status) } });
    return statuses;
}

QString NativeCallsView::leadSummary() const
{
    const QList<TarnSalesLead> &shown = m_leads->rows();
    qint64 estimate = 0;
    for (const TarnSalesLead &lead : shown)
        estimate += lead.estimate;
    const QString count = shown.size() == 1 ? u"1 lead"_s : u"%1 leads"_s.arg(shown.size());
    return u"%1 · %2 estimated"_s.arg(
        count, QLocale(QLocale::English).toCurrencyString(double(estimate) / 100, u"$"_s, 0));
}

void NativeCallsView::applyLeadFilter()
{
    QList<TarnSalesLead> shown;
    for (const TarnSalesLead &lead : std::as_const(m_allLeads)) {
        if ((m_leadStatus.isEmpty() || lead.status == m_leadStatus)
            && CallBookRules::leadMatchesSearch(lead, m_leadSearch))
            shown.append(lead);
    }
    m_leads->setRows(shown);
    Q_EMIT leadsChanged();
}

QVariantList NativeCallsView::modes() const
{
    QVariantList out;
    for (const CallBookRules::Mode &mode : CallBookRules::modes())
        out.append(QVariantMap { { u"key"_s, mode.key }, { u"label"_s, mode.label }, { u"detail"_s, mode.detail } });
    return out;
}

void NativeCallsView::setMode(const QString &mode)
{
    if (m_mode == mode || !CallBookRules::isMode(mode))
        return;
    m_mode = mode;
    m_settings.setValue(modeKey, mode);
    Q_EMIT modeChanged();
}

void NativeCallsView::setDialText(const QString &text)
{
    if (m_dialText == text)
        return;
    m_dialText = text;
    // A number typed by hand is no longer the lead's it was filled from.
    m_dialClientId.clear();
    m_dialName.clear();
    Q_EMIT dialChanged();
}

bool NativeCallsView::numberValid() const
{
    return !CallBookRules::dialledNumber(m_dialText).isEmpty();
}

QString NativeCallsView::numberHint() const
{
    if (m_dialText.trimmed().isEmpty() || numberValid())
        return {};
    return u"A number has 7 to 15 digits, with + or 00 before a country code."_s;
}

bool NativeCallsView::opens(const QString &app) const
{
    return m_api.session() && TarnAccess::fromSession(*m_api.session()).has(app);
}

bool NativeCallsView::mayCall() const
{
    return opens(callsApp);
}

bool NativeCallsView::canDial() const
{
    return numberValid() && !m_placing && (!m_placed || m_placed->status == "ended"_L1);
}

QString NativeCallsView::placedStatus() const
{
    if (m_placing)
        return u"placing"_s;
    return m_placed ? m_placed->status : QString();
}

QString NativeCallsView::placedLabel() const
{
    if (m_placing)
        return u"Calling…"_s;
    if (!m_placed)
        return {};
    const QString party = CallBookRules::partyOf(*m_placed);
    if (m_placed->status == "ringing"_L1)
        return m_mode == "phone-first"_L1 ? u"Ringing your phone, then %1…"_s.arg(party) : u"Ringing %1…"_s.arg(party);
    const QString length = CallBookRules::durationLabel(m_placed->duration);
    if (m_placed->status == "in-call"_L1)
        return u"In call with %1 · %2"_s.arg(party, length);
    return u"Call with %1 ended · %2"_s.arg(party, length);
}

QVariantMap NativeCallsView::openLead() const
{
    if (!m_lead)
        return {};
    const TarnSalesLead &lead = m_lead->lead;
    return { { u"id"_s, lead.id }, { u"name"_s, lead.name }, { u"phone"_s, lead.phone.value_or(QString()) },
        { u"email"_s, lead.email.value_or(QString()) }, { u"status"_s, CallBookRules::leadStatusLabel(lead.status) },
        { u"source"_s, lead.source }, { u"interest"_s, lead.interest },
        { u"owner"_s, lead.owner_name.value_or(QString()) },
        { u"estimate"_s, QLocale(QLocale::English).toCurrencyString(double(lead.estimate) / 100, u"$"_s, 0) } };
}

void NativeCallsView::appear()
{
    TarnRefreshLoop::run(
        this, &NativeCallsView::m_generation, ++m_generation, refreshIntervalMs, &NativeCallsView::refreshOnce);
    // A call placed before the screen was left is followed again.
    if (m_placed && m_placed->status != "ended"_L1)
        followPlaced(m_placed->id, m_generation);
}

void NativeCallsView::disappear()
{
    ++m_generation;
    m_player->pause();
}

void NativeCallsView::refresh()
{
    refreshOnce();
}

void NativeCallsView::clear()
{
    ++m_generation;
    m_player->clear();
    m_book.clear();
    m_calls->setRows({});
    m_recordings->setRows({});
    m_allLeads.clear();
    m_leads->setRows({});
    Q_EMIT leadsChanged();
    m_leadCalls->setRows({});
    m_lead.reset();
    m_placed.reset();
    m_placing = false;
    m_dialText.clear();
    m_dialClientId.clear();
    m_dialName.clear();
    m_fetching.clear();
    m_loading = m_loaded = false;
    m_error.clear();
    Q_EMIT bookChanged();
    Q_EMIT leadChanged();
    Q_EMIT placedChanged();
    Q_EMIT dialChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeCallsView::refreshOnce()
{
    const QPointer<NativeCallsView> self(this);
    NativeFirstLoad::begin(*this, m_loading, m_loaded);
    try {
        // The call book belongs to Calls and the leads to Sales: someone with
        // only one of them reads only that one.
        if (mayCall()) {
            const QList<TarnCall> book = co_await TarnCallCalls::calls(m_api);
            if (!self)
                co_return;
            showBook(book);
        }
        if (opens(leadsApp)) {
            const QList<TarnSalesLead> leads = co_await TarnCallCalls::salesLeads(m_api);
            if (!self)
                co_return;
            m_allLeads = leads;
            applyLeadFilter();
        }
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    NativeFirstLoad::end(*this, m_loading, m_loaded);
}

void NativeCallsView::showBook(const QList<TarnCall> &book)
{
    const bool sizeChanged = book.size() != m_book.size();
    m_book = book;
    applyFilter();
    if (m_placed) {
        const auto at
            = std::find_if(book.begin(), book.end(), [this](const TarnCall &call) { return call.id == m_placed->id; });
        if (at != book.end() && !(*at == *m_placed)) {
            m_placed = *at;
            Q_EMIT placedChanged();
            Q_EMIT dialChanged();
        }
    }
    if (sizeChanged)
        Q_EMIT bookChanged();
}

void NativeCallsView::applyFilter()
{
    QList<TarnCall> shown;
    QList<TarnCall> recorded;
    for (const TarnCall &call : std::as_const(m_book)) {
        if (!CallBookRules::matchesSearch(call, m_search))
            continue;
        if (CallBookRules::inFilter(call, m_filter))
            shown.append(call);
        if (call.has_recording)
            recorded.append(call);
    }
    m_calls->setRows(shown);
    m_recordings->setRows(recorded);
}

void NativeCallsView::saveCell(const QString &callId, const QString &column, const QString &value)
{
    const TarnCall *call = m_calls->find(callId);
    if (!call)
        call = m_recordings->find(callId);
    const QString trimmed = column == "notes"_L1 ? value : value.trimmed();
    if (!call || cellOf(*call, column) == trimmed)
        return;
    saveTask(callId, TarnCallCell { .column = column, .value = trimmed, .version = call->version });
}

QCoro::Task<> NativeCallsView::saveTask(QString callId, TarnCallCell cell)
{
    const QPointer<NativeCallsView> self(this);
    bool refused = false;
    try {
        const TarnCall saved = co_await TarnCallCalls::saveCallCell(m_api, callId, cell);
        if (!self)
            co_return;
        QList<TarnCall> book = m_book;
        for (TarnCall &call : book)
            if (call.id == saved.id)
                call = saved;
        showBook(book);
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
        refused = true;
    }
    if (refused) {
        // Someone else's change, or a call gone: show the book as it now
        // is, keeping the refusal in sight.
        const QString refusal = m_error;
        co_await refreshOnce();
        if (!self)
            co_return;
        setError(refusal);
    }
    Q_EMIT actionFinished();
}

void NativeCallsView::dial()
{
    const QString number = CallBookRules::dialledNumber(m_dialText);
    if (number.isEmpty()) {
        setError(numberHint().isEmpty() ? u"Type the number to call."_s : numberHint());
        return;
    }
    if (!canDial())
        return;
    m_placing = true;
    m_placed.reset();
    Q_EMIT placedChanged();
    Q_EMIT dialChanged();
    dialTask(TarnSalesCallStart { .number = number, .client_id = m_dialClientId, .mode = m_mode });
}

void NativeCallsView::dialLead(const QString &leadId)
{
    const auto at = std::find_if(
        m_allLeads.begin(), m_allLeads.end(), [&leadId](const TarnSalesLead &lead) { return lead.id == leadId; });
    if (at == m_allLeads.end() || !at->phone) {
        setError(u"This lead has no phone number."_s);
        return;
    }
    const TarnSalesLead lead = *at;
    setDialText(*lead.phone);
    m_dialClientId = lead.id;
    m_dialName = lead.name;
    Q_EMIT dialChanged();
    dial();
}

QCoro::Task<> NativeCallsView::dialTask(TarnSalesCallStart start)
{
    const QPointer<NativeCallsView> self(this);
    try {
        const TarnCall placed = co_await TarnCallCalls::startSalesCall(m_api, start);
        if (!self)
            co_return;
        m_placing = false;
        m_placed = placed;
        setError({});
        QList<TarnCall> book = m_book;
        book.prepend(placed);
        showBook(book);
        Q_EMIT placedChanged();
        Q_EMIT dialChanged();
        followPlaced(placed.id, m_generation);
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        m_placing = false;
        fail(error);
        Q_EMIT placedChanged();
        Q_EMIT dialChanged();
    }
    Q_EMIT actionFinished();
}

QCoro::Task<> NativeCallsView::followPlaced(QString callId, int generation)
{
    const QPointer<NativeCallsView> self(this);
    while (self && generation == m_generation && m_placed && m_placed->id == callId && m_placed->status != "ended"_L1) {
        co_await TarnRefreshLoop::pause(placedPollMs);
        if (!self || generation != m_generation)
            co_return;
        co_await refreshOnce();
    }
}

void NativeCallsView::playRecording(const QString &callId)
{
    if (m_player->callId() == callId) {
        m_player->toggle();
        return;
    }
    if (m_fetching == callId)
        return;
    m_fetching = callId;
    Q_EMIT busyChanged();
    recordingTask(callId);
}

QCoro::Task<> NativeCallsView::recordingTask(QString callId)
{
    const QPointer<NativeCallsView> self(this);
    try {
        const QByteArray bytes = co_await TarnCallCalls::callRecording(m_api, callId);
        if (!self || m_fetching != callId)
            co_return;
        if (m_player->load(callId, bytes))
            m_player->play();
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    if (m_fetching == callId) {
        m_fetching.clear();
        Q_EMIT busyChanged();
    }
    Q_EMIT actionFinished();
}

void NativeCallsView::openLeadDetail(const QString &leadId)
{
    leadTask(leadId);
}

void NativeCallsView::closeLead()
{
    if (!m_lead)
        return;
    m_lead.reset();
    m_leadCalls->setRows({});
    Q_EMIT leadChanged();
}

QCoro::Task<> NativeCallsView::leadTask(QString leadId)
{
    const QPointer<NativeCallsView> self(this);
    try {
        const TarnSalesLeadDetail detail = co_await TarnCallCalls::salesLead(m_api, leadId);
        if (!self)
            co_return;
        m_lead = detail;
        m_leadCalls->setRows(detail.calls);
        Q_EMIT leadChanged();
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (self)
        Q_EMIT actionFinished();
}

void NativeCallsView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeCallsView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}
