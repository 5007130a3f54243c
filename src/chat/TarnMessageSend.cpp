#include "chat/TarnMessageSend.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

QJsonObject TarnMessageSend::toJSON() const
{
    QJsonObject json { { u"body"_s, body }, { u"nonce"_s, nonce } };
    if (!attachments.isEmpty()) {
        QJsonArray files;
        for (const ChatDraftFile &file : attachments)
            files.append(
                QJsonObject { { u"name"_s, file.name }, { u"data"_s, QString::fromLatin1(file.data.toBase64()) } });
        json.insert(u"attachments"_s, files);
    }
    if (parent_id)
        json.insert(u"parent_id"_s, *parent_id);
    return json;
}
