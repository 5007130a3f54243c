#pragma once

#include <QJsonObject>
#include <QString>

// The bodies of the people screen's changes.

// An owner's correction of a time-clock entry: both times as ISO UTC (an
// empty `clock_out` leaves the person clocked in), the reason that is kept
// with it, and the `version` the correction was based on.
struct TarnTimeEntryEdit {
    QString clock_in;
    QString clock_out;
    QString reason;
    qint64 version = 0;
    [[nodiscard]] QJsonObject toJSON() const
    {
        QJsonObject json { { QStringLiteral("clock_in"), clock_in }, { QStringLiteral("reason"), reason },
            { QStringLiteral("version"), version } };
        if (!clock_out.isEmpty())
            json.insert(QStringLiteral("clock_out"), clock_out);
        return json;
    }
};

// One payroll action on a period: `action` is its path segment, "approve",
// "reopen", "mark-paid" or "adjust"; an adjustment also sends whose pay it
// changes, its label and its amount in cents.
struct TarnPayrollAction {
    QString action;
    QString person_id {};
    QString label {};
    qint64 amount = 0;
    [[nodiscard]] QJsonObject toJSON() const
    {
        if (action != QLatin1StringView("adjust"))
            return {};
        return { { QStringLiteral("person_id"), person_id }, { QStringLiteral("label"), label },
            { QStringLiteral("amount"), amount } };
    }
};

// A period's notes and the `version` they were based on.
struct TarnPayrollNotes {
    QString notes;
    qint64 version = 0;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("notes"), notes }, { QStringLiteral("version"), version } };
    }
};

// An owner's change to a person's HR record, every field as it should now
// read (an empty `phone` or `emergency_contact` clears it), with the
// `version` it was based on.
struct TarnHRRecordEdit {
    QString job_title;
    QString employment;
    QString started_on;
    QString phone;
    QString emergency_contact;
    qint64 version = 0;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("job_title"), job_title }, { QStringLiteral("employment"), employment },
            { QStringLiteral("started_on"), started_on }, { QStringLiteral("phone"), phone },
            { QStringLiteral("emergency_contact"), emergency_contact }, { QStringLiteral("version"), version } };
    }
};
