#pragma once

#include <QString>

#include <array>
#include <cstdint>

// The colours people's avatars are drawn in: one of nine two-colour
// gradients, chosen by a stable hash of a key (a user id or a name), so the
// same person has the same colour on every machine.
namespace MessagesStyle {

// An sRGB colour, components from 0 to 1, fully opaque.
struct Colour {
    double r;
    double g;
    double b;

    friend bool operator==(const Colour &, const Colour &) = default;
};

// Drawn from `top` down to `bottom`.
struct Gradient {
    Colour top;
    Colour bottom;

    friend bool operator==(const Gradient &, const Gradient &) = default;
};

[[nodiscard]] const std::array<Gradient, 9> &palette();

// djb2 over the key's Unicode scalar values, in wrapping 64-bit arithmetic.
[[nodiscard]] std::uint64_t hash(const QString &key);

[[nodiscard]] const Gradient &gradient(const QString &key);

} // namespace MessagesStyle
