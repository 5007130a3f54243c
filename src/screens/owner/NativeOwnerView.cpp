#include "screens/owner/NativeOwnerView.h"

#include "money/NativeBooksDashboard.h"
#include "screens/owner/OwnerFigures.h"
#include "screens/owner/TarnOwnerCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "service/TarnRefreshLoop.h"
#include "shell/NativeFirstLoad.h"
#include "shell/NativeStateErrors.h"

#include <QDate>
#include <QLocale>
#include <QPointer>

using namespace Qt::StringLiterals;

NativeOwnerView::NativeOwnerView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_figures(new NativeOwnerFigureModel(this))
    , m_team(new NativeTeamWeekModel(this))
{
}

QString NativeOwnerView::weekLabel() const
{
    const QDate monday = QDate::fromString(m_snapshot.week_start, Qt::ISODate);
    if (!monday.isValid())
        return {};
    return u"Week of "_s + QLocale(QLocale::English).toString(monday, u"d MMMM"_s);
}

QStringList NativeOwnerView::chartMonths() const
{
    QStringList months;
    for (const TarnMoneyMonth &month : m_snapshot.months)
        months.append(QLocale(QLocale::English).toString(QDate::fromString(month.month, u"yyyy-MM"_s), u"MMM"_s));
    return months;
}

qint64 NativeOwnerView::largestBar() const
{
    qint64 largest = 0;
    for (const TarnMoneyMonth &month : m_snapshot.months)
        largest = std::max({ largest, month.money_in, month.money_out });
    return largest;
}

QVariantList NativeOwnerView::chartValues(qint64 TarnMoneyMonth::*field) const
{
    const double unit = NativeBooksDashboard::scaleFor(largestBar()).unit;
    QVariantList values;
    for (const TarnMoneyMonth &month : m_snapshot.months)
        values.append(double(month.*field) / 100 / unit);
    return values;
}

QVariantList NativeOwnerView::chartIn() const
{
    return chartValues(&TarnMoneyMonth::money_in);
}

QVariantList NativeOwnerView::chartOut() const
{
    return chartValues(&TarnMoneyMonth::money_out);
}

double NativeOwnerView::chartTop() const
{
    return NativeBooksDashboard::scaleFor(largestBar()).top;
}

int NativeOwnerView::chartTicks() const
{
    return NativeBooksDashboard::scaleFor(largestBar()).ticks;
}

QString NativeOwnerView::chartLabelFormat() const
{
    return NativeBooksDashboard::scaleFor(largestBar()).labelFormat;
}

void NativeOwnerView::appear()
{
    TarnRefreshLoop::run(
        this, &NativeOwnerView::m_generation, ++m_generation, refreshIntervalMs, &NativeOwnerView::refreshOnce);
}

void NativeOwnerView::disappear()
{
    ++m_generation;
}

void NativeOwnerView::refresh()
{
    refreshOnce();
}

void NativeOwnerView::clear()
{
    ++m_generation;
    m_snapshot = {};
    m_figures->setRows({});
    m_team->setRows({});
    m_loading = m_loaded = false;
    m_error.clear();
    Q_EMIT snapshotChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeOwnerView::refreshOnce()
{
    const QPointer<NativeOwnerView> self(this);
    const int generation = m_generation;
    NativeFirstLoad::begin(*this, m_loading, m_loaded);
    try {
        const TarnTeamSnapshot snapshot = co_await TarnOwnerCalls::teamSnapshot(m_api);
        if (!self || generation != m_generation)
            co_return;
        setError({});
        show(snapshot);
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    NativeFirstLoad::end(*this, m_loading, m_loaded);
}

void NativeOwnerView::show(const TarnTeamSnapshot &snapshot)
{
    m_figures->setRows(OwnerFigures::figures(snapshot));
    m_team->setRows(snapshot.team);
    if (snapshot == m_snapshot)
        return;
    m_snapshot = snapshot;
    Q_EMIT snapshotChanged();
}

void NativeOwnerView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeOwnerView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}
