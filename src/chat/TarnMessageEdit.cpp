#include "chat/TarnMessageEdit.h"

using namespace Qt::StringLiterals;

QJsonObject TarnMessageEdit::toJSON() const
{
    QJsonObject json { { u"version"_s, version } };
    if (body)
        json.insert(u"body"_s, *body);
    return json;
}
