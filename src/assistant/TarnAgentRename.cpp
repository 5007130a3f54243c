#include "assistant/TarnAgentRename.h"

using namespace Qt::StringLiterals;

QJsonObject TarnAgentRename::toJSON() const
{
    return { { u"title"_s, title } };
}
