#include "mail/TarnMailSend.h"

#include <QJsonArray>
#include <QMimeDatabase>

using namespace Qt::StringLiterals;

QString TarnMailSend::mimeTypeOf(const QString &fileName)
{
    // By name alone: the bytes are the sender's and may say anything.
    static const QMimeDatabase database;
    return database.mimeTypeForFile(fileName, QMimeDatabase::MatchExtension).name();
}

bool TarnMailSend::attachmentsFit(const QList<MailDraftFile> &files)
{
    if (files.size() > maxFiles)
        return false;
    qint64 total = 0;
    for (const MailDraftFile &file : files)
        total += file.data.size();
    return total <= maxTotalBytes;
}

QJsonObject TarnMailSend::toJSON() const
{
    QJsonArray files;
    for (const MailDraftFile &file : attachments)
        files.append(QJsonObject { { u"name"_s, file.name },
            { u"dataBase64"_s, QString::fromLatin1(file.data.toBase64()) }, { u"mimeType"_s, mimeTypeOf(file.name) } });
    QJsonObject json { { u"to"_s, QJsonArray::fromStringList(to) }, { u"cc"_s, QJsonArray::fromStringList(cc) },
        { u"bcc"_s, QJsonArray::fromStringList(bcc) }, { u"subject"_s, subject }, { u"text"_s, text },
        { u"idempotencyKey"_s, idempotencyKey }, { u"attachments"_s, files } };
    const auto optional = [&json](const QString &key, const std::optional<QString> &value) {
        if (value)
            json.insert(key, *value);
    };
    optional(u"from"_s, from);
    optional(u"threadId"_s, threadId);
    optional(u"messageId"_s, messageId);
    optional(u"replyTo"_s, replyTo);
    return json;
}
