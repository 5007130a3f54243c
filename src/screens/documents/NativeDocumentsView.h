#pragma once

#include "screens/documents/NativeDocumentModel.h"
#include "screens/documents/NativePdfPreview.h"
#include "screens/documents/NativeSignerModel.h"
#include "screens/documents/TarnDocument.h"
#include "screens/documents/TarnEnvelope.h"
#include "screens/documents/TarnEnvelopeDraft.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

class TarnAPI;
class TarnAPIError;

// The documents screen's state for its "Worksheets", "Agreements",
// "Proposals" and "Envelopes" sections: the section's documents searched in
// place, one envelope open with its signers, and a new envelope being
// written (recipients in signing order, checked before anything is sent).
//
// The documents are read when the screen appears and every 30 seconds while
// it is shown; an open envelope that is out for signature is read every
// second, so a signature or a decline on the signing page shows as it
// happens. The signer whose turn it is has a signing link the sender copies
// or opens in the browser (for someone signing in person). A send is made
// once: a second click while it is on, or on an envelope already sent,
// sends nothing; only when the signer's link expired does a send make them
// a new one. A signed-out answer emits `signedOut`.
class NativeDocumentsView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeDocumentModel *documents READ documents CONSTANT)
    Q_PROPERTY(NativeSignerModel *signers READ signers CONSTANT)
    Q_PROPERTY(NativePdfPreview *preview READ preview CONSTANT)
    Q_PROPERTY(QString section READ section WRITE setSection NOTIFY sectionChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY sectionChanged)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY sectionChanged)
    Q_PROPERTY(QVariantMap openEnvelope READ openEnvelope NOTIFY envelopeChanged)
    Q_PROPERTY(QString openEnvelopeId READ openEnvelopeId NOTIFY envelopeChanged)
    Q_PROPERTY(QString signUrl READ signUrl NOTIFY envelopeChanged)
    Q_PROPERTY(bool canSend READ canSend NOTIFY envelopeChanged)
    Q_PROPERTY(QString draftDocumentId READ draftDocumentId NOTIFY draftChanged)
    Q_PROPERTY(QVariantList draftRecipients READ draftRecipients NOTIFY draftChanged)
    Q_PROPERTY(QString draftMessage READ draftMessage WRITE setDraftMessage NOTIFY draftChanged)
    Q_PROPERTY(QString draftProblem READ draftProblem NOTIFY draftChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)

public:
    static constexpr int refreshIntervalMs = 30'000;
    static constexpr int signingPollMs = 1'000;

    explicit NativeDocumentsView(TarnAPI &api, QObject *parent = nullptr);
    ~NativeDocumentsView() override;

    [[nodiscard]] NativeDocumentModel *documents() const { return m_documents; }
    [[nodiscard]] NativeSignerModel *signers() const { return m_signers; }
    // The open document's PDF, shown over the list.
    [[nodiscard]] NativePdfPreview *preview() const { return m_preview; }
    [[nodiscard]] QString section() const { return m_section; }
    void setSection(const QString &section);
    [[nodiscard]] QString search() const { return m_search; }
    void setSearch(const QString &search);
    [[nodiscard]] QString emptyText() const;
    [[nodiscard]] QVariantMap openEnvelope() const;
    [[nodiscard]] std::optional<TarnEnvelope> envelope() const { return m_envelope; }
    [[nodiscard]] QString openEnvelopeId() const { return m_envelope ? m_envelope->id : QString(); }
    [[nodiscard]] bool canSend() const;
    [[nodiscard]] QString draftDocumentId() const { return m_draft ? m_draft->document_id : QString(); }
    [[nodiscard]] QVariantList draftRecipients() const;
    [[nodiscard]] QString draftMessage() const { return m_draft ? m_draft->message : QString(); }
    void setDraftMessage(const QString &message);
    [[nodiscard]] QString draftProblem() const;
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }
    // What just happened, said for a few seconds ("Signing link copied").
    [[nodiscard]] QString notice() const { return m_notice; }
    // The link of the open envelope's signer whose turn it is; empty when none.
    [[nodiscard]] QString signUrl() const;

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    // Forgets everything shown: the session ended.
    void clear();

    // Opens the document's envelope, or starts a new one when it has none.
    Q_INVOKABLE void openDocument(const QString &documentId);
    Q_INVOKABLE void closeEnvelope();
    // Starts a new envelope for the open one's document once it is
    // completed or declined.
    Q_INVOKABLE void newEnvelope();
    Q_INVOKABLE void addRecipient(const QString &name, const QString &email);
    Q_INVOKABLE void removeRecipient(int index);
    // Moves a recipient one place earlier (-1) or later (+1) in the order.
    Q_INVOKABLE void moveRecipient(int index, int by);
    // Makes the envelope from the draft; it opens, ready to send.
    Q_INVOKABLE void createEnvelope();
    Q_INVOKABLE void send();
    Q_INVOKABLE void copySigningLink();
    // In the desktop's browser, for a signer who signs here in person.
    Q_INVOKABLE void openSigningPage();

Q_SIGNALS:
    void sectionChanged();
    void envelopeChanged();
    void draftChanged();
    void busyChanged();
    void errorTextChanged();
    void noticeChanged();
    // A load or an action has finished (for tests and the screenshot).
    void refreshed();
    void actionFinished();
    void signedOut();

private:
    QCoro::Task<> refreshOnce();
    QCoro::Task<> envelopeTask(QString id, int generation);
    QCoro::Task<> createTask(TarnEnvelopeDraft draft);
    QCoro::Task<> sendTask(QString id);
    QCoro::Task<> finishAction();
    void showDocuments(const QList<TarnDocument> &all);
    void showEnvelope(const std::optional<TarnEnvelope> &envelope);
    void startDraft(QString documentId);
    void applyFilter();
    void setBusy(bool busy);
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void say(const QString &text);

    TarnAPI &m_api;
    NativeDocumentModel *m_documents;
    NativeSignerModel *m_signers;
    NativePdfPreview *m_preview;
    QList<TarnDocument> m_all;
    QString m_section = QStringLiteral("Worksheets");
    QString m_search;
    std::optional<TarnEnvelope> m_envelope;
    std::optional<TarnEnvelopeDraft> m_draft;
    bool m_busy = false;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    QString m_notice;
    QTimer m_noticeTimer;
    // Bumped when the screen goes away and when the session ends (ends the
    // refresh loop); the envelope's own generation ends its polling when
    // another opens or it closes.
    int m_generation = 0;
    int m_envelopeGeneration = 0;
};
