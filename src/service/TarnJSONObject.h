#pragma once

#include "service/TarnDecodeError.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>

#include <optional>
#include <type_traits>

template <typename T> struct TarnJSONDecoder;

// A view over one JSON object while a record is decoded from it. Keys are the
// record's field names exactly. Required readers throw TarnDecodeError when the
// key is missing or has another type; optional readers accept an absent key or
// null, but still refuse a wrong type.
//
//   TarnOK TarnOK::fromJSON(const TarnJSONObject &json) { return {json.boolean("ok"_L1)}; }
class TarnJSONObject {
public:
    explicit TarnJSONObject(const QJsonValue &value);

    [[nodiscard]] bool has(QLatin1StringView key) const;
    [[nodiscard]] QJsonValue value(QLatin1StringView key) const { return m_object.value(key); }
    [[nodiscard]] const QJsonObject &object() const { return m_object; }

    [[nodiscard]] QString string(QLatin1StringView key) const { return get<QString>(key); }
    [[nodiscard]] std::optional<QString> optionalString(QLatin1StringView key) const { return optional<QString>(key); }
    [[nodiscard]] bool boolean(QLatin1StringView key) const { return get<bool>(key); }
    [[nodiscard]] std::optional<bool> optionalBoolean(QLatin1StringView key) const { return optional<bool>(key); }
    [[nodiscard]] qint64 integer(QLatin1StringView key) const { return get<qint64>(key); }
    [[nodiscard]] std::optional<qint64> optionalInteger(QLatin1StringView key) const { return optional<qint64>(key); }
    [[nodiscard]] double number(QLatin1StringView key) const { return get<double>(key); }

    template <typename T> [[nodiscard]] QList<T> list(QLatin1StringView key) const { return get<QList<T>>(key); }
    template <typename T> [[nodiscard]] std::optional<QList<T>> optionalList(QLatin1StringView key) const
    {
        return optional<QList<T>>(key);
    }

    // Any decodable type: a record with fromJSON, a scalar, or a QList of them.
    template <typename T> [[nodiscard]] T get(QLatin1StringView key) const
    {
        if (!m_object.contains(key))
            throw TarnDecodeError(QLatin1StringView("missing key ") + key);
        return decodeField<T>(key, m_object.value(key));
    }

    template <typename T> [[nodiscard]] std::optional<T> optional(QLatin1StringView key) const
    {
        const QJsonValue v = m_object.value(key);
        if (v.isUndefined() || v.isNull())
            return std::nullopt;
        return decodeField<T>(key, v);
    }

private:
    template <typename T> static T decodeField(QLatin1StringView key, const QJsonValue &v)
    {
        try {
            return TarnJSONDecoder<T>::decode(v);
        } catch (const TarnDecodeError &error) {
            throw TarnDecodeError(key + QLatin1StringView(": ") + error.where());
        }
    }

    QJsonObject m_object;
};

// Records decode through their own `static T fromJSON(const TarnJSONObject &)`.
template <typename T> struct TarnJSONDecoder {
    static T decode(const QJsonValue &v) { return T::fromJSON(TarnJSONObject(v)); }
};

template <> struct TarnJSONDecoder<QString> {
    static QString decode(const QJsonValue &v);
};

template <> struct TarnJSONDecoder<bool> {
    static bool decode(const QJsonValue &v);
};

// Whole numbers only: 3.5 or 1e300 is refused rather than rounded.
template <> struct TarnJSONDecoder<qint64> {
    static qint64 decode(const QJsonValue &v);
};

template <> struct TarnJSONDecoder<int> {
    static int decode(const QJsonValue &v);
};

template <> struct TarnJSONDecoder<double> {
    static double decode(const QJsonValue &v);
};

// Kept as it is, for the few fields whose shape the client does not interpret.
template <> struct TarnJSONDecoder<QJsonValue> {
    static QJsonValue decode(const QJsonValue &v) { return v; }
};

template <typename T> struct TarnJSONDecoder<QList<T>> {
    static QList<T> decode(const QJsonValue &v)
    {
        if (!v.isArray())
            throw TarnDecodeError(QStringLiteral("expected an array"));
        const QJsonArray array = v.toArray();
        QList<T> out;
        out.reserve(array.size());
        for (qsizetype i = 0; i < array.size(); ++i) {
            try {
                out.append(TarnJSONDecoder<T>::decode(array.at(i)));
            } catch (const TarnDecodeError &error) {
                throw TarnDecodeError(QLatin1Char('[') + QString::number(i) + QLatin1StringView("] ") + error.where());
            }
        }
        return out;
    }
};

namespace TarnJSON {

// The whole answer: bytes to a record (or a list of them). Throws TarnDecodeError.
[[nodiscard]] QJsonValue parse(const QByteArray &bytes);

template <typename T> [[nodiscard]] T decode(const QByteArray &bytes)
{
    return TarnJSONDecoder<T>::decode(parse(bytes));
}

} // namespace TarnJSON
