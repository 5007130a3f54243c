#include "chat/MessagesStyle.h"

#include <QList>

namespace MessagesStyle {

const std::array<Gradient, 9> &palette()
{
    static constexpr std::array<Gradient, 9> gradients { {
        { { 0.36, 0.62, 0.98 }, { 0.16, 0.42, 0.90 } },
        { { 0.40, 0.80, 0.55 }, { 0.18, 0.62, 0.38 } },
        { { 0.99, 0.66, 0.33 }, { 0.93, 0.46, 0.16 } },
        { { 0.96, 0.48, 0.62 }, { 0.86, 0.26, 0.43 } },
        { { 0.70, 0.53, 0.96 }, { 0.49, 0.31, 0.84 } },
        { { 0.33, 0.80, 0.85 }, { 0.13, 0.58, 0.68 } },
        { { 0.52, 0.55, 0.95 }, { 0.32, 0.33, 0.80 } },
        { { 0.98, 0.45, 0.40 }, { 0.84, 0.25, 0.22 } },
        { { 0.62, 0.66, 0.72 }, { 0.43, 0.47, 0.54 } },
    } };
    return gradients;
}

std::uint64_t hash(const QString &key)
{
    std::uint64_t value = 5381;
    for (const char32_t scalar : key.toUcs4())
        value = value * 33 + scalar;
    return value;
}

const Gradient &gradient(const QString &key)
{
    return palette().at(hash(key) % palette().size());
}

} // namespace MessagesStyle
