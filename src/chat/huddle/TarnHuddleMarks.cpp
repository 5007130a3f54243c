#include "chat/huddle/TarnHuddleMarks.h"

using namespace Qt::StringLiterals;

QJsonObject TarnHuddleMarks::toJSON() const
{
    QJsonObject json { { u"sid"_s, sid } };
    if (muted)
        json.insert(u"muted"_s, *muted);
    if (video)
        json.insert(u"video"_s, *video);
    if (screen)
        json.insert(u"screen"_s, *screen);
    return json;
}
