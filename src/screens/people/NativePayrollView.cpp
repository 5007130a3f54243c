#include "screens/people/NativePayrollView.h"

#include "money/TarnMoneyInput.h"
#include "screens/people/PayrollRules.h"
#include "screens/people/TarnPeopleCalls.h"
#include "service/TarnAPIError.h"

#include <QDate>
#include <QLocale>
#include <QPointer>
#include <QSaveFile>

using namespace Qt::StringLiterals;

NativePayrollView::NativePayrollView(TarnAPI &api, QObject *parent)
    : NativePeopleSection(parent)
    , m_api(api)
    , m_lines(new NativePayrollLineModel(this))
{
}

NativePayrollView::~NativePayrollView() = default;

QVariantList NativePayrollView::periods() const
{
    const QLocale locale;
    QVariantList out;
    for (const TarnPayrollPeriod &period : m_overview.periods) {
        const QDate start = QDate::fromString(period.start, Qt::ISODate);
        const QDate end = QDate::fromString(period.end, Qt::ISODate);
        out.append(QVariantMap { { u"start"_s, period.start }, { u"status"_s, period.status },
            { u"label"_s,
                u"%1 – %2"_s.arg(locale.toString(start, u"d MMM"_s), locale.toString(end, u"d MMM yyyy"_s)) } });
    }
    return out;
}

QString NativePayrollView::totalText() const
{
    return TarnMoneyInput::dollars(m_overview.total);
}

QStringList NativePayrollView::allowedActions() const
{
    QStringList out;
    for (const QString &action : { u"approve"_s, u"reopen"_s, u"mark-paid"_s })
        if (PayrollRules::allows(m_overview.period.status, action))
            out.append(action);
    return out;
}

bool NativePayrollView::canAdjust() const
{
    return PayrollRules::allows(m_overview.period.status, u"adjust"_s);
}

void NativePayrollView::refresh()
{
    load(m_overview.period.start.isEmpty() ? std::nullopt : std::optional(m_overview.period.start));
}

void NativePayrollView::choosePeriod(const QString &start)
{
    if (start == m_overview.period.start)
        return;
    ++m_shown;
    load(start);
}

void NativePayrollView::clear()
{
    ++m_shown;
    m_overview = {};
    m_lines->setRows({});
    m_exportedTo.clear();
    Q_EMIT overviewChanged();
    resetStatus();
    Q_EMIT exportedToChanged();
}

QCoro::Task<> NativePayrollView::load(std::optional<QString> period)
{
    const QPointer<NativePayrollView> self(this);
    const int shown = m_shown;
    try {
        const TarnPayrollOverview overview = co_await TarnPeopleCalls::payrollOverview(m_api, period);
        if (!self || shown != m_shown)
            co_return;
        show(overview);
    } catch (const TarnAPIError &error) {
        if (!self || shown != m_shown)
            co_return;
        fail(error);
    }
    setLoaded();
    Q_EMIT refreshed();
}

void NativePayrollView::show(const TarnPayrollOverview &overview)
{
    m_overview = overview;
    m_lines->setRows(overview.lines);
    Q_EMIT overviewChanged();
}

void NativePayrollView::act(const QString &action)
{
    if (busy() || action == "adjust"_L1 || !PayrollRules::allows(m_overview.period.status, action))
        return;
    change([this, period = m_overview.period.start, body = TarnPayrollAction { action }] {
        return TarnPeopleCalls::payrollAction(m_api, period, body);
    });
}

void NativePayrollView::addAdjustment(const QString &personId, const QString &label, const QString &amount)
{
    if (busy())
        return;
    const QString typed = amount.trimmed();
    const bool deduction = typed.startsWith(u'-');
    const std::optional<qint64> cents = TarnMoneyInput::cents(deduction ? typed.mid(1) : typed, false);
    if (label.trimmed().isEmpty())
        return setError(u"Say what the adjustment is for."_s);
    if (!cents)
        return setError(u"Type the amount as 12.50, or -12.50 for a deduction."_s);
    change([this, period = m_overview.period.start,
               body = TarnPayrollAction { u"adjust"_s, personId, label.trimmed(), deduction ? -*cents : *cents }] {
        return TarnPeopleCalls::payrollAction(m_api, period, body);
    });
}

void NativePayrollView::removeAdjustment(const QString &id)
{
    if (!busy())
        change([this, id] { return TarnPeopleCalls::removePayrollAdjustment(m_api, id); });
}

void NativePayrollView::saveNotes(const QString &notes)
{
    if (busy() || notes == m_overview.notes)
        return;
    change([this, period = m_overview.period.start, body = TarnPayrollNotes { notes, m_overview.version }] {
        return TarnPeopleCalls::savePayrollNotes(m_api, period, body);
    });
}

QCoro::Task<> NativePayrollView::change(std::function<QCoro::Task<TarnPayrollOverview>()> call)
{
    const QPointer<NativePayrollView> self(this);
    setBusy(true);
    bool refused = false;
    try {
        const TarnPayrollOverview overview = co_await call();
        if (!self)
            co_return;
        show(overview);
        setError({});
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
        refused = true;
    }
    if (refused) {
        // Someone's change first, or a status moved on: show the period as it is.
        const QString refusal = errorText();
        co_await load(m_overview.period.start);
        if (!self)
            co_return;
        setError(refusal);
    }
    setBusy(false);
    Q_EMIT actionFinished();
}

void NativePayrollView::exportTo(const QUrl &file)
{
    if (!busy() && !m_overview.period.start.isEmpty() && file.isLocalFile())
        exportTask(m_overview.period.start, file.toLocalFile());
}

QCoro::Task<> NativePayrollView::exportTask(QString period, QString filePath)
{
    const QPointer<NativePayrollView> self(this);
    setBusy(true);
    try {
        const QByteArray csv = co_await TarnPeopleCalls::exportPayroll(m_api, period);
        if (!self)
            co_return;
        QSaveFile file(filePath);
        if (csv.isEmpty())
            setError(u"No one has hours or adjustments in this period."_s);
        else if (!file.open(QIODevice::WriteOnly) || file.write(csv) != csv.size() || !file.commit())
            setError(u"Could not write %1: %2"_s.arg(filePath, file.errorString()));
        else {
            m_exportedTo = filePath;
            Q_EMIT exportedToChanged();
            setError({});
        }
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
    }
    setBusy(false);
    Q_EMIT actionFinished();
}
