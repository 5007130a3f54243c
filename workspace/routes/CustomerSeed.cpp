#include "workspace/routes/CustomerSeed.h"

#include "workspace/routes/CustomerStore.h"

#include <QDate>
#include <QDateTime>
#include <QList>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 dayMs = 86'400'000;

struct Customer {
    QString id;
    QString name;
    QString phone;
    QString email;
    QString stage;
    QString company;
};

// Where each stage's customers came from, in the order they passed.
const QStringList path = { u"lead"_s, u"qualified"_s, u"proposal"_s, u"customer"_s };

const QStringList people = { u"p-maren"_s, u"p-tomas"_s, u"p-priya"_s };

const QStringList notes = {
    u"Called about the spring schedule; they want fortnightly visits."_s,
    u"Sent the price sheet. They compare us with one other firm."_s,
    u"Met on site. Two rooms need work before the season starts."_s,
    u"Happy with the last visit, asked about a yearly plan."_s,
    u"Prefers email over calls, mornings only."_s,
    u"Budget approved by their manager; waiting for the signed quote."_s,
};

const QStringList tasks = {
    u"Send the quote"_s,
    u"Book the site visit"_s,
    u"Check in after the first month"_s,
    u"Renew the service plan"_s,
    u"Ask for a review"_s,
};

QString day(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC).date().toString(Qt::ISODate);
}

} // namespace

namespace CustomerSeed {

void plant(CustomerStore &customers)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const QList<Customer> list = {
        { u"c-brightwater"_s, u"Brightwater Dental"_s, u"+1 555 0111"_s, u"front@brightwater.example"_s, u"customer"_s,
            u"Brightwater Dental Group"_s },
        { u"c-oakline"_s, u"Oakline Studio"_s, u"+1 555 0112"_s, u"hello@oakline.example"_s, u"customer"_s, {} },
        { u"c-fernhill"_s, u"Fernhill Bakery"_s, u"+1 555 0113"_s, u"orders@fernhill.example"_s, u"proposal"_s, {} },
        { u"c-marlow"_s, u"Marlow & Sons"_s, u"+1 555 0114"_s, u"office@marlow.example"_s, u"customer"_s, {} },
        { u"c-tidewater"_s, u"Tidewater Yoga"_s, u"+1 555 0115"_s, u"studio@tidewater.example"_s, u"qualified"_s, {} },
        { u"c-harbor"_s, u"Harbor Vet Clinic"_s, u"+1 555 0116"_s, {}, u"customer"_s, {} },
        { u"c-quill"_s, u"Quill & Ink"_s, u"+1 555 0117"_s, {}, u"lead"_s, {} },
        { u"c-northfield"_s, u"Northfield Gym"_s, u"+1 555 0118"_s, {}, u"proposal"_s, {} },
        { u"c-copper"_s, u"Copper Kettle Cafe"_s, {}, u"team@copperkettle.example"_s, u"lost"_s, {} },
        { u"c-alder"_s, u"Alder Lane Florist"_s, u"+1 555 0220"_s, u"shop@alderlane.example"_s, u"lead"_s, {} },
        { u"c-bluepine"_s, u"Blue Pine Lodge"_s, u"+1 555 0221"_s, u"stay@bluepine.example"_s, u"customer"_s, {} },
        { u"c-cinder"_s, u"Cinder Forge Works"_s, u"+1 555 0222"_s, u"office@cinderforge.example"_s, u"qualified"_s,
            {} },
        { u"c-driftwood"_s, u"Driftwood Books"_s, u"+1 555 0223"_s, u"hello@driftwood.example"_s, u"customer"_s, {} },
        { u"c-elmstreet"_s, u"Elm Street Pharmacy"_s, u"+1 555 0224"_s, u"rx@elmstreet.example"_s, u"proposal"_s, {} },
        { u"c-foxglove"_s, u"Foxglove Salon"_s, u"+1 555 0225"_s, u"book@foxglove.example"_s, u"lead"_s, {} },
        { u"c-granite"_s, u"Granite Peak Outfitters"_s, u"+1 555 0226"_s, u"gear@granitepeak.example"_s, u"customer"_s,
            {} },
        { u"c-hollow"_s, u"Hollow Oak Winery"_s, u"+1 555 0227"_s, u"cellar@hollowoak.example"_s, u"lost"_s, {} },
        { u"c-ivy"_s, u"Ivy & Rose Events"_s, u"+1 555 0228"_s, u"plan@ivyrose.example"_s, u"qualified"_s, {} },
        { u"c-juniper"_s, u"Juniper Day Care"_s, u"+1 555 0229"_s, u"office@juniper.example"_s, u"customer"_s, {} },
        { u"c-kestrel"_s, u"Kestrel Cycles"_s, u"+1 555 0230"_s, u"ride@kestrel.example"_s, u"lead"_s, {} },
        { u"c-lantern"_s, u"Lantern Bistro"_s, u"+1 555 0231"_s, u"eat@lantern.example"_s, u"proposal"_s, {} },
        { u"c-meadow"_s, u"Meadowbrook Farm"_s, u"+1 555 0232"_s, u"farm@meadowbrook.example"_s, u"customer"_s, {} },
        { u"c-nimbus"_s, u"Nimbus Print Shop"_s, u"+1 555 0233"_s, u"print@nimbus.example"_s, u"qualified"_s, {} },
        { u"c-orchard"_s, u"Orchard Hill School"_s, u"+1 555 0234"_s, u"admin@orchardhill.example"_s, u"customer"_s,
            u"Orchard Hill School District"_s },
        { u"c-pebble"_s, u"Pebble Beach Rentals"_s, u"+1 555 0235"_s, u"stay@pebble.example"_s, u"lead"_s, {} },
        { u"c-quarry"_s, u"Quarry Road Garage"_s, u"+1 555 0236"_s, u"fix@quarryroad.example"_s, u"lost"_s, {} },
        { u"c-riverside"_s, u"Riverside Physio"_s, u"+1 555 0237"_s, u"care@riverside.example"_s, u"customer"_s, {} },
        { u"c-saltmarsh"_s, u"Saltmarsh Kayaks"_s, u"+1 555 0238"_s, u"paddle@saltmarsh.example"_s, u"proposal"_s, {} },
        { u"c-thistle"_s, u"Thistle Tea Room"_s, u"+1 555 0239"_s, u"tea@thistle.example"_s, u"qualified"_s, {} },
        { u"c-upland"_s, u"Upland Architects"_s, u"+1 555 0240"_s, u"studio@upland.example"_s, u"customer"_s, {} },
        { u"c-vale"_s, u"Vale Veterinary"_s, u"+1 555 0241"_s, u"vets@vale.example"_s, u"lead"_s, {} },
        { u"c-willow"_s, u"Willow Creek Spa"_s, u"+1 555 0242"_s, u"relax@willowcreek.example"_s, u"customer"_s, {} },
    };

    for (qsizetype i = 0; i < list.size(); ++i) {
        const Customer &c = list.at(i);
        // Customers arrived over the last year; the demo's own clients keep their rows.
        const qint64 since = now - (40 + (i * 37) % 320) * dayMs;
        customers.plantClient(c.id, c.name, c.phone, c.email, since);
        const qint64 followUp = c.stage == "lost"_L1 ? 0 : now + ((i % 5) - 1) * dayMs;
        customers.plantProfile(c.id, c.stage, c.company, i % 3 == 0 ? u"%1 Harbour Road"_s.arg(10 + i) : QString(),
            followUp ? day(followUp) : QString());

        // The stages it passed, spread between its arrival and now.
        const qsizetype reached = c.stage == "lost"_L1 ? 2 : path.indexOf(c.stage);
        const qint64 span = now - since;
        for (qsizetype s = 1; s <= reached; ++s)
            customers.plantStageChange(
                c.id, path.at(s - 1), path.at(s), people.at((i + s) % people.size()), since + span * s / (reached + 2));
        if (c.stage == "lost"_L1)
            customers.plantStageChange(c.id, path.at(reached), c.stage, people.at(i % people.size()), now - 9 * dayMs);

        for (int n = 0; n < 2 + i % 3; ++n)
            customers.plantNote(c.id, people.at((i + n) % people.size()), notes.at((i + n) % notes.size()),
                since + span * (n + 1) / (5 + n));
        for (int t = 0; t < 1 + i % 3; ++t) {
            const qint64 created = since + span * (t + 1) / 4;
            const bool done = t > 0;
            customers.plantTask(c.id,
                { tasks.at((i + t) % tasks.size()), done ? QString() : day(now + (t + i % 4 - 1) * dayMs), done,
                    created });
        }
        if (i % 4 == 0)
            customers.plantContact(
                c.id, u"Alex Moreno"_s, u"Office manager"_s, u"alex@%1"_s.arg(c.email.section(u'@', 1)));
        if (i % 6 == 1)
            customers.plantFile(c.id, u"service-agreement.txt"_s,
                u"Service agreement between Halvard & Co. and %1.\n"_s.arg(c.name).toUtf8(), u"p-maren"_s,
                since + dayMs);
        if (i % 7 == 2)
            customers.plantReminder(c.id, u"p-maren"_s, u"Call about renewal"_s, now + (3 + i % 5) * dayMs);
    }

    customers.plantContact(u"c-brightwater"_s, u"Dr. Nadia Brooks"_s, u"Owner"_s, u"nadia@brightwater.example"_s);
    customers.plantDraft(u"c-brightwater"_s, u"email"_s, u"Following up on the spring schedule"_s,
        u"Hi Nadia,\n\nJust checking whether fortnightly visits from March still suit you. Happy to adjust.\n\n"
        "Maren"_s,
        now - 2 * 3'600'000);
    customers.plantDraft(u"c-fernhill"_s, u"email"_s, u"Your quote from Halvard & Co."_s,
        u"Hello,\n\nHere is a reminder of the quote we sent last week. It is valid until the end of the month.\n\n"
        "Best,\nMaren"_s,
        now - 5 * 3'600'000);
    customers.plantDraft(u"c-tidewater"_s, u"text"_s, {},
        u"Hi, it's Halvard & Co. Would Thursday morning work for a quick site visit?"_s, now - 26 * 3'600'000);
}

} // namespace CustomerSeed
