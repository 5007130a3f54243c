#pragma once

#include <QString>

class TarnJSONObject;

// A file on an inbox entry; `status` says whether it has arrived.
struct TarnInboxAttachment {
    QString id;
    QString name;
    QString status;

    static TarnInboxAttachment fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxAttachment &, const TarnInboxAttachment &) = default;
};
