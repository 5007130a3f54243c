#pragma once

#include "mail/MailThreadRow.h"
#include "shell/NativeKeyedListModel.h"

#include <QStringList>

// The threads of the shown view or search, page after page, section by section.
class NativeMailThreadModel : public NativeKeyedListModel<MailThreadRow> {
    Q_OBJECT

public:
    explicit NativeMailThreadModel(QObject *parent = nullptr);

    [[nodiscard]] QStringList ids() const;
    [[nodiscard]] const TarnMailCard *card(const QString &id) const;
};
