#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

// The bodies of the portals' changes.

// A change of a portal account, based on the `version` it was read at; only
// the fields that are set are sent.
struct TarnPortalAccountUpdate {
    qint64 version = 0;
    std::optional<QString> status {};
    std::optional<QString> welcome {};
    [[nodiscard]] QJsonObject toJSON() const
    {
        QJsonObject json { { QStringLiteral("version"), version } };
        if (status)
            json.insert(QStringLiteral("status"), *status);
        if (welcome)
            json.insert(QStringLiteral("welcome"), *welcome);
        return json;
    }
};

struct TarnPortalInvite {
    QString name;
    QString email;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("name"), name }, { QStringLiteral("email"), email } };
    }
};

// A new report for `month` ("YYYY-MM"); the workspace writes its body from
// the month's figures, unpublished.
struct TarnPortalReportDraft {
    QString title;
    QString month;
    [[nodiscard]] QJsonObject toJSON() const
    {
        return { { QStringLiteral("title"), title }, { QStringLiteral("month"), month } };
    }
};

struct TarnPortalReportPublishing {
    bool published = false;
    [[nodiscard]] QJsonObject toJSON() const { return { { QStringLiteral("published"), published } }; }
};
