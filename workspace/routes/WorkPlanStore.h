#pragma once

#include "workspace/WorkspaceReply.h"

#include <QDate>
#include <QJsonObject>
#include <QString>

#include <optional>

class WorkspaceStore;

// The work plan's data over `workplan_entries` (each person's planned work
// by day) and `workplan_coach_notes` (notes on a person's week). Each method
// answers a route whole, refusals included; the caller has checked that the
// asker may open the plan ("Sales").
//
// Owners and managers coach: they plan for anyone, complete anyone's work
// and write coaching notes; everyone else plans and completes their own.
class WorkPlanStore {
public:
    // One planned entry, as the demo plants it.
    struct Planned {
        QString person_id {};
        QString kind {};
        QString title {};
        QDate day {};
        QString time {}; // empty: none
        QString client_id {}; // empty: none
        QString notes {};
        bool done = false;
    };

    explicit WorkPlanStore(WorkspaceStore &store);

    [[nodiscard]] bool mayPlan(const QString &me) const;
    [[nodiscard]] bool coaches(const QString &me) const;
    [[nodiscard]] bool hasWeek(const QDate &monday) const;

    [[nodiscard]] WorkspaceReply plan(const QString &me, const QString &week) const;
    [[nodiscard]] WorkspaceReply complete(const QString &me, const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply createAdminTask(const QString &me, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply updateAdminTask(const QString &me, const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply createReminder(const QString &me, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply addCoachNote(const QString &me, const QString &person, const QJsonObject &body);

    // Answers the new entry's id; a done one is marked done by its person.
    QString add(const Planned &planned, const QString &createdBy);
    // For the demo.
    void addNote(const QString &person, const QDate &monday, const QString &author, const QString &body);

private:
    [[nodiscard]] QJsonObject entry(const QString &id) const;
    // Fills the draft's person, title and day from a body; answers why
    // `me` may not plan it (404, 403 or 400), or nothing.
    [[nodiscard]] std::optional<WorkspaceReply> draftRefusal(
        const QString &me, const QJsonObject &body, Planned &draft) const;

    WorkspaceStore &m_store;
};
