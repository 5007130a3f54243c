#include "assistant/TarnPiloConversation.h"

#include "assistant/TarnAgentCalls.h"
#include "assistant/TarnAgentWelcome.h"
#include "assistant/TarnPiloChat.h"

#include <QDateTime>
#include <QPointer>
#include <QUuid>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// What a failed call leaves for the panel. A signed-out failure shows
// nothing: the client has already started the way back to sign-in.
struct Failure {
    TarnAPIError::Kind kind;
    QString text;

    [[nodiscard]] static Failure of(const TarnAPIError &error)
    {
        return { error.kind(),
            error.kind() == TarnAPIError::Kind::signedOut ? QString() : QString::fromUtf8(error.what()) };
    }
    // The request may or may not have reached the service.
    [[nodiscard]] bool unknownOutcome() const
    {
        return kind == TarnAPIError::Kind::transport || kind == TarnAPIError::Kind::invalidResponse;
    }
};

// Stores a changed value and announces it; false when nothing changed.
template <typename T>
bool assign(TarnPiloConversation *self, T &member, const T &value, void (TarnPiloConversation::*changed)())
{
    if (member == value)
        return false;
    member = value;
    Q_EMIT(self->*changed)();
    return true;
}

// Blocked work is still under way for its author: it resumes after a review.
bool unfinished(const TarnAgentRequest &request)
{
    return request.status == "queued"_L1 || request.status == "running"_L1 || request.status == "blocked"_L1;
}

} // namespace

TarnPiloConversation::TarnPiloConversation(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_clock([] { return QDateTime::currentDateTime(); })
{
    m_poll.setInterval(pollMs);
    connect(&m_poll, &QTimer::timeout, this, [this] { refresh(true); });
}

void TarnPiloConversation::setClock(std::function<QDateTime()> clock)
{
    m_clock = std::move(clock);
    showRows();
}

void TarnPiloConversation::clear()
{
    ++m_generation;
    m_pending.reset();
    m_conversation.reset();
    setUncertain(false);
    setError({});
    showRows();
    Q_EMIT canSendChanged();
    updatePolling();
}

void TarnPiloConversation::setShowHistory(bool show)
{
    if (assign(this, m_showHistory, show, &TarnPiloConversation::showHistoryChanged))
        showRows();
}

void TarnPiloConversation::setActive(bool active)
{
    if (!assign(this, m_active, active, &TarnPiloConversation::activeChanged))
        return;
    if (active)
        refresh(true);
    updatePolling();
}

void TarnPiloConversation::setError(const QString &error)
{
    assign(this, m_error, error, &TarnPiloConversation::errorChanged);
}

void TarnPiloConversation::setSending(bool sending)
{
    if (assign(this, m_sending, sending, &TarnPiloConversation::sendingChanged))
        Q_EMIT canSendChanged();
}

void TarnPiloConversation::setUncertain(bool uncertain)
{
    if (!assign(this, m_uncertain, uncertain, &TarnPiloConversation::uncertainSendChanged))
        return;
    Q_EMIT canSendChanged();
    updatePolling();
}

void TarnPiloConversation::updatePolling()
{
    const bool waiting
        = m_conversation && std::any_of(m_conversation->requests.begin(), m_conversation->requests.end(), unfinished);
    if (m_active && (waiting || m_uncertain)) {
        if (!m_poll.isActive())
            m_poll.start();
    } else {
        m_poll.stop();
    }
}

void TarnPiloConversation::apply(TarnAgentConversation conversation)
{
    if (m_conversation == conversation)
        return;
    m_conversation = std::move(conversation);
    showRows();
    Q_EMIT canSendChanged();
    updatePolling();
}

void TarnPiloConversation::showRows()
{
    QList<TarnAgentRequest> rows;
    int folded = 0;
    if (m_conversation) {
        const QDateTime now = m_clock();
        for (const TarnAgentRequest &request : m_conversation->requests) {
            if (TarnPiloChat::isNoise(request))
                continue;
            const std::optional<QDateTime> cutoff
                = TarnPiloChat::cutoff(TarnPiloChat::groupKey(request), m_showHistory, now);
            if (cutoff && QDateTime::fromString(request.created_at, Qt::ISODateWithMs) < *cutoff) {
                ++folded;
                continue;
            }
            rows.append(request);
        }
    }
    m_model.setRows(rows);
    m_folded = folded;
    Q_EMIT conversationChanged();
}

QCoro::Task<std::optional<TarnAPIError>> TarnPiloConversation::askPending(Pending pending)
{
    try {
        co_await TarnAgentCalls::askAgent(m_api, pending.text, pending.page, pending.run, pending.key);
    } catch (const TarnAPIError &error) {
        co_return error;
    }
    co_return std::nullopt;
}

QCoro::Task<> TarnPiloConversation::refresh(bool resolveUncertain)
{
    const QPointer<TarnPiloConversation> self(this);
    const quint64 generation = ++m_generation;
    if (resolveUncertain && m_pending && m_uncertain && !m_sending) {
        // The same key again: the service answers the request it stored
        // under it, or stores it now if the first send never arrived.
        const Pending pending = *m_pending;
        Pending outgoing = pending;
        const std::optional<TarnAPIError> error = co_await askPending(std::move(outgoing));
        if (!self)
            co_return;
        const std::optional<Failure> failure = error ? std::optional(Failure::of(*error)) : std::nullopt;
        if (!failure && m_pending && m_pending->key == pending.key) {
            m_pending.reset();
            setUncertain(false);
            setError({});
        } else if (failure && !failure->unknownOutcome()) {
            // A clear refusal: the request was not stored and will not be.
            m_pending.reset();
            setUncertain(false);
            setError(failure->text);
        }
    }
    std::optional<TarnAgentConversation> loaded;
    std::optional<Failure> failure;
    try {
        loaded = co_await TarnAgentCalls::loadConversation(m_api);
    } catch (const TarnAPIError &error) {
        failure = Failure::of(error);
    }
    if (!self || generation != m_generation)
        co_return;
    if (loaded)
        apply(std::move(*loaded));
    else if (failure && !failure->text.isEmpty())
        setError(failure->text);
}

QCoro::Task<bool> TarnPiloConversation::send(QString text, std::optional<QString> page, TarnPiloRun run)
{
    text = text.trimmed();
    if (text.isEmpty() || !canSend())
        co_return false;
    const QPointer<TarnPiloConversation> self(this);
    const Pending pending { QUuid::createUuid().toString(QUuid::WithoutBraces), text, page, run };
    m_pending = pending;
    setError({});
    setSending(true);
    Pending outgoing = pending;
    const std::optional<TarnAPIError> error = co_await askPending(std::move(outgoing));
    if (!self)
        co_return false;
    const std::optional<Failure> failure = error ? std::optional(Failure::of(*error)) : std::nullopt;
    if (failure) {
        // Uncertain before sending ends, so sending never opens in between.
        if (failure->unknownOutcome())
            setUncertain(true);
        else
            m_pending.reset();
        setSending(false);
        setError(failure->text);
        co_return false;
    }
    m_pending.reset();
    setSending(false);
    Q_EMIT sent();
    co_await refresh(false);
    co_return true;
}

QVariantList TarnPiloConversation::suggestions()
{
    QVariantList out;
    for (const TarnAgentWelcome::Suggestion &suggestion : TarnAgentWelcome::suggestions()) {
        out.append(QVariantMap {
            { u"label"_s, suggestion.label }, { u"symbol"_s, suggestion.symbol }, { u"prompt"_s, suggestion.prompt } });
    }
    return out;
}

QString TarnPiloConversation::greeting(const QString &name) const
{
    return TarnAgentWelcome::greeting(name, m_clock().time().hour());
}

void TarnPiloConversation::reload()
{
    refresh(true);
}

void TarnPiloConversation::ask(const QString &text, const QString &page, bool process)
{
    send(text, page.isEmpty() ? std::nullopt : std::optional(page), process ? TarnPiloRun::process : TarnPiloRun::fast);
}

QCoro::Task<> TarnPiloConversation::change(std::function<QCoro::Task<>()> call)
{
    const QPointer<TarnPiloConversation> self(this);
    std::optional<Failure> failure;
    try {
        co_await call();
    } catch (const TarnAPIError &error) {
        failure = Failure::of(error);
    }
    if (!self)
        co_return;
    if (failure)
        setError(failure->text);
    co_await refresh(false);
}

void TarnPiloConversation::rename(const QString &id, const QString &title)
{
    change([this, id, title]() -> QCoro::Task<> { co_await TarnAgentCalls::renameAgentRequest(m_api, id, title); });
}

void TarnPiloConversation::remove(const QString &id)
{
    change([this, id]() -> QCoro::Task<> { co_await TarnAgentCalls::removeAgentRequest(m_api, id); });
}
