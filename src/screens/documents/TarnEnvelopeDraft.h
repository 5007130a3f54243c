#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>

// A recipient as the sender writes it; the position in the draft's list is
// the signing order.
struct TarnEnvelopeRecipient {
    QString name;
    QString email;
};

// Putting a document into a new envelope, not yet sent.
struct TarnEnvelopeDraft {
    QString document_id;
    QString message;
    QList<TarnEnvelopeRecipient> recipients;
    [[nodiscard]] QJsonObject toJSON() const
    {
        QJsonArray list;
        for (const TarnEnvelopeRecipient &r : recipients)
            list.append(QJsonObject { { QStringLiteral("name"), r.name }, { QStringLiteral("email"), r.email } });
        return { { QStringLiteral("document_id"), document_id }, { QStringLiteral("message"), message },
            { QStringLiteral("recipients"), list } };
    }
};
