#include "chat/TarnRoomCreate.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

QJsonObject TarnRoomCreate::toJSON() const
{
    QJsonObject json { { u"kind"_s, kind } };
    if (user_id)
        json.insert(u"user_id"_s, *user_id);
    if (name)
        json.insert(u"name"_s, *name);
    if (private_)
        json.insert(u"private"_s, *private_);
    if (members)
        json.insert(u"members"_s, QJsonArray::fromStringList(*members));
    return json;
}
