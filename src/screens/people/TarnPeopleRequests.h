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
