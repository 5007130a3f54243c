#pragma once

#include <QJsonObject>
#include <QString>

// The body of the exchange: the one-time code and the proof key's verifier.
struct AuthExchangeRequest {
    QString code;
    QString verifier;
    [[nodiscard]] QJsonObject toJSON() const;
};
