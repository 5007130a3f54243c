#include "money/NativePaymentClientPanel.h"

#include "money/NativeOutcome.h"
#include "money/TarnLedgerDates.h"
#include "money/TarnMoneyInput.h"
#include "money/TarnPaymentsCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeStateErrors.h"

#include <QDesktopServices>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

using CardRow = NativePaymentClientPanel::CardRow;
using ScheduleRow = NativePaymentClientPanel::ScheduleRow;

TarnPaymentScheduleAction onSchedule(const QString &action, const QString &scheduleID)
{
    return { action, scheduleID, std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt };
}

QString cardLabel(const TarnPaymentCard &card)
{
    return u"%1 ending %2, expires %3"_s.arg(card.card_type, card.last4, card.expiration);
}

} // namespace

NativePaymentClientPanel::NativePaymentClientPanel(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_opener([](const QUrl &url) { return QDesktopServices::openUrl(url); })
    , m_cards({
          { "profileId", [](const CardRow &r) { return r.id; } },
          { "cardType", [](const CardRow &r) { return r.cardType; } },
          { "label", [](const CardRow &r) { return r.label; } },
      })
    , m_schedules({
          { "scheduleId", [](const ScheduleRow &r) { return r.id; } },
          { "amount", [](const ScheduleRow &r) { return r.amount; } },
          { "interval", [](const ScheduleRow &r) { return r.interval; } },
          { "nextOn", [](const ScheduleRow &r) { return r.nextOn; } },
          { "status", [](const ScheduleRow &r) { return r.status; } },
          { "card", [](const ScheduleRow &r) { return r.card; } },
      })
{
}

NativePaymentClientPanel::~NativePaymentClientPanel() = default;

void NativePaymentClientPanel::setClientId(const QString &clientID)
{
    if (clientID == m_clientID)
        return;
    m_clientID = clientID;
    // A card session belongs to the client it was started for.
    ++m_sessionGeneration;
    setSession(false, {});
    m_cards.setRows({});
    m_schedules.setRows({});
    NativeStateErrors::show(*this, m_error, {});
    Q_EMIT clientChanged();
    reload();
}

void NativePaymentClientPanel::reload()
{
    if (!m_clientID.isEmpty())
        load(++m_generation);
}

void NativePaymentClientPanel::clear()
{
    ++m_generation;
    ++m_sessionGeneration;
    m_clientID.clear();
    m_cards.setRows({});
    m_schedules.setRows({});
    m_loading = false;
    m_busy = false;
    setSession(false, {});
    NativeStateErrors::show(*this, m_error, {});
    Q_EMIT clientChanged();
    Q_EMIT stateChanged();
}

QCoro::Task<> NativePaymentClientPanel::load(int generation)
{
    const QPointer<NativePaymentClientPanel> self(this);
    m_loading = true;
    Q_EMIT stateChanged();
    const QString clientID = m_clientID;
    try {
        const TarnPaymentCards cards = co_await TarnPaymentsCalls::paymentCards(m_api, clientID);
        if (!self || generation != m_generation)
            co_return;
        apply(cards);
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        NativeStateErrors::fail(*this, m_error, error);
    }
    m_loading = false;
    Q_EMIT stateChanged();
}

void NativePaymentClientPanel::apply(const TarnPaymentCards &cards)
{
    QList<CardRow> cardRows;
    QHash<QString, QString> labels;
    for (const TarnPaymentCard &card : cards.cards) {
        cardRows.append({ card.payment_profile_id, card.card_type, cardLabel(card) });
        labels.insert(card.payment_profile_id, u"%1 ending %2"_s.arg(card.card_type, card.last4));
    }
    m_cards.setRows(cardRows);
    QList<ScheduleRow> scheduleRows;
    for (const TarnPaymentSchedule &schedule : cards.schedules) {
        scheduleRows.append({ schedule.id, TarnMoneyInput::dollars(schedule.amount), schedule.interval,
            schedule.next_on, schedule.status, labels.value(schedule.payment_profile_id) });
    }
    m_schedules.setRows(scheduleRows);
}

void NativePaymentClientPanel::setSession(bool following, const QString &text)
{
    if (following == m_following && text == m_sessionText)
        return;
    m_following = following;
    m_sessionText = text;
    Q_EMIT cardSessionChanged();
}

void NativePaymentClientPanel::stopFollowing(const QString &error)
{
    setSession(false, {});
    NativeStateErrors::show(*this, m_error, error);
}

void NativePaymentClientPanel::setBusy(bool busy)
{
    m_busy = busy;
    Q_EMIT stateChanged();
}

void NativePaymentClientPanel::addCard()
{
    if (m_clientID.isEmpty() || m_following)
        return;
    startSession(++m_sessionGeneration);
}

void NativePaymentClientPanel::cancelCard()
{
    ++m_sessionGeneration;
    setSession(false, {});
}

QCoro::Task<> NativePaymentClientPanel::startSession(int generation)
{
    const QPointer<NativePaymentClientPanel> self(this);
    setSession(true, u"Opening the card page…"_s);
    const QString clientID = m_clientID;
    auto call = [&] { return TarnPaymentsCalls::startCardSession(m_api, clientID); };
    NativeOutcome<TarnCardSession> outcome = co_await nativeOutcome(std::move(call));
    if (!self || generation != m_sessionGeneration)
        co_return;
    if (!outcome.value) {
        stopFollowing(outcome.error);
        co_return;
    }
    if (!m_opener(QUrl(outcome.value->url))) {
        stopFollowing(u"The browser could not be opened for the card page."_s);
        co_return;
    }
    NativeStateErrors::show(*this, m_error, {});
    setSession(true, u"Waiting for the card to be saved in the browser…"_s);
    follow(outcome.value->id, generation);
}

QCoro::Task<> NativePaymentClientPanel::follow(QString sessionID, int generation)
{
    const QPointer<NativePaymentClientPanel> self(this);
    while (self && generation == m_sessionGeneration) {
        co_await TarnRefreshLoop::pause(followIntervalMs);
        if (!self || generation != m_sessionGeneration)
            co_return;
        auto call = [&] { return TarnPaymentsCalls::finishCardSession(m_api, sessionID); };
        NativeOutcome<TarnCardSessionProgress> outcome = co_await nativeOutcome(std::move(call));
        if (!self || generation != m_sessionGeneration)
            co_return;
        if (!outcome.value) {
            stopFollowing(outcome.error);
            co_return;
        }
        if (outcome.value->status == "expired"_L1) {
            setSession(false, u"The card page expired after 15 minutes. Add the card again."_s);
            co_return;
        }
        if (outcome.value->status == "completed"_L1 && outcome.value->card) {
            setSession(false, u"Saved the %1."_s.arg(cardLabel(*outcome.value->card)));
            reload();
            co_return;
        }
    }
}

bool NativePaymentClientPanel::createSchedule(
    const QString &profileID, const QString &amount, const QString &interval, const QString &nextOn)
{
    const std::optional<qint64> cents = TarnMoneyInput::cents(amount, false);
    QString refusal;
    if (profileID.isEmpty())
        refusal = u"Choose a saved card to charge."_s;
    else if (!cents)
        refusal = u"Type an amount of at least 0.01, with up to two decimals."_s;
    else if (interval != "monthly"_L1 && interval != "weekly"_L1)
        refusal = u"Choose monthly or weekly."_s;
    else if (!TarnLedgerDates::isDay(nextOn))
        refusal = u"Give the first day as YYYY-MM-DD."_s;
    if (!refusal.isEmpty()) {
        NativeStateErrors::show(*this, m_error, refusal);
        return false;
    }
    act({ .action = u"create"_s,
        .schedule_id = std::nullopt,
        .client_id = m_clientID,
        .payment_profile_id = profileID,
        .amount = *cents,
        .interval = interval,
        .next_on = nextOn });
    return true;
}

void NativePaymentClientPanel::pauseSchedule(const QString &scheduleID)
{
    act(onSchedule(u"pause"_s, scheduleID));
}

void NativePaymentClientPanel::resumeSchedule(const QString &scheduleID)
{
    act(onSchedule(u"resume"_s, scheduleID));
}

void NativePaymentClientPanel::cancelSchedule(const QString &scheduleID)
{
    act(onSchedule(u"cancel"_s, scheduleID));
}

QCoro::Task<> NativePaymentClientPanel::act(TarnPaymentScheduleAction action)
{
    const QPointer<NativePaymentClientPanel> self(this);
    setBusy(true);
    auto call = [&] { return TarnPaymentsCalls::managePaymentSchedule(m_api, action); };
    NativeOutcome<TarnPaymentSchedule> outcome = co_await nativeOutcome(std::move(call));
    if (!self)
        co_return;
    setBusy(false);
    NativeStateErrors::show(*this, m_error, outcome.error);
    // Refused or not, the service's schedules are what shows.
    reload();
    if (outcome.value)
        Q_EMIT changed();
}
