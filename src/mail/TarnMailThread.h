#pragma once

#include "mail/TarnMailMessage.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// A conversation, oldest message first.
struct TarnMailThread {
    QString id;
    QString subject;
    QList<TarnMailMessage> messages;
    bool readOnly = false;

    static TarnMailThread fromJSON(const TarnJSONObject &json);
};
