#pragma once

#include "mail/TarnMailAttachment.h"
#include "mail/TarnMailPerson.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// One message of a thread, its body still as the service sent it.
struct TarnMailMessage {
    QString id;
    TarnMailPerson from;
    QList<TarnMailPerson> to;
    std::optional<QList<TarnMailPerson>> cc {};
    qint64 date = 0; // milliseconds
    QString text;
    std::optional<QString> html {};
    bool unread = false;
    QString snippet;
    QList<TarnMailAttachment> attachments;

    static TarnMailMessage fromJSON(const TarnJSONObject &json);
};
