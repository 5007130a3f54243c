#include "screens/support/TarnSupportTimerState.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportTimerState TarnSupportTimerState::fromJSON(const TarnJSONObject &json)
{
    return { .timer = json.optional<TarnSupportTimer>("timer"_L1),
        .logged = json.optional<TarnSupportTimeEntry>("logged"_L1) };
}
