#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

struct TarnMailSend;

// The body of every call to the mail service's one RPC endpoint: a method
// name and its params. Each method's params are made by its function here,
// so their keys are written once.
struct TarnMailRPC {
    QString method;
    QJsonObject params;

    [[nodiscard]] QJsonObject toJSON() const;

    // A view ("inbox", "starred", "sent", "snoozed", "done", "trash"), from
    // its first page or from a cursor the previous page gave.
    [[nodiscard]] static TarnMailRPC inbox(const QString &view, const std::optional<QString> &cursor);
    [[nodiscard]] static TarnMailRPC search(const QString &query);
    [[nodiscard]] static TarnMailRPC thread(const QString &id);
    [[nodiscard]] static TarnMailRPC attachment(
        const QString &threadId, const QString &messageId, const QString &attachmentId);
    [[nodiscard]] static TarnMailRPC send(const TarnMailSend &mail);
    [[nodiscard]] static TarnMailRPC cancelSend(const QString &sendId);
    [[nodiscard]] static TarnMailRPC labels();
    [[nodiscard]] static TarnMailRPC accounts();
    [[nodiscard]] static TarnMailRPC drafts();
    // Skips the draft, or has it written again following the instruction.
    [[nodiscard]] static TarnMailRPC actOnDraft(const QString &id, bool skip, const QString &instruction);
    [[nodiscard]] static TarnMailRPC signImages(const QStringList &urls);
};
