#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

class WorkspaceStore;

// The documents and their signing envelopes over the workspace's SQLite
// tables (`documents_items`, `documents_envelopes`, `documents_signers`).
// Each method answers a route whole, refusals included.
//
// Signing is simulated: once an envelope is sent, its signers sign one after
// another, each `sign_ms` after the one before (`signMs` for a new envelope);
// who has signed follows from the envelope's age when it is read. Sending an
// envelope that already went out changes nothing, so a repeated send never
// sends twice.
class DocumentStore {
public:
    static constexpr qint64 signMs = 2500;
    static constexpr int recipientLimit = 10;

    explicit DocumentStore(WorkspaceStore &store);

    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasDocuments() const;

    [[nodiscard]] WorkspaceReply list(const QString &kind) const;
    // The document drawn as a PDF of its pages.
    [[nodiscard]] WorkspaceReply pdf(const QString &id) const;
    [[nodiscard]] WorkspaceReply envelope(const QString &id) const;
    [[nodiscard]] WorkspaceReply createEnvelope(const QString &me, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply send(const QString &id);

    // For the demo.
    struct Document {
        QString id;
        QString kind;
        QString title;
        QString clientId;
        QString ownerId;
        QString status;
        qint64 updatedAtMs = 0;
        int pages = 1;
    };
    void addDocument(const Document &document);
    struct Recipient {
        QString name;
        QString email;
    };
    // `sentAtMs` 0 leaves the envelope a draft.
    void addEnvelope(const QString &documentId, const QString &createdBy, const QString &message,
        const QList<Recipient> &recipients, qint64 sentAtMs, qint64 signEveryMs);

private:
    [[nodiscard]] QJsonObject envelopeObject(const QString &id) const;
    [[nodiscard]] QString insertEnvelope(const QString &documentId, const QString &createdBy, const QString &message,
        const QList<Recipient> &recipients, qint64 signEveryMs);

    WorkspaceStore &m_store;
};
