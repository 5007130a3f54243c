#include "workspace/routes/CallSeed.h"

#include "workspace/routes/BooksSql.h"
#include "workspace/routes/CallStore.h"

#include <QDateTime>
#include <QList>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace {

struct Lead {
    QString id;
    QString name;
    QString phone;
    QString email;
    QString status;
    QString source;
    QString interest;
    QString owner;
    qint64 estimate;
};

struct Party {
    QString client;
    QString number;
};

const QList<Lead> leads {
    { u"c-alder-roofing"_s, u"Alder Roofing"_s, u"+1 555 0131"_s, u"office@alder.example"_s, u"new"_s,
        u"Website form"_s, u"Quarterly maintenance plan"_s, u"p-tomas"_s, 240000 },
    { u"c-birchwood-florist"_s, u"Birchwood Florist"_s, u"+1 555 0132"_s, u"shop@birchwood.example"_s, u"contacted"_s,
        u"Referral"_s, u"Online ordering"_s, u"p-priya"_s, 90000 },
    { u"c-cedar-lane-dental"_s, u"Cedar Lane Dental"_s, u"+1 555 0133"_s, u"front@cedarlane.example"_s, u"qualified"_s,
        u"Trade show"_s, u"Patient reminders"_s, u"p-maren"_s, 480000 },
    { u"c-delta-bikes"_s, u"Delta Bike Repair"_s, u"+1 555 0134"_s, QString(), u"new"_s, u"Cold call"_s,
        u"Booking page"_s, QString(), 60000 },
    { u"c-elm-street-books"_s, u"Elm Street Books"_s, u"+1 555 0135"_s, u"hello@elmstreet.example"_s, u"contacted"_s,
        u"Website form"_s, u"Newsletter and events"_s, u"p-tomas"_s, 75000 },
    { u"c-fjord-coffee"_s, u"Fjord Coffee"_s, u"+1 555 0136"_s, u"team@fjord.example"_s, u"qualified"_s, u"Referral"_s,
        u"Three shops' schedules"_s, u"p-priya"_s, 310000 },
    { u"c-granite-tile"_s, u"Granite Tile Co."_s, u"+1 555 0137"_s, QString(), u"new"_s, u"Advert"_s,
        u"Quotes and invoices"_s, u"p-tomas"_s, 150000 },
    { u"c-hazel-pediatrics"_s, u"Hazel Pediatrics"_s, u"+1 555 0138"_s, u"desk@hazel.example"_s, u"contacted"_s,
        u"Trade show"_s, u"Shared inbox for the front desk"_s, u"p-maren"_s, 420000 },
    { u"c-iris-salon"_s, u"Iris Salon"_s, u"+1 555 0139"_s, u"book@iris.example"_s, u"new"_s, u"Instagram"_s,
        u"Appointments by text"_s, QString(), 45000 },
    { u"c-juniper-landscaping"_s, u"Juniper Landscaping"_s, u"+1 555 0140"_s, u"crew@juniper.example"_s, u"qualified"_s,
        u"Referral"_s, u"Crew scheduling"_s, u"p-tomas"_s, 265000 },
    { u"c-kestrel-print"_s, u"Kestrel Print"_s, u"+1 555 0141"_s, u"jobs@kestrel.example"_s, u"lost"_s, u"Cold call"_s,
        u"Job tracking"_s, u"p-priya"_s, 120000 },
    { u"c-linden-pets"_s, u"Linden Pet Supply"_s, u"+1 555 0142"_s, QString(), u"contacted"_s, u"Website form"_s,
        u"Loyalty texts"_s, u"p-maren"_s, 85000 },
};

const QStringList callers { u"p-maren"_s, u"p-tomas"_s, u"p-priya"_s, u"p-jonah"_s };

const QStringList notes {
    u"Wants a quote by Friday."_s,
    u"Asked about the annual plan."_s,
    u"Call back after 3 pm."_s,
    QString(),
    u"Happy with the last visit."_s,
    u"Billing question, sent the invoice again."_s,
    QString(),
    u"Moving to a bigger site in spring."_s,
};

} // namespace

namespace CallSeed {

void plant(CallStore &calls, QSqlDatabase db)
{
    db.transaction();
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    for (const Lead &lead : leads) {
        BooksSql::run(db,
            u"INSERT OR IGNORE INTO clients (id, name, board_id, phone, email, created_at)"
            " VALUES (?, ?, 'leads', ?, ?, ?)"_s,
            { lead.id, lead.name, BooksSql::orNull(lead.phone), BooksSql::orNull(lead.email), now });
        calls.addLead(lead.id, lead.status, lead.source, lead.interest, lead.owner, lead.estimate);
    }

    QList<Party> parties;
    for (QSqlQuery q = BooksSql::run(db, u"SELECT id, phone FROM clients WHERE phone IS NOT NULL ORDER BY id"_s);
         q.next();)
        parties.append({ q.value(0).toString(), q.value(1).toString() });
    // A caller the book does not know yet.
    parties.append({ QString(), u"+1 555 0199"_s });

    // Sixty calls, a few a working day, spread over three weeks; the mix of
    // directions and outcomes is fixed so that every filter shows some.
    constexpr int count = 60;
    for (int i = 0; i < count; ++i) {
        const Party &party = parties.at(i % parties.size());
        const bool inbound = i % 3 != 1;
        QString outcome = u"answered"_s;
        if (inbound && i % 7 == 3)
            outcome = u"missed"_s;
        else if (inbound && i % 11 == 5)
            outcome = u"voicemail"_s;
        else if (!inbound && i % 5 == 4)
            outcome = u"no-answer"_s;
        const bool answered = outcome == "answered"_L1;
        const qint64 hoursAgo = 2 + qint64(i) * 8 + (i % 4);
        calls.addCall({ .direction = inbound ? u"in"_s : u"out"_s,
            .clientId = party.client,
            .personId = callers.at(i % callers.size()),
            .number = party.number,
            .startedAtMs = now - hoursAgo * 3600 * 1000,
            .duration = answered ? 40 + (i * 37) % 600 : (outcome == "voicemail"_L1 ? 25 : 0),
            .outcome = outcome,
            .notes = answered ? notes.at(i % notes.size()) : QString(),
            .recorded = answered && i % 6 != 2 });
    }
    db.commit();
}

} // namespace CallSeed
