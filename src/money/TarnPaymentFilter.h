#pragma once

class TarnPaymentRefundState;
struct TarnPayment;

// The payments list filter.
enum class TarnPaymentFilter { all, paid, pending, refunded };

// Whether a payment belongs under the filter. "Paid" is money the company
// keeps: a paid payment that is not wholly refunded and is not itself a
// refund. "Refunded" gathers the refund side: payments with money sent back,
// the refunds themselves, and anything the service marks "Refunded".
// "Pending" is the processor's pending state only; a refund waiting on a
// decision stays under "Paid", where its pill says so.
[[nodiscard]] bool matches(TarnPaymentFilter filter, const TarnPayment &payment, const TarnPaymentRefundState &refunds);
