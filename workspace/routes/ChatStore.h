#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>
#include <variant>

class QSqlQuery;

// The chat tables of the workspace: rooms and their members (with each
// member's read mark), messages with a per-room sequence number, reactions,
// saves, attachments (their bytes in a folder beside the database) and a
// full-text index of message bodies. Answers are the service's JSON records.
class ChatStore {
public:
    // A refusal with the status and text the service answers with.
    struct Refusal {
        int status;
        QString message;
    };
    template <typename T> using Result = std::variant<T, Refusal>;

    struct File {
        QString name;
        QByteArray data;
    };
    struct NewMessage {
        QString room;
        QString author;
        QString body;
        std::optional<QString> nonce;
        std::optional<QString> parentId;
        QList<File> files;
        // Demo history is written in the past; everything else now.
        std::optional<qint64> createdAtMs;
    };

    ChatStore(QString connection, QString filesDir);

    [[nodiscard]] bool createSchema();
    [[nodiscard]] bool hasRooms() const;

    [[nodiscard]] QJsonArray team() const;
    [[nodiscard]] QJsonArray rooms(const QString &me) const;
    [[nodiscard]] Result<QString> createDirectRoom(const QString &me, const QString &other);
    [[nodiscard]] Result<QString> createChannel(
        const QString &me, const QString &name, bool isPrivate, const QStringList &members);
    [[nodiscard]] Result<QJsonObject> settings(const QString &me, const QString &room) const;
    [[nodiscard]] Result<bool> saveSettings(const QString &me, const QString &room, const QString &name, bool isPrivate,
        bool archived, const QStringList &members);

    [[nodiscard]] Result<QJsonObject> page(
        const QString &me, const QString &room, std::optional<qint64> before, std::optional<QString> parent) const;
    [[nodiscard]] Result<QJsonObject> message(const QString &me, const QString &room, const QString &id) const;
    [[nodiscard]] Result<QJsonObject> send(const NewMessage &message);
    [[nodiscard]] Result<QJsonObject> edit(
        const QString &me, const QString &room, const QString &id, std::optional<QString> body, qint64 version);
    [[nodiscard]] Result<QJsonObject> react(
        const QString &me, const QString &room, const QString &id, const QString &emoji, bool active);
    [[nodiscard]] Result<QJsonObject> save(const QString &me, const QString &room, const QString &id, bool saved);
    [[nodiscard]] Result<bool> markRead(const QString &me, const QString &room, qint64 seq);
    [[nodiscard]] QJsonArray search(const QString &me, const QString &text) const;
    [[nodiscard]] Result<File> file(const QString &me, const QString &room, const QString &id) const;

    // The largest attachment, in bytes.
    static constexpr qint64 maxFileBytes = 5 * 1024 * 1024;
    // Timeline messages per page.
    static constexpr int pageSize = 50;

private:
    [[nodiscard]] QSqlQuery prepare(const QString &sql) const;
    [[nodiscard]] bool canSee(const QString &me, const QString &room) const;
    [[nodiscard]] std::optional<QJsonObject> messageJSON(const QString &me, const QString &id) const;
    [[nodiscard]] QString roomOf(const QString &id) const;
    void addMember(const QString &room, const QString &person);

    QString m_connection;
    QString m_filesDir;
};
