#pragma once

#include "service/TarnAPIError.h"
#include "service/TarnJSONObject.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

// One answer of the service as the transport received it: read in full, the
// network objects already gone.
struct TarnReply {
    int status = 0; // 0 when the answer was not HTTP
    QUrl url; // where the answer came from, after any followed redirect
    QByteArray body;
    QString mediaType; // lower case, without parameters: "application/json"

    [[nodiscard]] bool succeeded() const { return status >= 200 && status <= 299; }

    // The body as the record T; a body of another shape is an unreadable answer.
    template <typename T> [[nodiscard]] T decode() const
    {
        try {
            return TarnJSON::decode<T>(body);
        } catch (const TarnDecodeError &) {
            throw TarnAPIError::invalidResponse();
        }
    }
};

// Answers with no body worth reading.
template <> inline void TarnReply::decode<void>() const { }
