#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonObject>
#include <QString>

class WorkspaceStore;

// The company screen's data over the workspace's SQLite tables: the people
// of the team and their apps (`people`), the handbook (`company_sops`) and
// the thought board (`company_posts`, `company_post_reads`). Each method
// answers a route whole, refusals included.
//
// Changing someone's apps rewrites their `people` row, which every session
// answer reads: the person sees the change on their next session refresh.
class CompanyStore {
public:
    explicit CompanyStore(WorkspaceStore &store);

    [[nodiscard]] bool isOwner(const QString &me) const;
    [[nodiscard]] bool mayOpen(const QString &me, const QString &app) const;
    [[nodiscard]] bool hasHandbook() const;

    [[nodiscard]] WorkspaceReply rename(const QString &me, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply search(const QString &me, const QString &query) const;
    [[nodiscard]] WorkspaceReply createMember(const QJsonObject &body);
    [[nodiscard]] WorkspaceReply updateAccess(const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply sops() const;
    [[nodiscard]] WorkspaceReply posts(const QString &me) const;
    [[nodiscard]] WorkspaceReply markRead(const QString &me, const QString &id);
    [[nodiscard]] WorkspaceReply decide(const QString &me, const QString &id, const QJsonObject &body);

    // For the demo; times in milliseconds.
    void addSop(const QString &title, const QString &category, const QString &body, const QString &authorId,
        qint64 updatedAtMs);
    // Answers the new post's id.
    QString addPost(const QString &title, const QString &body, const QString &authorId, qint64 createdAtMs);
    void setDecision(const QString &postId, const QString &decision, const QString &personId);
    void setRead(const QString &postId, const QString &personId);

private:
    [[nodiscard]] QJsonObject post(const QString &me, const QString &id) const;

    WorkspaceStore &m_store;
};
