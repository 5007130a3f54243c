#include "screens/owner/TarnOwnerCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnOwnerCalls {

QCoro::Task<TarnTeamSnapshot> teamSnapshot(TarnAPI &api)
{
    return api.request<TarnTeamSnapshot>(TarnPath(u"/api/owner/snapshot"_s));
}

} // namespace TarnOwnerCalls
