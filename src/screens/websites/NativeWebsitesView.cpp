#include "screens/websites/NativeWebsitesView.h"

#include "screens/websites/TarnWebsiteCalls.h"
#include "screens/websites/WebsiteRules.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeFirstLoad.h"
#include "shell/NativeStateErrors.h"

#include <QPointer>
#include <QVariantMap>

using namespace Qt::StringLiterals;

NativeWebsitesView::NativeWebsitesView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_sites(new NativeWebsiteModel(this))
{
}

void NativeWebsitesView::setSearch(const QString &search)
{
    if (m_search == search)
        return;
    m_search = search;
    applySearch();
    Q_EMIT searchChanged();
}

int NativeWebsitesView::liveCount() const
{
    return int(std::count_if(m_all.begin(), m_all.end(), [](const TarnWebsite &s) { return s.status == "live"_L1; }));
}

void NativeWebsitesView::setCheckText(const QString &text)
{
    if (m_checkText == text)
        return;
    m_checkText = text;
    Q_EMIT checkChanged();
}

QVariantList NativeWebsitesView::scores() const
{
    if (!m_check)
        return {};
    const auto score = [](const QString &label, qint64 value) {
        return QVariantMap { { u"label"_s, label }, { u"score"_s, value } };
    };
    return { score(u"Speed"_s, m_check->speed), score(u"Mobile"_s, m_check->mobile),
        score(u"Search engines"_s, m_check->seo), score(u"Security"_s, m_check->security),
        score(u"Accessibility"_s, m_check->accessibility) };
}

QVariantList NativeWebsitesView::findings() const
{
    QVariantList rows;
    if (m_check) {
        for (const TarnSiteFinding &finding : m_check->findings)
            rows.append(QVariantMap { { u"severity"_s, finding.severity }, { u"text"_s, finding.text } });
    }
    return rows;
}

void NativeWebsitesView::appear()
{
    TarnRefreshLoop::run(
        this, &NativeWebsitesView::m_generation, ++m_generation, refreshIntervalMs, &NativeWebsitesView::refreshOnce);
}

void NativeWebsitesView::disappear()
{
    ++m_generation;
}

void NativeWebsitesView::check()
{
    if (m_checking)
        return;
    const QString url = WebsiteRules::checkAddress(m_checkText);
    if (url.isEmpty()) {
        setError(u"Type a site's address, such as oaklinestudio.example."_s);
        return;
    }
    m_checking = true;
    Q_EMIT checkChanged();
    checkTask(TarnSiteCheckRequest { .url = url }, m_generation);
}

void NativeWebsitesView::checkSite(const QString &siteId)
{
    for (const TarnWebsite &site : std::as_const(m_all)) {
        if (site.id == siteId) {
            setCheckText(site.domain);
            check();
            return;
        }
    }
}

void NativeWebsitesView::clear()
{
    ++m_generation;
    m_all.clear();
    m_sites->setRows({});
    m_search.clear();
    m_checkText.clear();
    m_check.reset();
    m_checking = m_loading = m_loaded = false;
    m_error.clear();
    Q_EMIT searchChanged();
    Q_EMIT sitesChanged();
    Q_EMIT checkChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeWebsitesView::refreshOnce()
{
    const QPointer<NativeWebsitesView> self(this);
    const int generation = m_generation;
    NativeFirstLoad::begin(*this, m_loading, m_loaded);
    try {
        const QList<TarnWebsite> sites = co_await TarnWebsiteCalls::websites(m_api);
        if (!self || generation != m_generation)
            co_return;
        setError({});
        if (sites != m_all) {
            m_all = sites;
            applySearch();
            Q_EMIT sitesChanged();
        }
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    NativeFirstLoad::end(*this, m_loading, m_loaded);
}

QCoro::Task<> NativeWebsitesView::checkTask(TarnSiteCheckRequest request, int generation)
{
    const QPointer<NativeWebsitesView> self(this);
    try {
        const TarnSiteCheck done = co_await TarnWebsiteCalls::proposalSiteCheck(m_api, request);
        if (!self || generation != m_generation)
            co_return;
        setError({});
        m_check = done;
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    m_checking = false;
    Q_EMIT checkChanged();
    Q_EMIT refreshed();
}

void NativeWebsitesView::applySearch()
{
    QList<TarnWebsite> shown;
    std::copy_if(m_all.begin(), m_all.end(), std::back_inserter(shown),
        [this](const TarnWebsite &site) { return WebsiteRules::matchesSearch(site, m_search); });
    m_sites->setRows(shown);
}

void NativeWebsitesView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeWebsitesView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}
