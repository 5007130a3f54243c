#pragma once

#include "inbox/TarnInboxThreadSummary.h"
#include "shell/NativeKeyedListModel.h"

// The inbox list: one row per thread in the service's order (newest first),
// with who it is from, its channel, assignee, preview (marked when it is an
// unsent draft), time and whether it waits for a reply.
class NativeInboxListModel : public NativeKeyedListModel<TarnInboxThreadSummary, &TarnInboxThreadSummary::id> {
    Q_OBJECT

public:
    explicit NativeInboxListModel(QObject *parent = nullptr);

    // The customer's name, else their number or address.
    [[nodiscard]] static QString titleOf(const TarnInboxThreadSummary &thread);
};
