#pragma once

#include "inbox/TarnInboxEntry.h"
#include "shell/NativeKeyedListModel.h"

#include <QHash>

// The open thread's entries, oldest first: direction, author, delivery
// status, the names of the people mentioned, attachments and whether the
// entry is an unsent draft the person may discard.
class NativeInboxEntryModel : public NativeKeyedListModel<TarnInboxEntry, &TarnInboxEntry::id> {
    Q_OBJECT

public:
    explicit NativeInboxEntryModel(QObject *parent = nullptr);

    // Names for the mentioned ids, given before the entries that use them.
    void setNames(const QHash<QString, QString> &names) { m_names = names; }

private:
    [[nodiscard]] QStringList mentionNames(const TarnInboxEntry &entry) const;

    QHash<QString, QString> m_names;
};
