#include "workspace/routes/PortalSeed.h"

#include "workspace/routes/PortalStore.h"

#include <QDateTime>
#include <QList>

#include <tuple>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 day = 24 * 3600 * 1000LL;

struct Portal {
    QString client;
    QString status;
    QString welcome;
    qint64 visits; // a typical month's
    qint64 revenue; // a typical month's, in cents
};

const QList<Portal> portals {
    { u"c-brightwater"_s, u"live"_s, u"Welcome back! Your monthly figures and our work for you are below."_s, 1800,
        420000 },
    { u"c-oakline"_s, u"live"_s, u"Hi Oakline team: here is how the studio's site is doing."_s, 950, 185000 },
    { u"c-fernhill"_s, u"paused"_s, u"The bakery's portal is resting over the winter."_s, 600, 96000 },
    { u"c-marlow"_s, u"live"_s, u"Marlow & Sons: your reports, leads and projects in one place."_s, 2400, 610000 },
    { u"c-tidewater"_s, u"setup"_s, QString(), 0, 0 },
};

struct Person {
    QString client;
    QString name;
    QString email;
    int invitedDaysAgo;
    int seenDaysAgo; // 0: never signed in
};

const QList<Person> people {
    { u"c-brightwater"_s, u"Dr. Helen Park"_s, u"helen@brightwater.example"_s, 200, 2 },
    { u"c-brightwater"_s, u"Luis Ortega"_s, u"front@brightwater.example"_s, 180, 9 },
    { u"c-oakline"_s, u"Ines Carvalho"_s, u"ines@oakline.example"_s, 120, 1 },
    { u"c-fernhill"_s, u"Rosa Fenn"_s, u"rosa@fernhill.example"_s, 300, 64 },
    { u"c-marlow"_s, u"George Marlow"_s, u"george@marlow.example"_s, 400, 3 },
    { u"c-marlow"_s, u"Edith Marlow"_s, u"edith@marlow.example"_s, 400, 0 },
    { u"c-marlow"_s, u"Kofi Mensah"_s, u"kofi@marlow.example"_s, 40, 12 },
    { u"c-tidewater"_s, u"Ana Lopes"_s, u"ana@tidewater.example"_s, 3, 0 },
};

struct Work {
    QString client;
    QString title;
    QString status;
    int daysAgo;
};

const QList<Work> work {
    { u"c-brightwater"_s, u"New patient booking page"_s, u"delivered"_s, 20 },
    { u"c-brightwater"_s, u"Spring reminder campaign"_s, u"in-progress"_s, 2 },
    { u"c-oakline"_s, u"Portfolio gallery refresh"_s, u"in-progress"_s, 5 },
    { u"c-oakline"_s, u"Search listing update"_s, u"planned"_s, 1 },
    { u"c-fernhill"_s, u"Holiday order form"_s, u"delivered"_s, 70 },
    { u"c-marlow"_s, u"Quote request form"_s, u"delivered"_s, 34 },
    { u"c-marlow"_s, u"Trade account sign-up"_s, u"in-progress"_s, 6 },
    { u"c-marlow"_s, u"Yard opening hours banner"_s, u"planned"_s, 0 },
};

struct Alert {
    QString client;
    QString kind;
    QString text;
    int hoursAgo;
};

const QList<Alert> alerts {
    { u"c-marlow"_s, u"lead"_s, u"New lead from the portal: Harbor Joinery"_s, 3 },
    { u"c-brightwater"_s, u"report"_s, u"Last month's report is written but not published."_s, 20 },
    { u"c-oakline"_s, u"performance"_s, u"Visits fell by a third this month; the figures may be out of date."_s, 30 },
    { u"c-fernhill"_s, u"person"_s, u"Rosa Fenn has not signed in for two months."_s, 50 },
    { u"c-tidewater"_s, u"key"_s, u"The portal has no lead key yet: the site's form cannot send leads."_s, 70 },
};

} // namespace

namespace PortalSeed {

void plant(PortalStore &store)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const qint64 nowMs = now.toMSecsSinceEpoch();
    for (const Portal &portal : portals) {
        store.plantAccount(portal.client, portal.status, portal.welcome);
        // Keys nobody knows, so the demo shows their last characters.
        if (portal.status != "setup"_L1) {
            std::ignore = store.issueKey(portal.client, PortalStore::Key::Lead);
            std::ignore = store.issueKey(portal.client, PortalStore::Key::Pilo);
        }
        if (portal.visits == 0)
            continue;
        // Six months back to this one, varying a little and growing slowly.
        for (int back = 6; back >= 0; --back) {
            const QString month = now.addMonths(-back).toString(u"yyyy-MM"_s);
            const qint64 swing = 100 - 3 * back + (back * 7 + int(portal.client.size())) % 11;
            const qint64 share = back == 0 ? std::max(1, now.date().day()) : 30;
            store.plantMonth(portal.client, month, portal.visits * swing * share / 3000,
                portal.visits * swing * share / 3000 / 60, (swing * share) / 300,
                portal.revenue * swing * share / 3000);
            if (back >= 1 && back <= 3)
                store.plantReport(
                    portal.client, u"Monthly report"_s, month, back > 1 || portal.client != "c-brightwater"_L1);
        }
    }
    for (const Person &person : people)
        store.plantPerson(person.client, person.name, person.email, nowMs - person.invitedDaysAgo * day,
            person.seenDaysAgo > 0 ? nowMs - person.seenDaysAgo * day : 0);
    for (const Work &item : work)
        store.plantWork(item.client, item.title, item.status, nowMs - item.daysAgo * day);
    for (const Alert &alert : alerts)
        store.plantAlert(alert.client, alert.kind, alert.text, nowMs - alert.hoursAgo * 3600 * 1000LL);
}

} // namespace PortalSeed
