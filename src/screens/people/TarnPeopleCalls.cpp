#include "screens/people/TarnPeopleCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnPeopleCalls {

namespace {

TarnPath timeClockPath()
{
    return TarnPath(u"/api/people/timeclock"_s);
}

TarnPath payrollPath()
{
    return TarnPath(u"/api/payroll"_s);
}

// A pay period's export is a line per person.
constexpr qint64 exportLimit = 1024 * 1024;

} // namespace

QCoro::Task<QList<TarnHRRecord>> hrRecords(TarnAPI &api)
{
    return api.request<QList<TarnHRRecord>>(TarnPath(u"/api/people/hr"_s));
}

QCoro::Task<TarnHRRecord> updateHRRecord(TarnAPI &api, const QString &id, const TarnHRRecordEdit &edit)
{
    return api.request<TarnHRRecord>(TarnPath(u"/api/people/hr"_s).id(id), TarnMethod::Patch, edit);
}

QCoro::Task<TarnTimeClockWeek> timeClock(TarnAPI &api, const QString &week, const std::optional<QString> &person)
{
    return api.request<TarnTimeClockWeek>(timeClockPath().query("week"_L1, week).query("person"_L1, person));
}

QCoro::Task<TarnTimeEntry> clockIn(TarnAPI &api)
{
    return api.request<TarnTimeEntry>(timeClockPath().segment("in"_L1), TarnMethod::Post);
}

QCoro::Task<TarnTimeEntry> clockOut(TarnAPI &api)
{
    return api.request<TarnTimeEntry>(timeClockPath().segment("out"_L1), TarnMethod::Post);
}

QCoro::Task<TarnTimeEntry> editTimeEntry(TarnAPI &api, const QString &id, const TarnTimeEntryEdit &edit)
{
    return api.request<TarnTimeEntry>(timeClockPath().id(id), TarnMethod::Patch, edit);
}

QCoro::Task<TarnPayrollOverview> payrollOverview(TarnAPI &api, const std::optional<QString> &period)
{
    return api.request<TarnPayrollOverview>(payrollPath().query("period"_L1, period));
}

QCoro::Task<TarnPayrollOverview> payrollAction(TarnAPI &api, const QString &period, const TarnPayrollAction &action)
{
    // The action names are the code's own, never typed in.
    return api.request<TarnPayrollOverview>(payrollPath().id(period).id(action.action), TarnMethod::Post, action);
}

QCoro::Task<TarnPayrollOverview> savePayrollNotes(TarnAPI &api, const QString &period, const TarnPayrollNotes &notes)
{
    return api.request<TarnPayrollOverview>(payrollPath().id(period), TarnMethod::Patch, notes);
}

QCoro::Task<TarnPayrollOverview> removePayrollAdjustment(TarnAPI &api, const QString &id)
{
    return api.request<TarnPayrollOverview>(payrollPath().segment("adjustments"_L1).id(id), TarnMethod::Delete);
}

QCoro::Task<QByteArray> exportPayroll(TarnAPI &api, const QString &period)
{
    return api.downloadFile(payrollPath().id(period).segment("export"_L1), exportLimit);
}

} // namespace TarnPeopleCalls
