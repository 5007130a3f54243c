#include "assistant/NativePiloReview.h"

#include "assistant/TarnAgentCalls.h"
#include "service/TarnAPIError.h"

#include <QPointer>

using namespace Qt::StringLiterals;

NativePiloReview::NativePiloReview(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
{
}

void NativePiloReview::setError(const QString &error)
{
    if (m_error == error)
        return;
    m_error = error;
    Q_EMIT errorChanged();
}

void NativePiloReview::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}

QCoro::Task<> NativePiloReview::refresh()
{
    const QPointer<NativePiloReview> self(this);
    const quint64 generation = ++m_generation;
    std::optional<TarnBlockedAgentRequests> blocked;
    QString failure;
    try {
        blocked = co_await TarnAgentCalls::blockedAgentRequests(m_api);
    } catch (const TarnAPIError &error) {
        if (error.kind() != TarnAPIError::Kind::signedOut)
            failure = QString::fromUtf8(error.what());
    }
    if (!self || generation != m_generation)
        co_return;
    if (blocked)
        m_model.setRows(blocked->requests);
    else if (!failure.isEmpty())
        setError(failure);
    if (!m_loaded) {
        m_loaded = true;
        Q_EMIT loadedChanged();
    }
}

QCoro::Task<bool> NativePiloReview::resume(QString id, QString decision, QString reconciliation)
{
    if (m_busy)
        co_return false;
    const QPointer<NativePiloReview> self(this);
    setBusy(true);
    setError({});
    bool failed = false;
    QString failure;
    try {
        co_await TarnAgentCalls::resumeAgentRequest(m_api, id, decision, reconciliation);
    } catch (const TarnAPIError &error) {
        failed = true;
        if (error.kind() != TarnAPIError::Kind::signedOut)
            failure = QString::fromUtf8(error.what());
    }
    if (!self)
        co_return false;
    setBusy(false);
    setError(failure);
    co_await refresh();
    co_return !failed;
}

void NativePiloReview::clear()
{
    ++m_generation;
    m_model.setRows({});
    setError({});
    if (m_loaded) {
        m_loaded = false;
        Q_EMIT loadedChanged();
    }
}

void NativePiloReview::reload()
{
    setError({});
    refresh();
}

void NativePiloReview::decide(const QString &id, bool approve, const QString &reconciliation)
{
    resume(id, approve ? u"approve"_s : u"decline"_s, reconciliation.trimmed());
}
