#pragma once

#include "screens/customers/TarnCustomerContact.h"
#include "screens/customers/TarnCustomerDraft.h"
#include "screens/customers/TarnCustomerTask.h"
#include "screens/customers/TarnRecordFile.h"
#include "screens/customers/TarnRecordReminder.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// One customer opened: the details (saved against `version`) and what hangs off them.
struct TarnCustomerProfile {
    QString id;
    QString name;
    QString stage;
    QString email;
    QString phone;
    QString company;
    QString address;
    qint64 version = 0;
    bool archived = false;
    std::optional<QString> follow_up_on {};
    QString created_at;
    QList<TarnCustomerTask> tasks;
    QList<TarnCustomerContact> contacts;
    QList<TarnRecordFile> files;
    QList<TarnRecordReminder> reminders;
    QList<TarnCustomerDraft> drafts;

    static TarnCustomerProfile fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnCustomerProfile &, const TarnCustomerProfile &) = default;
};
