#pragma once

#include "mail/MailMessageRow.h"
#include "shell/NativeKeyedListModel.h"

// The messages of the open thread, oldest first.
class NativeMailMessageModel : public NativeKeyedListModel<MailMessageRow> {
    Q_OBJECT

public:
    explicit NativeMailMessageModel(QObject *parent = nullptr);

    [[nodiscard]] const MailMessageRow *row(const QString &id) const;
    // Changes one row in place; nothing when it is not there.
    void update(const QString &id, const std::function<void(MailMessageRow &)> &change);
};
