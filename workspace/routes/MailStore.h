#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

class QSqlQuery;

// The mailboxes of the workspace's people, in tables of their own beside the
// rest (mail_*): threads with their folder, star, pin, snooze and labels,
// messages with attachments (bytes in the database), the outbox of queued
// sends, the assistant's reply drafts and the image proxy's signing secret.
// Answers are the mail service's JSON records.
class MailStore {
public:
    struct Refusal {
        int status;
        QString message;
    };
    template <typename T> using Result = std::variant<T, Refusal>;

    struct Person {
        QString name;
        QString email;
    };
    struct Attachment {
        QString name;
        QString mime;
        QByteArray data;
        QString contentId; // empty unless the HTML shows it inline
    };
    struct NewMessage {
        Person from;
        QList<Person> to;
        QList<Person> cc;
        qint64 dateMs = 0;
        QString text;
        std::optional<QString> html {};
        bool unread = false;
        QList<Attachment> attachments {};
    };
    struct NewThread {
        QString owner; // person id
        QString subject;
        QString category;
        QString folder; // "inbox", "sent", "done" or "trash"
        bool starred = false;
        bool pinned = false;
        std::optional<qint64> snoozedUntil {};
        QStringList labels {}; // label ids
    };
    struct Draft {
        QString threadId;
        QString messageId;
        Person from;
        QString subject;
        QString preview;
        QString draft;
        qint64 createdMs = 0;
    };

    explicit MailStore(QString connection);

    [[nodiscard]] bool createSchema();
    [[nodiscard]] bool hasMailboxes() const;

    // Planting and connecting.
    bool addMailbox(const QString &person, const QString &email, bool connected);
    [[nodiscard]] QString addThread(const NewThread &thread, const QString &conversation = {});
    [[nodiscard]] QString addMessage(const QString &thread, const NewMessage &message, bool outgoing);
    bool addLabel(const QString &person, const QString &id, const QString &name);
    bool addDraft(const QString &person, const Draft &draft);
    // A mailbox connected through Google; an existing one is marked connected.
    bool connect(const QString &person, const QString &email);

    [[nodiscard]] QJsonObject status(const QString &me) const;
    [[nodiscard]] bool isConnected(const QString &me) const;

    [[nodiscard]] Result<QJsonObject> view(
        const QString &me, const QString &view, const std::optional<QString> &cursor);
    [[nodiscard]] QJsonObject search(const QString &me, const QString &text) const;
    // Opening a thread reads it.
    [[nodiscard]] Result<QJsonObject> thread(const QString &me, const QString &id);
    [[nodiscard]] Result<QJsonObject> attachment(
        const QString &me, const QString &thread, const QString &message, const QString &attachment) const;

    [[nodiscard]] Result<bool> modify(const QString &me, const QString &thread, const QString &action);
    [[nodiscard]] Result<bool> pin(const QString &me, const QString &thread, bool pinned);
    [[nodiscard]] Result<bool> snooze(const QString &me, const QString &thread, qint64 untilMs);
    [[nodiscard]] Result<bool> label(const QString &me, const QString &thread, const QString &label, bool applied);
    [[nodiscard]] QJsonObject labels(const QString &me) const;
    [[nodiscard]] QJsonObject accounts(const QString &me) const;

    // Queues the send described by mail.send's params, answered with
    // {"queued","sendId","sendsAtMs"}; a key sent before answers that send.
    [[nodiscard]] Result<QJsonObject> queueSend(const QString &me, const QJsonObject &params, qint64 delayMs);
    [[nodiscard]] Result<QJsonObject> cancelSend(const QString &me, const QString &sendId);
    // Delivers every queued send whose time has come; the soonest still
    // waiting, if any.
    std::optional<qint64> deliverDue();
    // Makes one queued send due at once, as if its time had come (tests).
    bool makeDue(const QString &sendId);

    [[nodiscard]] QJsonObject drafts(const QString &me) const;
    [[nodiscard]] Result<bool> actOnDraft(
        const QString &me, const QString &id, const QString &action, const QString &instruction);

    // The image proxy's secret, made once per workspace.
    [[nodiscard]] QByteArray imageSecret();

    static constexpr int pageSize = 25;
    static constexpr int maxFiles = 20;
    static constexpr qint64 maxAttachmentBytes = 18 * 1024 * 1024;

private:
    [[nodiscard]] QSqlQuery prepare(const QString &sql) const;
    [[nodiscard]] std::optional<QString> mailboxEmail(const QString &person) const;
    [[nodiscard]] bool owns(const QString &me, const QString &thread) const;
    [[nodiscard]] QJsonObject card(const QString &thread) const;
    [[nodiscard]] QJsonArray cards(QSqlQuery &query) const;
    bool deliver(const QString &sendId);
    void touch(const QString &thread);

    QString m_connection;
};
