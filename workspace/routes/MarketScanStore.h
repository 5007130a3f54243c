#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

class WorkspaceStore;

// Market scans over SQLite: each person's scans with the businesses found.
// The local workspace has no map to search, so a scan makes up a plausible
// neighbourhood of businesses from its trade and area, the same every time
// for the same two, and judges what each lacks.
class MarketScanStore {
public:
    explicit MarketScanStore(WorkspaceStore &store);

    [[nodiscard]] bool createSchema();
    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasScans() const;

    [[nodiscard]] WorkspaceReply scans(const QString &me) const;
    [[nodiscard]] WorkspaceReply scan(const QString &me, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply result(const QString &me, const QString &id) const;

    // The businesses a scan of `trade` in `area` finds.
    [[nodiscard]] static QJsonArray businesses(const QString &trade, const QString &area);
    // For the demo: a scan made at `scannedAtMs`; its id.
    QString addScan(const QString &personId, const QString &trade, const QString &area, qint64 scannedAtMs);

private:
    [[nodiscard]] QJsonObject scanObject(const QString &id, bool withBusinesses) const;

    WorkspaceStore &m_store;
};
