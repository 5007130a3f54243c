#include "service/TarnSession.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSession TarnSession::fromJSON(const TarnJSONObject &json)
{
    return {
        .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .email = json.string("email"_L1),
        .csrf = json.string("csrf"_L1),
        .apps = json.list<QString>("apps"_L1),
        .role = json.optionalString("role"_L1),
        .owner = json.optionalBoolean("owner"_L1),
        .books_owner = json.optionalBoolean("books_owner"_L1),
        .background = json.optionalString("background"_L1),
        .accent = json.optionalString("accent"_L1),
        .text_size = json.optionalString("text_size"_L1),
    };
}
