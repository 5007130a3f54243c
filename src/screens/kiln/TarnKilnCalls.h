#pragma once

#include "screens/kiln/TarnKilnHandoff.h"

#include <QCoroTask>

class TarnAPI;

// The web workspace's endpoint.
namespace TarnKilnCalls {

// A new one-time code and the address that spends it.
QCoro::Task<TarnKilnHandoff> kilnHandoffCode(TarnAPI &api);

} // namespace TarnKilnCalls
