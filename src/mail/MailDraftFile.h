#pragma once

#include <QByteArray>
#include <QString>

// A file attached in the composer. The id (a UUID) tells two files of the
// same name apart.
struct MailDraftFile {
    QString id;
    QString name;
    QByteArray data;

    friend bool operator==(const MailDraftFile &, const MailDraftFile &) = default;
};
