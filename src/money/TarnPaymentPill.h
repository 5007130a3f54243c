#pragma once

#include <QString>

// What the payments list shows beside a payment. The tone picks the colour:
// 0 settled money (green), 1 waiting on the processor (amber), 2 waiting on a
// person's decision (blue), 3 closed or unusual (grey).
struct TarnPaymentPill {
    int tone = 0;
    QString text;

    friend bool operator==(const TarnPaymentPill &, const TarnPaymentPill &) = default;
};
