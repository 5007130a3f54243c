#include "workspace/routes/PeopleSeed.h"

#include "screens/people/PayrollRules.h"
#include "screens/people/TarnPeopleRequests.h"
#include "workspace/routes/PeopleHRStore.h"
#include "workspace/routes/PeoplePayrollStore.h"
#include "workspace/routes/PeopleStore.h"

#include <QDateTime>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace PeopleSeed {

namespace {

struct Shift {
    QString person;
    int startMinute; // after local midnight
    int lengthMinutes;
};

const QList<Shift> dayShifts {
    { u"p-maren"_s, 8 * 60 + 10, 9 * 60 + 5 },
    { u"p-tomas"_s, 8 * 60 + 45, 8 * 60 + 20 },
    { u"p-priya"_s, 9 * 60, 7 * 60 + 50 },
    { u"p-jonah"_s, 10 * 60 + 30, 8 * 60 },
    { u"p-sam"_s, 9 * 60 + 20, 6 * 60 + 40 },
};

qint64 at(QDate day, int minute)
{
    return QDateTime(day, QTime(0, 0), QTimeZone::systemTimeZone()).addSecs(minute * 60LL).toMSecsSinceEpoch();
}

} // namespace

void plantHR(PeopleHRStore &hr)
{
    const QList<std::pair<QString, TarnHRRecordEdit>> records {
        { u"p-maren"_s,
            { u"Founder and director"_s, u"owner"_s, u"2019-03-04"_s, u"+1 555 0100"_s,
                u"Jon Holt (partner), +1 555 0190"_s } },
        { u"p-tomas"_s,
            { u"Operations manager"_s, u"employee"_s, u"2020-09-14"_s, u"+1 555 0101"_s,
                u"Lucia Reyes (sister), +1 555 0191"_s } },
        { u"p-priya"_s,
            { u"Account manager"_s, u"employee"_s, u"2022-01-10"_s, u"+1 555 0102"_s,
                u"Dev Nair (father), +1 555 0192"_s } },
        { u"p-jonah"_s,
            { u"Support lead"_s, u"employee"_s, u"2021-06-01"_s, u"+1 555 0103"_s,
                u"Ruth Whitfield (mother), +1 555 0193"_s } },
        { u"p-sam"_s,
            { u"Designer"_s, u"part-time"_s, u"2023-04-17"_s, u"+1 555 0104"_s,
                u"Chidi Okoro (partner), +1 555 0194"_s } },
        { u"p-ada"_s,
            { u"Developer"_s, u"contractor"_s, u"2024-02-05"_s, u"+46 70 555 0105"_s,
                u"Erik Lindqvist (brother), +46 70 555 0195"_s } },
    };
    for (const auto &[person, record] : records)
        hr.set(person, record);
}

void plant(PeopleStore &people)
{
    const QDate today = QDate::currentDate();
    for (int back = 21; back >= 1; --back) {
        const QDate day = today.addDays(-back);
        // Sundays the support desk runs a late shift into Monday, across the turn of the week.
        if (day.dayOfWeek() == Qt::Sunday)
            people.addEntry(u"p-jonah"_s, at(day, 22 * 60), at(day, 26 * 60 + 15));
        if (day.dayOfWeek() > Qt::Friday)
            continue;
        for (qsizetype i = 0; i < dayShifts.size(); ++i) {
            const Shift &shift = dayShifts.at(i);
            // A little variation, the same on every run.
            const int jitter = int((back * 7 + i * 13) % 25) - 12;
            people.addEntry(shift.person, at(day, shift.startMinute + jitter),
                at(day, shift.startMinute + shift.lengthMinutes + 2 * jitter));
        }
        // Ada, the contractor, works evenings past midnight twice a week.
        if (day.dayOfWeek() == Qt::Tuesday || day.dayOfWeek() == Qt::Thursday)
            people.addEntry(u"p-ada"_s, at(day, 19 * 60 + 30), at(day, 24 * 60 + 50));
    }
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    people.addEntry(u"p-priya"_s, now - (3 * 3600 + 25 * 60) * 1000LL, 0);
    people.addEntry(u"p-jonah"_s, now - (1 * 3600 + 40 * 60) * 1000LL, 0);
}

void plantPayroll(PeoplePayrollStore &payroll)
{
    const QList<std::pair<QString, qint64>> rates { { u"p-maren"_s, 5200 }, { u"p-tomas"_s, 4100 },
        { u"p-priya"_s, 3350 }, { u"p-jonah"_s, 2900 }, { u"p-sam"_s, 3600 }, { u"p-ada"_s, 6500 } };
    for (const auto &[person, rate] : rates)
        payroll.setRate(person, rate);
    const QDate current = PayrollRules::periodStart(QDate::currentDate());
    const QString maren = u"p-maren"_s;
    payroll.setStatus(current.addDays(-2 * PayrollRules::periodDays), u"paid"_s, u"Paid on time."_s, maren);
    payroll.setStatus(current.addDays(-PayrollRules::periodDays), u"paid"_s,
        u"Jonah's Sunday shifts paid at the usual rate; on-call added separately."_s, maren);
    payroll.addAdjustment(current.addDays(-PayrollRules::periodDays), u"p-jonah"_s, u"Weekend on-call"_s, 7500, maren);
    payroll.setStatus(current, u"open"_s, u"Check Ada's late Thursday before approving."_s, maren);
    payroll.addAdjustment(current, u"p-priya"_s, u"Conference travel"_s, 18450, maren);
    payroll.addAdjustment(current, u"p-sam"_s, u"Equipment advance repaid"_s, -5000, maren);
}

} // namespace PeopleSeed
