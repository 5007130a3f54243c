#pragma once

#include "screens/schedule/TarnBookingLink.h"
#include "shell/NativeKeyedListModel.h"

// The person's booking links, newest first.
class NativeBookingLinkModel : public NativeKeyedListModel<TarnBookingLink, &TarnBookingLink::id> {
    Q_OBJECT

public:
    explicit NativeBookingLinkModel(QObject *parent = nullptr);
};
