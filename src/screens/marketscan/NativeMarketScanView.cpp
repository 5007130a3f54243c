#include "screens/marketscan/NativeMarketScanView.h"

#include "screens/marketscan/MarketScanRules.h"
#include "screens/marketscan/TarnMarketScanCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "shell/NativeFirstLoad.h"
#include "shell/NativeStateErrors.h"

#include <QDateTime>
#include <QLocale>
#include <QPointer>

using namespace Qt::StringLiterals;

NativeMarketScanView::NativeMarketScanView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_scans(new NativeMarketScanModel(this))
    , m_businesses(new NativeMarketBusinessModel(this))
{
}

void NativeMarketScanView::setTrade(const QString &trade)
{
    if (m_trade == trade)
        return;
    m_trade = trade;
    Q_EMIT requestChanged();
}

void NativeMarketScanView::setArea(const QString &area)
{
    if (m_area == area)
        return;
    m_area = area;
    Q_EMIT requestChanged();
}

bool NativeMarketScanView::canScan() const
{
    return !m_scanning && !m_trade.trimmed().isEmpty() && !m_area.trimmed().isEmpty();
}

QString NativeMarketScanView::openScanTitle() const
{
    if (!m_open)
        return {};
    return MarketScanRules::scanTitle(*m_open);
}

QString NativeMarketScanView::openScanSummary() const
{
    if (!m_open)
        return {};
    const QDateTime at = QDateTime::fromString(m_open->scanned_at, Qt::ISODateWithMs).toLocalTime();
    return u"%1 found · %2 high opportunity · scanned %3"_s.arg(m_open->found)
        .arg(m_open->high)
        .arg(QLocale(QLocale::English).toString(at, u"d MMM, HH:mm"_s));
}

void NativeMarketScanView::setOpportunity(const QString &opportunity)
{
    if (m_opportunity == opportunity)
        return;
    m_opportunity = opportunity;
    applyOrder();
    Q_EMIT orderChanged();
}

void NativeMarketScanView::setSortKey(const QString &key)
{
    if (m_sortKey == key || !MarketScanRules::isSortKey(key))
        return;
    m_sortKey = key;
    applyOrder();
    Q_EMIT orderChanged();
}

void NativeMarketScanView::appear()
{
    loadTask(m_generation);
}

void NativeMarketScanView::scan()
{
    if (m_scanning)
        return;
    if (m_trade.trimmed().isEmpty() || m_area.trimmed().isEmpty()) {
        setError(u"Say what trade to scan for and where."_s);
        return;
    }
    m_scanning = true;
    Q_EMIT busyChanged();
    Q_EMIT requestChanged();
    scanTask(TarnMarketScanRequest { .trade = m_trade.simplified(), .area = m_area.simplified() }, m_generation);
}

void NativeMarketScanView::openScan(const QString &scanId)
{
    if (scanId == openScanId())
        return;
    openTask(scanId, m_generation);
}

void NativeMarketScanView::clear()
{
    ++m_generation;
    m_scans->setRows({});
    m_businesses->setRows({});
    m_open.reset();
    m_trade.clear();
    m_area.clear();
    m_opportunity.clear();
    m_scanning = m_loading = m_loaded = false;
    m_error.clear();
    Q_EMIT requestChanged();
    Q_EMIT scanChanged();
    Q_EMIT orderChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeMarketScanView::loadTask(int generation)
{
    const QPointer<NativeMarketScanView> self(this);
    NativeFirstLoad::begin(*this, m_loading, m_loaded);
    try {
        const QList<TarnMarketScan> scans = co_await TarnMarketScanCalls::marketScans(m_api);
        if (!self || generation != m_generation)
            co_return;
        m_scans->setRows(scans);
        if (!m_open && !scans.isEmpty()) {
            const TarnMarketScan newest = co_await TarnMarketScanCalls::marketScanResult(m_api, scans.constFirst().id);
            if (!self || generation != m_generation)
                co_return;
            if (!m_open)
                show(newest);
        }
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    NativeFirstLoad::end(*this, m_loading, m_loaded);
}

QCoro::Task<> NativeMarketScanView::scanTask(TarnMarketScanRequest request, int generation)
{
    const QPointer<NativeMarketScanView> self(this);
    try {
        const TarnMarketScan done = co_await TarnMarketScanCalls::marketScan(m_api, request);
        if (!self || generation != m_generation)
            co_return;
        setError({});
        QList<TarnMarketScan> scans = m_scans->rows();
        TarnMarketScan listed = done;
        listed.businesses.clear();
        scans.removeIf([&done](const TarnMarketScan &s) { return s.id == done.id; });
        scans.prepend(listed);
        m_scans->setRows(scans);
        show(done);
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    m_scanning = false;
    Q_EMIT busyChanged();
    Q_EMIT requestChanged();
    Q_EMIT refreshed();
}

QCoro::Task<> NativeMarketScanView::openTask(QString scanId, int generation)
{
    const QPointer<NativeMarketScanView> self(this);
    try {
        const TarnMarketScan found = co_await TarnMarketScanCalls::marketScanResult(m_api, scanId);
        if (self && generation == m_generation)
            show(found);
    } catch (const TarnAPIError &error) {
        if (self && generation == m_generation)
            fail(error);
    }
}

void NativeMarketScanView::show(const TarnMarketScan &scan)
{
    m_open = scan;
    applyOrder();
    Q_EMIT scanChanged();
}

void NativeMarketScanView::applyOrder()
{
    m_businesses->setRows(
        m_open ? MarketScanRules::shown(m_open->businesses, m_opportunity, m_sortKey) : QList<TarnMarketBusiness>());
}

void NativeMarketScanView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeMarketScanView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}
