#include "inbox/TarnInboxActionResult.h"

#include "service/TarnJSONObject.h"

TarnInboxActionResult TarnInboxActionResult::fromJSON(const TarnJSONObject &)
{
    return {};
}
