#pragma once

#include "screens/schedule/TarnBooking.h"
#include "shell/NativeKeyedListModel.h"

// The open booking link's bookings, soonest first.
class NativeBookingModel : public NativeKeyedListModel<TarnBooking, &TarnBooking::id> {
    Q_OBJECT

public:
    explicit NativeBookingModel(QObject *parent = nullptr);
};
