#include "screens/people/TarnPeopleCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnPeopleCalls {

namespace {

TarnPath timeClockPath()
{
    return TarnPath(u"/api/people/timeclock"_s);
}

} // namespace

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

} // namespace TarnPeopleCalls
