#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

// The bodies of the company screen's changes.

struct TarnAccountRename {
    QString name;
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("name"), name } }; }
};

// A new person on the team with the apps they may open.
struct TarnTeamMemberDraft {
    QString name;
    QString email;
    QString role;
    QStringList apps;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("name"), name }, { QStringLiteral("email"), email }, { QStringLiteral("role"), role },
            { QStringLiteral("apps"), QJsonArray::fromStringList(apps) } };
    }
};

// The whole list of apps a person may open from their next session on.
struct TarnTeamAccess {
    QStringList apps;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("apps"), QJsonArray::fromStringList(apps) } };
    }
};

// The owner's answer to an idea, based on the post's `version`.
struct TarnPostDecision {
    QString decision;
    qint64 version = 0;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("decision"), decision }, { QStringLiteral("version"), version } };
    }
};
