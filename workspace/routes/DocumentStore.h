#pragma once

#include "workspace/WorkspaceReply.h"
#include "workspace/routes/SigningLinks.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

class WorkspaceStore;

// The documents and their signing envelopes over the workspace's SQLite
// tables (`documents_items`, `documents_envelopes`, `documents_signers`, and
// `SigningLinks`' own). Each method answers a route whole, refusals included.
//
// Signers sign in order on the signing page, each through a link of their
// own made when their turn comes. Sending an envelope that already went out
// changes nothing unless the link of the signer whose turn it is has
// expired, when it makes them a new one; so a repeated send never sends twice.
class DocumentStore {
public:
    static constexpr int recipientLimit = 10;

    explicit DocumentStore(WorkspaceStore &store);

    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasDocuments() const;

    [[nodiscard]] WorkspaceReply list(const QString &kind) const;
    // The document drawn as a PDF of its pages.
    [[nodiscard]] WorkspaceReply pdf(const QString &id) const;
    // `host` is the service's host as the client asked it, for signing links.
    [[nodiscard]] WorkspaceReply envelope(const QString &id, const QString &host) const;
    [[nodiscard]] WorkspaceReply createEnvelope(const QString &me, const QJsonObject &body, const QString &host);
    [[nodiscard]] WorkspaceReply send(const QString &id, const QString &host);

    // What the signing page shows of a document: its lines as its PDF has them.
    struct Text {
        QString title;
        QStringList lines;
        int pages = 1;
    };
    [[nodiscard]] std::optional<Text> documentText(const QString &documentId) const;
    // The envelope as its record answers it; empty when there is none.
    [[nodiscard]] QJsonObject envelopeObject(const QString &id, const QString &host = {}) const;
    // The signer whose turn it is (from 1); none for a draft or a finished envelope.
    [[nodiscard]] std::optional<int> turnOf(const QString &envelopeId) const;
    [[nodiscard]] SigningLinks &links() { return m_links; }
    // Keeps an answer given through an open link and makes the next signer's
    // link; false when the link is spent or not the one whose turn it is.
    [[nodiscard]] bool answer(
        const QString &token, const SigningLinks::Found &link, const SigningLinks::Answer &answer);
    // Envelopes signed by the clock before there were links keep the
    // signatures they had; every sent envelope's signer whose turn it is gets
    // a link when they have none.
    void prepareSigning();

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
    // `sentAtMs` 0 leaves the envelope a draft; `answers` are the first
    // signers', in order.
    void addEnvelope(const QString &documentId, const QString &createdBy, const QString &message,
        const QList<Recipient> &recipients, qint64 sentAtMs, const QList<SigningLinks::Answer> &answers);

private:
    [[nodiscard]] QString insertEnvelope(const QString &documentId, const QString &createdBy, const QString &message,
        const QList<Recipient> &recipients);

    WorkspaceStore &m_store;
    SigningLinks m_links;
};
