#pragma once

#include "screens/owner/TarnTeamSnapshot.h"

#include <QCoroTask>

class TarnAPI;

// The owner dashboard's endpoint.
namespace TarnOwnerCalls {

QCoro::Task<TarnTeamSnapshot> teamSnapshot(TarnAPI &api);

} // namespace TarnOwnerCalls
