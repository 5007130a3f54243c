#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <concepts>

// A request body is a record with one encoder, the counterpart of a
// decoder: its fields are the JSON keys.
//
//   struct TarnAccentChoice
//   {
//       QString accent;
//       QJsonObject toJSON() const { return {{u"accent"_s, accent}}; }
//   };
template <typename T>
concept TarnRequestBody = requires(const T &body)
{
    {
        body.toJSON()
        } -> std::same_as<QJsonObject>;
};

namespace TarnJSON {

// The body as it is sent: compact JSON.
template <TarnRequestBody T> [[nodiscard]] QByteArray encode(const T &body)
{
    return QJsonDocument(body.toJSON()).toJson(QJsonDocument::Compact);
}

} // namespace TarnJSON
