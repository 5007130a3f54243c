#include "workspace/routes/SupportSeed.h"

#include "workspace/routes/SupportStore.h"

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QSqlDatabase>

using namespace Qt::StringLiterals;

namespace {

struct Row {
    QString title;
    char status; // 't'odo, 'p'rogress, 'w'aiting, 'd'one
    char priority; // 'l'ow, 'n'ormal, 'h'igh, 'u'rgent
    QString client;
    QString assignee;
    int dueInDays; // from today; 99 for none
    QStringList subtasks {};
    QStringList comments {};
    int minutesLogged = 0;
};

QString statusOf(char c)
{
    switch (c) {
    case 'p':
        return u"in_progress"_s;
    case 'w':
        return u"waiting"_s;
    case 'd':
        return u"done"_s;
    default:
        return u"todo"_s;
    }
}

QString priorityOf(char c)
{
    switch (c) {
    case 'l':
        return u"low"_s;
    case 'h':
        return u"high"_s;
    case 'u':
        return u"urgent"_s;
    default:
        return u"normal"_s;
    }
}

constexpr qint64 hourMs = 3600 * 1000;

} // namespace

namespace SupportSeed {

void plant(SupportStore &support, QSqlDatabase db)
{
    const QString maren = u"p-maren"_s, tomas = u"p-tomas"_s, priya = u"p-priya"_s, jonah = u"p-jonah"_s;
    const QString bright = u"c-brightwater"_s, oak = u"c-oakline"_s, fern = u"c-fernhill"_s, marlow = u"c-marlow"_s,
                  tide = u"c-tidewater"_s, harbor = u"c-harbor"_s, quill = u"c-quill"_s, north = u"c-northfield"_s,
                  copper = u"c-copper"_s;
    const QList<Row> rows = {
        { u"Front desk printer drops off the network"_s, 'p', 'h', bright, jonah, -2,
            { u"Check the DHCP lease"_s, u"Update printer firmware"_s },
            { u"It happens every morning around nine."_s, u"Lease looks fine; firmware next."_s }, 95 },
        { u"Reset the reception tablet"_s, 't', 'n', bright, priya, 3 },
        { u"Patient portal login loops"_s, 'w', 'u', bright, jonah, -1, {},
            { u"Waiting on the portal vendor's answer."_s }, 40 },
        { u"Replace the X-ray room switch"_s, 't', 'h', bright, tomas, 6,
            { u"Order the switch"_s, u"Book a Saturday"_s } },
        { u"Back up the imaging server"_s, 'd', 'n', bright, jonah, -5, {}, {}, 60 },
        { u"Photo studio NAS is nearly full"_s, 'p', 'h', oak, tomas, 1, { u"Archive 2023 shoots"_s },
            { u"Moved 400 GB so far."_s }, 120 },
        { u"Colour profile for the new monitors"_s, 't', 'l', oak, priya, 12 },
        { u"Studio Wi-Fi drops during uploads"_s, 'w', 'n', oak, jonah, 2, {},
            { u"Asked them to log the times it drops."_s } },
        { u"Set up the guest network"_s, 'd', 'l', oak, priya, -8, {}, {}, 30 },
        { u"Shared calendar for the editors"_s, 't', 'n', oak, maren, 99 },
        { u"Till receipt printer jams"_s, 'p', 'u', fern, jonah, 0, {},
            { u"Paper roll was the wrong width; new rolls ordered."_s }, 25 },
        { u"Online order form rejects postcodes"_s, 't', 'h', fern, priya, -3,
            { u"Reproduce with a test order"_s, u"Fix the validation"_s, u"Tell the bakery"_s } },
        { u"Move the bakery's mail to the new domain"_s, 'w', 'n', fern, tomas, 9 },
        { u"Card reader firmware"_s, 'd', 'n', fern, jonah, -12, {}, {}, 15 },
        { u"Staff rota spreadsheet keeps breaking"_s, 't', 'l', fern, maren, 20 },
        { u"New laptop for the senior partner"_s, 'p', 'n', marlow, tomas, 4,
            { u"Order"_s, u"Move files"_s, u"Set up mail"_s }, { u"Arrives Thursday."_s }, 45 },
        { u"Scanner sends to the wrong folder"_s, 't', 'n', marlow, jonah, -6 },
        { u"Renew the firewall licence"_s, 't', 'u', marlow, maren, 5 },
        { u"Offboard a former clerk"_s, 'd', 'h', marlow, priya, -2, {}, {}, 35 },
        { u"VPN for working from home"_s, 'w', 'n', marlow, tomas, 14, {},
            { u"They are choosing between two plans."_s } },
        { u"Booking site shows the old timetable"_s, 'p', 'h', tide, priya, -1, {},
            { u"Cache cleared; checking the feed."_s }, 50 },
        { u"Speaker in studio two crackles"_s, 't', 'l', tide, jonah, 8 },
        { u"Newsletter sign-up form"_s, 't', 'n', tide, maren, 11 },
        { u"Door code system after the power cut"_s, 'd', 'u', tide, jonah, -4, {}, {}, 80 },
        { u"Practice software update"_s, 'p', 'n', harbor, tomas, 2, { u"Read the release notes"_s } },
        { u"Label printer for the pharmacy"_s, 't', 'n', harbor, jonah, -9 },
        { u"Vet clinic phones ring twice"_s, 'w', 'h', harbor, maren, 1 },
        { u"Order the clinic's new headsets"_s, 'd', 'l', harbor, priya, -6 },
        { u"Point-of-sale tablet stuck on update"_s, 't', 'h', quill, jonah, 0 },
        { u"Inventory export to the books"_s, 'p', 'n', quill, priya, 6, {}, {}, 70 },
        { u"Shop Wi-Fi password rotation"_s, 'd', 'n', quill, jonah, -1 },
        { u"Gym check-in kiosk freezes"_s, 'p', 'u', north, jonah, -1,
            { u"Collect the kiosk's logs"_s, u"Swap the card reader"_s },
            { u"Freezes after about 200 check-ins."_s, u"Logs collected; looks like memory."_s }, 110 },
        { u"Music system zones"_s, 't', 'l', north, tomas, 25 },
        { u"Member app push notifications"_s, 'w', 'n', north, priya, 7 },
        { u"Cafe menu screens"_s, 't', 'n', copper, priya, 4 },
        { u"Espresso machine telemetry"_s, 't', 'l', copper, tomas, 99 },
        { u"Copper Kettle loyalty cards"_s, 'd', 'n', copper, maren, -10, {}, {}, 20 },
        { u"Write the on-call handbook"_s, 't', 'n', QString(), maren, 15 },
        { u"Tidy the spare parts shelf"_s, 't', 'l', QString(), QString(), 99 },
    };

    db.transaction();
    const QDate today = QDate::currentDate();
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    QString timerTask;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const Row &row = rows.at(i);
        const qint64 at = now - (rows.size() - i) * 5 * hourMs;
        const QString id = support.addTask({ .title = row.title,
                                               .status = statusOf(row.status),
                                               .priority = priorityOf(row.priority),
                                               .clientId = row.client,
                                               .assigneeId = row.assignee,
                                               .due = row.dueInDays == 99 ? QDate() : today.addDays(row.dueInDays) },
            at);
        for (qsizetype s = 0; s < row.subtasks.size(); ++s)
            support.addTask({ .title = row.subtasks.at(s),
                                .status = s == 0 && row.status != 't' ? u"done"_s : u"todo"_s,
                                .priority = u"normal"_s,
                                .clientId = row.client,
                                .assigneeId = row.assignee,
                                .due = {},
                                .parentId = id },
                at + s + 1);
        const QString commenters[] = { row.assignee.isEmpty() ? maren : row.assignee, maren };
        for (qsizetype c = 0; c < row.comments.size(); ++c)
            support.addComment(id, commenters[c % 2], row.comments.at(c), at + (c + 1) * hourMs);
        if (row.minutesLogged > 0)
            support.addTime(id, row.assignee, row.minutesLogged, today.addDays(-(i % 6)), u"On site"_s);
        if (row.title.startsWith("Gym check-in"_L1))
            timerTask = id;
    }
    support.startTimer(maren, timerTask, now - 25 * 60 * 1000);

    // Recurring maintenance: each rule with its next task on the board, and
    // one with last month's occurrence already done.
    const struct {
        QString title, client, assignee, every;
        int dueInDays;
        bool lastDone;
    } rules[] = {
        { u"Monthly backup check"_s, bright, jonah, u"month"_s, 6, true },
        { u"Weekly patching window"_s, marlow, tomas, u"week"_s, 2, true },
        { u"Quarterly firewall review"_s, north, maren, u"quarter"_s, -1, false },
        { u"Check the till's card terminal"_s, fern, jonah, u"month"_s, 13, false },
    };
    for (const auto &rule : rules) {
        const QString id = support.addRule(rule.title, rule.client, rule.assignee, rule.every, now - 60 * 24 * hourMs);
        const QDate due = today.addDays(rule.dueInDays);
        if (rule.lastDone) {
            const QDate previous = rule.every == "week"_L1 ? due.addDays(-7) : due.addMonths(-1);
            const QString done = support.addTask({ .title = rule.title,
                                                     .status = u"done"_s,
                                                     .priority = u"normal"_s,
                                                     .clientId = rule.client,
                                                     .assigneeId = rule.assignee,
                                                     .due = previous,
                                                     .recurringId = id },
                now - 6 * 24 * hourMs);
            support.addTime(done, rule.assignee, 30, previous, QString());
        }
        support.addTask({ .title = rule.title,
                            .status = u"todo"_s,
                            .priority = u"normal"_s,
                            .clientId = rule.client,
                            .assigneeId = rule.assignee,
                            .due = due,
                            .recurringId = id },
            now - 5 * 24 * hourMs);
    }

    support.addClientNote(
        bright, maren, u"Main contact is Dr. Ellis; call before 8 am or after 6 pm."_s, now - 20 * 24 * hourMs);
    support.addClientNote(bright, jonah, u"Server cupboard key is at the front desk."_s, now - 3 * 24 * hourMs);
    support.addClientNote(north, tomas, u"Kiosk is under the extended warranty until March."_s, now - 9 * 24 * hourMs);
    support.addView(
        maren, u"Urgent for me"_s, QJsonObject { { u"assignee_id"_s, maren }, { u"priority"_s, u"urgent"_s } });
    db.commit();
}

} // namespace SupportSeed
