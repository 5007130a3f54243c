#pragma once

#include <QString>
#include <QStringView>

#include <optional>

// Amounts typed by a person (refunds, offline payments, statement balances)
// to cents and back, exactly: no floating point on the way.
namespace TarnMoneyInput {

// The cents of a typed amount, or none when the text is not an amount: at
// most ten whole digits, at most two decimals, no sign. Zero counts only
// with allowZero.
//
// Before matching, the characters people type around a number are dropped:
// a "$", white space of any kind (also the no-break and thin spaces pasted
// from documents), and a comma that groups thousands, that is one followed by
// exactly three digits. Any other comma stays and refuses the text, so that a
// decimal comma such as "12,50" is refused instead of becoming 1,250 dollars.
[[nodiscard]] std::optional<qint64> cents(QStringView text, bool allowZero);

// "-" when negative, whole dollars without grouping, ".", two digits of cents:
// 12345 gives "123.45", -5 gives "-0.05". The form fields show this, and
// cents() reads it back unchanged (for amounts of up to ten whole digits).
[[nodiscard]] QString text(qint64 cents);
// The amount as the screens show it, grouped in thousands: "$1,250.00",
// "-$0.05". Every amount shown from cents goes through here.
[[nodiscard]] QString dollars(qint64 cents);

} // namespace TarnMoneyInput
