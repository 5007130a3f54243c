#pragma once

#include <QJsonObject>
#include <QString>

// The address of a site to check, as typed.
struct TarnSiteCheckRequest {
    QString url;

    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("url"), url } }; }
};
