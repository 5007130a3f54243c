#pragma once

#include "screens/people/TarnHRRecord.h"
#include "shell/NativeKeyedListModel.h"

#include <QVariantMap>

// The team's HR records by name: the record as shown, and as the owner's
// form edits it.
class NativeHRRecordModel : public NativeKeyedListModel<TarnHRRecord, &TarnHRRecord::id> {
    Q_OBJECT

public:
    explicit NativeHRRecordModel(QObject *parent = nullptr);

    // The person's row by role name, as a delegate sees it; empty when not listed.
    [[nodiscard]] QVariantMap recordOf(const QString &id) const;
};
