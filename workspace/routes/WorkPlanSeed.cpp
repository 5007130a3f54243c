#include "workspace/routes/WorkPlanSeed.h"

#include "workspace/routes/WorkPlanStore.h"

#include <QList>
#include <QString>

using namespace Qt::StringLiterals;

namespace {

struct Weekly {
    QString person;
    int weekday; // 1 Monday .. 5 Friday
    QString kind;
    QString title;
    QString client;
    QString time;
};

const QList<Weekly> &week()
{
    static const QList<Weekly> rows {
        { u"p-maren"_s, 1, u"admin"_s, u"Review last week's numbers"_s, {}, {} },
        { u"p-maren"_s, 2, u"call"_s, u"Quarterly check-in"_s, u"c-brightwater"_s, {} },
        { u"p-maren"_s, 3, u"customer"_s, u"Website proposal"_s, u"c-oakline"_s, {} },
        { u"p-maren"_s, 4, u"admin"_s, u"Approve the pay run"_s, {}, {} },
        { u"p-maren"_s, 5, u"reminder"_s, u"Weekly review"_s, {}, u"15:00"_s },
        { u"p-tomas"_s, 1, u"call"_s, u"Renewal call"_s, u"c-marlow"_s, {} },
        { u"p-tomas"_s, 1, u"customer"_s, u"Onboarding kickoff"_s, u"c-fernhill"_s, {} },
        { u"p-tomas"_s, 2, u"support"_s, u"Seasonal menu on the website"_s, u"c-fernhill"_s, {} },
        { u"p-tomas"_s, 3, u"admin"_s, u"Chase late invoices"_s, {}, {} },
        { u"p-tomas"_s, 4, u"call"_s, u"Follow up on the quote"_s, u"c-tidewater"_s, {} },
        { u"p-tomas"_s, 5, u"reminder"_s, u"Send the weekly summary"_s, {}, u"16:00"_s },
        { u"p-priya"_s, 1, u"customer"_s, u"Spring campaign drafts"_s, u"c-tidewater"_s, {} },
        { u"p-priya"_s, 2, u"call"_s, u"Introduction call"_s, u"c-harbor"_s, {} },
        { u"p-priya"_s, 3, u"support"_s, u"Fix the booking form"_s, u"c-brightwater"_s, {} },
        { u"p-priya"_s, 4, u"customer"_s, u"Plan the photo shoot"_s, u"c-quill"_s, {} },
        { u"p-priya"_s, 5, u"admin"_s, u"Update the lead list"_s, {}, {} },
        { u"p-jonah"_s, 1, u"support"_s, u"Server updates"_s, u"c-northfield"_s, {} },
        { u"p-jonah"_s, 2, u"support"_s, u"Backup check"_s, u"c-copper"_s, {} },
        { u"p-jonah"_s, 3, u"support"_s, u"Mail migration"_s, u"c-marlow"_s, {} },
        { u"p-jonah"_s, 4, u"call"_s, u"Check in after the fix"_s, u"c-brightwater"_s, {} },
        { u"p-jonah"_s, 5, u"reminder"_s, u"Close the week's tickets"_s, {}, u"14:30"_s },
        { u"p-sam"_s, 3, u"customer"_s, u"Logo refresh"_s, u"c-quill"_s, {} },
        { u"p-ada"_s, 2, u"customer"_s, u"Copy for the About page"_s, u"c-oakline"_s, {} },
        { u"p-ada"_s, 4, u"customer"_s, u"Newsletter draft"_s, u"c-fernhill"_s, {} },
    };
    return rows;
}

} // namespace

namespace WorkPlanSeed {

void plant(WorkPlanStore &plan, const QDate &today)
{
    const QDate thisWeek = today.addDays(1 - today.dayOfWeek());
    for (int offset = -1; offset <= 1; ++offset) {
        const QDate monday = thisWeek.addDays(7 * offset);
        if (plan.hasWeek(monday))
            continue;
        int n = 0;
        for (const Weekly &row : week()) {
            const QDate day = monday.addDays(row.weekday - 1);
            // Every seventh piece of past work slipped, so the plan is not all ticks.
            const bool done = day < today && ++n % 7 != 0;
            plan.add({ .person_id = row.person,
                         .kind = row.kind,
                         .title = row.title,
                         .day = day,
                         .time = row.time,
                         .client_id = row.client,
                         .notes = {},
                         .done = done },
                row.kind == "admin"_L1 ? row.person : u"p-maren"_s);
        }
        if (offset <= 0) {
            plan.addNote(u"p-priya"_s, monday, u"p-maren"_s,
                offset == 0 ? u"Good start with Harbor. Bring the introduction call's notes to Friday's review."_s
                            : u"The campaign drafts landed well with Tidewater. Keep the same rhythm."_s);
            plan.addNote(u"p-tomas"_s, monday, u"p-maren"_s,
                u"Late invoices first thing on Wednesday, before the calls pile up."_s);
        }
    }
}

} // namespace WorkPlanSeed
