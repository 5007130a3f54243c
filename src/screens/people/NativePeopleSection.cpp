#include "screens/people/NativePeopleSection.h"

#include "service/TarnAPIError.h"
#include "shell/NativeStateErrors.h"

#include <QPointer>

NativePeopleSection::NativePeopleSection(QObject *parent)
    : QObject(parent)
{
}

void NativePeopleSection::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}

void NativePeopleSection::setLoaded()
{
    if (m_loaded)
        return;
    m_loaded = true;
    Q_EMIT busyChanged();
}

void NativePeopleSection::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativePeopleSection::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}

void NativePeopleSection::resetStatus()
{
    m_busy = m_loaded = false;
    m_error.clear();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativePeopleSection::changeAndReload(
    std::function<QCoro::Task<>()> change, std::function<QCoro::Task<>()> reload)
{
    const QPointer<NativePeopleSection> self(this);
    setBusy(true);
    try {
        co_await change();
        if (!self)
            co_return;
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    const QString refusal = errorText();
    co_await reload();
    if (!self)
        co_return;
    setError(refusal);
    setBusy(false);
    Q_EMIT actionFinished();
}
