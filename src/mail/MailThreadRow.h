#pragma once

#include "mail/TarnMailCard.h"

#include <QString>

// One thread in the mail list, with the title of the section it is under.
struct MailThreadRow {
    QString key; // the thread id
    QString section;
    TarnMailCard card;

    friend bool operator==(const MailThreadRow &, const MailThreadRow &) = default;
};
