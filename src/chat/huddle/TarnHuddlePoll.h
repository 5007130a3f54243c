#pragma once

#include <QJsonObject>
#include <QString>

// The body of a long poll: anything above `after` (signals) or `version`
// (state), held up to `wait` seconds.
struct TarnHuddlePoll {
    QString sid;
    qint64 after = 0;
    qint64 version = 0;
    int wait = 15;

    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("sid"), sid }, { QStringLiteral("after"), after },
            { QStringLiteral("version"), version }, { QStringLiteral("wait"), wait } };
    }
};
