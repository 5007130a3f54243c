#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonObject>
#include <QString>

class WorkspaceStore;

// The call book and the sales leads over the workspace's SQLite tables
// (`calls_book`, `calls_leads`; a lead is a `clients` row on the "leads"
// board). Each method answers a route whole, refusals included.
//
// A call placed here is simulated: it rings for `ringMs`, is answered, and
// talks for `talkSeconds`; its state follows from its age when it is read,
// and once it has ended it has a recording. Editing a cell needs the version
// the edit was based on; a stale one is refused with 409 and the current row.
class CallStore {
public:
    static constexpr qint64 ringMs = 2000;
    static constexpr int talkSeconds = 4;
    // A recording is the first seconds of the call, at most this many.
    static constexpr int recordingSeconds = 6;

    explicit CallStore(WorkspaceStore &store);

    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasCalls() const;

    [[nodiscard]] WorkspaceReply list() const;
    [[nodiscard]] WorkspaceReply saveCell(const QString &me, const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply start(const QString &me, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply recording(const QString &id) const;
    [[nodiscard]] WorkspaceReply leads() const;
    [[nodiscard]] WorkspaceReply lead(const QString &id) const;

    // For the demo.
    struct Call {
        QString direction;
        QString clientId;
        QString personId;
        QString number;
        qint64 startedAtMs = 0;
        int duration = 0;
        QString outcome;
        QString notes;
        bool recorded = false;
    };
    void addCall(const Call &call);
    void addLead(const QString &clientId, const QString &status, const QString &source, const QString &interest,
        const QString &ownerId, qint64 estimateCents);

private:
    [[nodiscard]] QJsonObject call(const QString &id) const;
    [[nodiscard]] QJsonArray calls(const QString &where, const QVariantList &values) const;
    [[nodiscard]] QJsonArray leadRows(const QString &where, const QVariantList &values) const;

    WorkspaceStore &m_store;
};
