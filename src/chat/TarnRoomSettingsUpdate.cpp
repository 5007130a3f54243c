#include "chat/TarnRoomSettingsUpdate.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

QJsonObject TarnRoomSettingsUpdate::toJSON() const
{
    return { { u"name"_s, name }, { u"private"_s, private_ }, { u"archived"_s, archived },
        { u"members"_s, QJsonArray::fromStringList(members) } };
}
