#pragma once

#include "workspace/WorkspaceReply.h"

#include <QDate>
#include <QJsonObject>
#include <QString>

class WorkspaceStore;

// The support board over the workspace's `support_*` tables. Each method
// answers a route whole, refusals included. The server runs one request at a
// time, so two people moving one card are answered in turn: the second is
// refused by the version check with the card as the first left it.
//
// Rules kept here: the board is open to people with the "Support" app;
// completing a task of a running recurring rule makes the rule's next task,
// once per occurrence whatever happens to the completed one afterwards; a
// person has one running timer, and starting another stops and logs it.
class SupportStore {
public:
    // The largest file a task takes; the app refuses larger ones before sending.
    static constexpr qint64 fileLimit = 5 * 1024 * 1024;

    explicit SupportStore(WorkspaceStore &store);

    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasTasks() const;

    [[nodiscard]] WorkspaceReply board(const QString &me);
    [[nodiscard]] WorkspaceReply task(const QString &id);
    [[nodiscard]] WorkspaceReply createTask(const QString &me, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply updateTask(const QString &me, const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply createSubtask(const QString &me, const QString &parent, const QString &title);
    [[nodiscard]] WorkspaceReply addComment(const QString &me, const QString &task, const QString &body);
    [[nodiscard]] WorkspaceReply attachFile(const QString &me, const QString &task, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply file(const QString &id);
    [[nodiscard]] WorkspaceReply trackTime(const QString &me, const QString &task, const QString &action);
    [[nodiscard]] WorkspaceReply logTime(const QString &me, const QString &task, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply addRecurring(const QJsonObject &body);
    [[nodiscard]] WorkspaceReply stopRecurring(const QString &id);
    [[nodiscard]] WorkspaceReply client(const QString &id);
    [[nodiscard]] WorkspaceReply addClientNote(const QString &me, const QString &client, const QString &body);
    [[nodiscard]] WorkspaceReply saveView(const QString &me, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply renameView(const QString &me, const QString &id, const QString &name);
    [[nodiscard]] WorkspaceReply deleteView(const QString &me, const QString &id);

    // For the demo and the benchmarks: rows as they stand, times in ms.
    struct NewTask {
        QString title;
        QString status;
        QString priority;
        QString clientId;
        QString assigneeId;
        QDate due;
        QString parentId {};
        QString recurringId {};
        QString description {};
    };
    QString addTask(const NewTask &task, qint64 atMs);
    QString addRule(
        const QString &title, const QString &clientId, const QString &assigneeId, const QString &every, qint64 atMs);
    void addComment(const QString &task, const QString &authorId, const QString &body, qint64 atMs);
    QString addTime(const QString &task, const QString &personId, int minutes, const QDate &day, const QString &note);
    void startTimer(const QString &personId, const QString &task, qint64 atMs);
    QString addClientNote(const QString &client, const QString &authorId, const QString &body, qint64 atMs);
    QString addView(const QString &personId, const QString &name, const QJsonObject &filters);

    // The day after `from` on which a rule repeating `every` falls next.
    [[nodiscard]] static QDate nextOccurrence(const QDate &from, const QString &every);

private:
    [[nodiscard]] QJsonObject summary(const QString &id) const;
    [[nodiscard]] bool exists(const char *table, const QString &id) const;
    [[nodiscard]] QJsonValue timerOf(const QString &me) const;
    [[nodiscard]] QJsonObject stopTimer(const QString &me);
    void makeNextOccurrence(const QString &task);

    WorkspaceStore &m_store;
};
