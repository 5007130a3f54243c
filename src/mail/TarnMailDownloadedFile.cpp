#include "mail/TarnMailDownloadedFile.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailDownloadedFile TarnMailDownloadedFile::fromJSON(const TarnJSONObject &json)
{
    return {
        .name = json.string("name"_L1), .size = json.integer("size"_L1), .dataBase64 = json.string("dataBase64"_L1)
    };
}

std::optional<QByteArray> TarnMailDownloadedFile::data() const
{
    QByteArray::FromBase64Result decoded
        = QByteArray::fromBase64Encoding(dataBase64.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return std::nullopt;
    return std::move(decoded.decoded);
}
