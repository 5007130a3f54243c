#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

class WorkspaceStore;

// The overview over SQLite: the team now (read from the time clock, the
// support board and the calendar), the product boards with their work, and
// the orders being fulfilled. A board item's `version` counts its moves.
class OverviewStore {
public:
    explicit OverviewStore(WorkspaceStore &store);

    [[nodiscard]] bool createSchema();
    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasBoards() const;

    [[nodiscard]] WorkspaceReply team() const;
    [[nodiscard]] WorkspaceReply boards() const;
    [[nodiscard]] WorkspaceReply moveItem(const QString &me, const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply orders() const;
    [[nodiscard]] WorkspaceReply advanceOrder(const QString &id);

    // For the demo.
    [[nodiscard]] QString addBoard(const QString &name, const QStringList &stages);
    void addItem(const QString &boardId, const QString &stage, const QString &title, const QString &clientId,
        const QString &ownerId, const QString &dueDate);
    void addOrder(const QString &clientId, const QString &summary, const QString &status, const QString &carrier,
        const QString &eta);

private:
    [[nodiscard]] QJsonObject itemObject(const QString &id) const;
    [[nodiscard]] QJsonObject orderObject(const QString &id) const;

    WorkspaceStore &m_store;
};
