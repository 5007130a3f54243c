#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The HTTP methods the service uses: reads are GET, creation and actions
// POST, partial updates PATCH, removal DELETE.
enum class TarnMethod {
    Get,
    Post,
    Patch,
    Delete,
};

namespace TarnMethods {

[[nodiscard]] QByteArray verb(TarnMethod method);
// "GET", "post", ...; nothing for a method the service does not use.
[[nodiscard]] std::optional<TarnMethod> fromVerb(QStringView verb);

} // namespace TarnMethods
