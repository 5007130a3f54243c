#include "assistant/TarnAgentAsk.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

QJsonObject TarnAgentAsk::toJSON() const
{
    QJsonObject json { { u"content"_s, content }, { u"attachments"_s, QJsonArray::fromStringList(attachments) },
        { u"run"_s, run == TarnPiloRun::process ? u"process"_s : u"fast"_s }, { u"request_key"_s, request_key } };
    if (page)
        json.insert(u"page"_s, *page);
    return json;
}
