#include "screens/kiln/NativeKilnView.h"

#include "screens/kiln/TarnKilnCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"

#include <QDesktopServices>
#include <QPointer>
#include <QWebEngineCertificateError>

using namespace Qt::StringLiterals;

NativeKilnView::NativeKilnView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
{
}

void NativeKilnView::appear()
{
    // A code works once, so each showing asks for a new one.
    m_url.clear();
    m_loading = true;
    Q_EMIT urlChanged();
    Q_EMIT busyChanged();
    handOff(++m_generation);
}

void NativeKilnView::disappear()
{
    ++m_generation;
}

bool NativeKilnView::allowed(const QUrl &url) const
{
    return m_api.config().isServiceURL(url);
}

void NativeKilnView::openOutside(const QUrl &url) const
{
    if (url.scheme() == "https"_L1 || url.scheme() == "http"_L1 || url.scheme() == "mailto"_L1)
        QDesktopServices::openUrl(url);
}

bool NativeKilnView::trusts(const QWebEngineCertificateError &error) const
{
    const std::optional<QSslCertificate> &pinned = m_api.config().extraCertificate();
    const QList<QSslCertificate> chain = error.certificateChain();
    return pinned && allowed(error.url()) && !chain.isEmpty() && chain.constFirst() == *pinned;
}

void NativeKilnView::pageLoaded(bool ok, const QString &error)
{
    finish(ok ? QString() : error);
}

void NativeKilnView::clear()
{
    ++m_generation;
    m_url.clear();
    m_loading = m_loaded = false;
    m_error.clear();
    Q_EMIT urlChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeKilnView::handOff(int generation)
{
    const QPointer<NativeKilnView> self(this);
    try {
        const TarnKilnHandoff handoff = co_await TarnKilnCalls::kilnHandoffCode(m_api);
        if (!self || generation != m_generation)
            co_return;
        const QUrl url(handoff.url);
        if (!allowed(url)) {
            finish(u"The web workspace answered with an address outside the service."_s);
            co_return;
        }
        m_url = url;
        Q_EMIT urlChanged();
    } catch (const TarnAPIError &error) {
        if (self && generation == m_generation)
            finish(error.text());
    }
}

void NativeKilnView::finish(const QString &error)
{
    m_loading = false;
    m_loaded = true;
    if (m_error != error) {
        m_error = error;
        Q_EMIT errorTextChanged();
    }
    Q_EMIT busyChanged();
    Q_EMIT refreshed();
}
