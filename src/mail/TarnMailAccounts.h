#pragma once

#include "mail/TarnMailPerson.h"

#include <QList>

class TarnJSONObject;

// The addresses the composer may send as, the mailbox's own first.
struct TarnMailAccounts {
    QList<TarnMailPerson> accounts;

    static TarnMailAccounts fromJSON(const TarnJSONObject &json);
};
