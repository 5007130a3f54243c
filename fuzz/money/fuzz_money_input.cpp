// libFuzzer target: typed amounts. Every accepted amount must be in range and
// survive the trip through text() and back.
#include "money/TarnMoneyInput.h"

#include <QString>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const bool allowZero = (data[0] & 1) != 0;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    const std::optional<qint64> cents = TarnMoneyInput::cents(text, allowZero);
    if (!cents)
        return 0;
    if (*cents < 0 || *cents > 999'999'999'999 || (*cents == 0 && !allowZero))
        std::abort();
    if (TarnMoneyInput::cents(TarnMoneyInput::text(*cents), true) != cents)
        std::abort();
    return 0;
}
