#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

class WorkspaceStore;

// The shared inbox over the workspace's SQLite tables. Each method answers a
// route whole (refusals included), so the routes only read requests. The
// server runs one request at a time, so two people acting on one thread are
// answered in turn, each against the state the other left.
//
// Rules kept here: the inbox is open to people with the "Calls" app; a
// thread may be changed by its assignee, by anyone while it is unassigned,
// and by the company's owner; "text" and "email" threads can be answered, a
// "web" form cannot. A snoozed thread wakes when it is read after its time.
class InboxStore {
public:
    explicit InboxStore(WorkspaceStore &store);

    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasThreads() const;
    [[nodiscard]] bool hasClients() const;

    [[nodiscard]] WorkspaceReply list(
        const QString &me, const QString &scope, const QString &view, const QString &kind);
    [[nodiscard]] WorkspaceReply thread(const QString &me, const QString &id);
    [[nodiscard]] WorkspaceReply act(
        const QString &me, const QString &id, const QString &action, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply assist(const QString &me, const QString &id, const QString &draft);
    [[nodiscard]] WorkspaceReply createCustomer(
        const QString &me, const QString &id, const QString &board, const QString &name);
    [[nodiscard]] WorkspaceReply startConversation(
        const QString &me, const QString &kind, const QString &clientId, const QString &address);
    [[nodiscard]] WorkspaceReply notifications(const QString &me);
    void dismiss(const QString &me, const QString &entryId);

    // A customer's message arriving: into the thread of its channel and
    // address (made when new), reopening and waking it, with a notification
    // for the assignee or, while unassigned, everyone in the inbox. Returns
    // the thread's id.
    QString receive(const QString &kind, const QString &address, const QString &body, qint64 atMs);

    // For the demo: a client, a thread and its entries as they stand.
    void addClient(const QString &id, const QString &name, const QString &phone, const QString &email);
    QString addThread(
        const QString &kind, const QString &address, const QString &clientId, const QString &ownerId, qint64 atMs);
    QString addEntry(const QString &thread, const QString &direction, const QString &body, const QString &authorId,
        bool draft, qint64 atMs);
    void setThreadState(const QString &thread, bool done, qint64 snoozedUntilMs);
    void addAttachment(const QString &entry, const QString &name, const QString &status);

private:
    struct Access {
        bool found = false;
        bool canEdit = false;
        bool canSend = false;
        bool aiConfigured = false;
        QString ownerName;
    };
    [[nodiscard]] Access accessTo(const QString &me, const QString &id) const;
    [[nodiscard]] QStringList inboxPeople() const;
    void wakeSnoozed();
    void notify(const QString &entry, const QStringList &people, const QString &reason);
    [[nodiscard]] WorkspaceReply reply(const QString &me, const QString &id, const QJsonObject &body);

    WorkspaceStore &m_store;
};
