#pragma once

#include "mail/MailDraftFile.h"
#include "mail/TarnMailSend.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QUrl>
#include <QVariantList>

#include <functional>
#include <optional>

class TarnAPI;

// The mail composer: a new message, a reply or a forward, its send-as
// account and files, and sending with a ten-second undo. The draft keeps one
// idempotencyKey until it has really gone out, so a retried or re-sent draft
// is queued once. A failed send, a refused file or an undone send keeps
// everything that was written.
class NativeMailComposer : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)
    Q_PROPERTY(QString to READ to WRITE setTo NOTIFY draftChanged)
    Q_PROPERTY(QString cc READ cc WRITE setCc NOTIFY draftChanged)
    Q_PROPERTY(QString bcc READ bcc WRITE setBcc NOTIFY draftChanged)
    Q_PROPERTY(QString subject READ subject WRITE setSubject NOTIFY draftChanged)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY draftChanged)
    Q_PROPERTY(QString from READ from WRITE setFrom NOTIFY draftChanged)
    Q_PROPERTY(QStringList accounts READ accounts NOTIFY accountsChanged)
    Q_PROPERTY(QVariantList files READ files NOTIFY draftChanged)
    Q_PROPERTY(bool sending READ sending NOTIFY sendingChanged)
    Q_PROPERTY(bool undoAvailable READ undoAvailable NOTIFY undoChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY statusChanged)
    Q_PROPERTY(QString sendHint READ sendHint CONSTANT)

public:
    static constexpr QLatin1StringView undoEndedText { "The undo period ended. Check Sent to confirm delivery." };
    static constexpr QLatin1StringView noRecipientText { "Add a recipient." };

    // `clock` gives the time in milliseconds since the epoch; the system's when empty.
    explicit NativeMailComposer(TarnAPI &api, std::function<qint64()> clock = {}, QObject *parent = nullptr);

    [[nodiscard]] bool isOpen() const { return m_open; }
    [[nodiscard]] QString to() const { return m_to; }
    void setTo(const QString &to);
    [[nodiscard]] QString cc() const { return m_cc; }
    void setCc(const QString &cc);
    [[nodiscard]] QString bcc() const { return m_bcc; }
    void setBcc(const QString &bcc);
    [[nodiscard]] QString subject() const { return m_draft.subject; }
    void setSubject(const QString &subject);
    [[nodiscard]] QString text() const { return m_draft.text; }
    void setText(const QString &text);
    [[nodiscard]] QString from() const { return m_draft.from.value_or(QString()); }
    void setFrom(const QString &from);
    [[nodiscard]] QStringList accounts() const { return m_accounts; }
    void setAccounts(const QStringList &accounts);
    [[nodiscard]] QVariantList files() const;
    [[nodiscard]] bool sending() const { return m_sending; }
    [[nodiscard]] bool undoAvailable() const { return m_queued.has_value(); }
    [[nodiscard]] QString statusText() const { return m_status; }
    [[nodiscard]] QString errorText() const { return m_error; }
    [[nodiscard]] QString sendHint() const;
    [[nodiscard]] QString idempotencyKey() const { return m_draft.idempotencyKey; }
    // The send that can still be undone; empty when none.
    [[nodiscard]] QString queuedSendId() const { return m_queued ? m_queued->sendId : QString(); }

    // Opens on a prefilled draft (a reply or forward) with a new key; a
    // send still waiting is left to go out, without its Undo.
    void start(const TarnMailSend &prefill);
    Q_INVOKABLE void compose();
    Q_INVOKABLE void discard();
    // False, with errorText, when the file would pass the limits.
    bool attach(const MailDraftFile &file);
    Q_INVOKABLE bool attachPath(const QString &path);
    // Local files in order, up to the first one refused.
    Q_INVOKABLE bool attachFiles(const QList<QUrl> &files);
    Q_INVOKABLE void removeFile(const QString &id);
    Q_INVOKABLE void send();
    Q_INVOKABLE void undo();
    // Forgets the draft and any pending undo (the session ended).
    void clear();

Q_SIGNALS:
    void openChanged();
    void draftChanged();
    void accountsChanged();
    void sendingChanged();
    void undoChanged();
    void statusChanged();
    // A send, an undo or a refusal has finished (tests and the screen).
    void finished();
    // The undo period is over and the message has gone out.
    void sent();

private:
    struct Queued {
        QString sendId;
        qint64 sendsAtMs = 0;
    };

    QCoro::Task<> sendTask(TarnMailSend mail);
    QCoro::Task<> undoTask(QString sendId);
    void setOpen(bool open);
    void setSending(bool sending);
    void setQueued(std::optional<Queued> queued);
    void setStatus(const QString &status, const QString &error);
    void undoPeriodEnded();
    [[nodiscard]] qint64 now() const;

    TarnAPI &m_api;
    std::function<qint64()> m_clock;
    TarnMailSend m_draft;
    QString m_to;
    QString m_cc;
    QString m_bcc;
    QStringList m_accounts;
    bool m_open = false;
    bool m_sending = false;
    std::optional<Queued> m_queued;
    QString m_status;
    QString m_error;
    QTimer m_undoTimer;
};
