#include "service/TarnJSONObject.h"

#include <QJsonDocument>
#include <QJsonParseError>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

TarnJSONObject::TarnJSONObject(const QJsonValue &value)
{
    if (!value.isObject())
        throw TarnDecodeError(u"expected an object"_s);
    m_object = value.toObject();
}

bool TarnJSONObject::has(QLatin1StringView key) const
{
    const QJsonValue v = m_object.value(key);
    return !v.isUndefined() && !v.isNull();
}

QString TarnJSONDecoder<QString>::decode(const QJsonValue &v)
{
    if (!v.isString())
        throw TarnDecodeError(u"expected a string"_s);
    return v.toString();
}

bool TarnJSONDecoder<bool>::decode(const QJsonValue &v)
{
    if (!v.isBool())
        throw TarnDecodeError(u"expected a boolean"_s);
    return v.toBool();
}

qint64 TarnJSONDecoder<qint64>::decode(const QJsonValue &v)
{
    if (!v.isDouble())
        throw TarnDecodeError(u"expected a number"_s);
    // toInteger answers the default for anything that is not an exact integer,
    // so two different defaults tell a real value from a refusal.
    const qint64 a = v.toInteger(0);
    const qint64 b = v.toInteger(1);
    if (a != b)
        throw TarnDecodeError(u"expected a whole number"_s);
    return a;
}

int TarnJSONDecoder<int>::decode(const QJsonValue &v)
{
    const qint64 n = TarnJSONDecoder<qint64>::decode(v);
    if (n < std::numeric_limits<int>::min() || n > std::numeric_limits<int>::max())
        throw TarnDecodeError(u"number out of range"_s);
    return static_cast<int>(n);
}

double TarnJSONDecoder<double>::decode(const QJsonValue &v)
{
    if (!v.isDouble() || !std::isfinite(v.toDouble()))
        throw TarnDecodeError(u"expected a number"_s);
    return v.toDouble();
}

QJsonValue TarnJSON::parse(const QByteArray &bytes)
{
    QJsonParseError error {};
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        throw TarnDecodeError(u"not JSON: "_s + error.errorString());
    if (document.isObject())
        return document.object();
    if (document.isArray())
        return document.array();
    throw TarnDecodeError(u"not a JSON object or array"_s);
}
