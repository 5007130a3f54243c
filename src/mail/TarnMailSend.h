#pragma once

#include "mail/MailDraftFile.h"

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// The params of mail.send. idempotencyKey is the composer's draft key, kept
// for every retry of one draft, so the service queues it once.
struct TarnMailSend {
    QStringList to {};
    QStringList cc {};
    QStringList bcc {};
    QString subject {};
    QString text {};
    QString idempotencyKey {};
    QList<MailDraftFile> attachments {}; // sent as "name", "dataBase64" and "mimeType"
    std::optional<QString> from {}; // the send-as address; the mailbox's own when absent
    // Replies only.
    std::optional<QString> threadId {};
    std::optional<QString> messageId {};
    std::optional<QString> replyTo {};

    // The composer's limits: at most 20 files of at most 18 MiB together.
    static constexpr qsizetype maxFiles = 20;
    static constexpr qint64 maxTotalBytes = 18 * 1024 * 1024;
    [[nodiscard]] static bool attachmentsFit(const QList<MailDraftFile> &files);

    [[nodiscard]] QJsonObject toJSON() const;
    // The type the file's name suggests; application/octet-stream when none does.
    [[nodiscard]] static QString mimeTypeOf(const QString &fileName);
};
