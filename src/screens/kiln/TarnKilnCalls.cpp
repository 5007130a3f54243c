#include "screens/kiln/TarnKilnCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnKilnCalls {

QCoro::Task<TarnKilnHandoff> kilnHandoffCode(TarnAPI &api)
{
    return api.request<TarnKilnHandoff>(TarnPath(u"/api/kiln/handoff"_s), TarnMethod::Post);
}

} // namespace TarnKilnCalls
