#pragma once

#include <QJsonObject>
#include <QString>

class TarnJSONObject;

// Where the browser starts connecting the mailbox's Google account.
struct TarnMailConnectStart {
    QString url;

    static TarnMailConnectStart fromJSON(const TarnJSONObject &json);
};

// The body that asks for it: the Google-backed service to connect.
struct TarnMailConnectService {
    QString service;

    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("service"), service } }; }
};
