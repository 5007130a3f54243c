#pragma once

#include <QByteArray>
#include <QString>

// A file staged in the composer, already within the upload limit. The id
// tells two files of the same name apart.
struct ChatDraftFile {
    QString id;
    QString name;
    QByteArray data;

    friend bool operator==(const ChatDraftFile &, const ChatDraftFile &) = default;
};
