#include "mail/TarnMailSignedImages.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailSignedImages TarnMailSignedImages::fromJSON(const TarnJSONObject &json)
{
    const QJsonValue images = json.value("images"_L1);
    if (!images.isObject())
        throw TarnDecodeError(u"images: expected an object"_s);
    TarnMailSignedImages out { .path = json.optionalString("path"_L1), .images = {} };
    const QJsonObject map = images.toObject();
    for (auto it = map.begin(); it != map.end(); ++it) {
        if (!it.value().isString())
            throw TarnDecodeError(u"images: a token is not a string"_s);
        out.images.insert(it.key(), it.value().toString());
    }
    return out;
}
