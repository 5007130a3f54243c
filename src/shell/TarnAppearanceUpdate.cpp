#include "shell/TarnAppearanceUpdate.h"

using namespace Qt::StringLiterals;

QJsonObject TarnAppearanceUpdate::toJSON() const
{
    QJsonObject json;
    if (accent)
        json.insert(u"accent"_s, *accent);
    if (text_size)
        json.insert(u"text_size"_s, *text_size);
    if (background)
        json.insert(u"background"_s, *background);
    return json;
}
