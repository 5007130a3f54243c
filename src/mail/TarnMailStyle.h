#pragma once

#include <QHashFunctions>
#include <QtGlobal>

// The inline emphasis a run of mail text carries. Deliberately no colour, font
// or size: mail is redrawn in the application's own typography.
class TarnMailStyle {
public:
    enum Flag : quint32 {
        Bold = 1,
        Italic = 2,
        Underline = 4,
        Strikethrough = 8,
        Code = 16,
    };

    constexpr TarnMailStyle() = default;
    constexpr explicit TarnMailStyle(quint32 raw)
        : m_raw(raw)
    {
    }
    // Implicit on purpose: `TarnMailStyle::Bold | TarnMailStyle::Italic` reads as a set.
    constexpr TarnMailStyle(Flag flag) // NOLINT(google-explicit-constructor)
        : m_raw(flag)
    {
    }

    [[nodiscard]] constexpr quint32 rawValue() const { return m_raw; }
    [[nodiscard]] constexpr bool isEmpty() const { return m_raw == 0; }
    [[nodiscard]] constexpr bool contains(TarnMailStyle other) const { return (m_raw & other.m_raw) == other.m_raw; }

    constexpr TarnMailStyle &operator|=(TarnMailStyle other)
    {
        m_raw |= other.m_raw;
        return *this;
    }
    [[nodiscard]] friend constexpr TarnMailStyle operator|(TarnMailStyle a, TarnMailStyle b)
    {
        return TarnMailStyle(a.m_raw | b.m_raw);
    }
    [[nodiscard]] friend constexpr TarnMailStyle operator&(TarnMailStyle a, TarnMailStyle b)
    {
        return TarnMailStyle(a.m_raw & b.m_raw);
    }
    friend constexpr bool operator==(TarnMailStyle a, TarnMailStyle b) = default;

private:
    quint32 m_raw = 0;
};

[[nodiscard]] inline size_t qHash(TarnMailStyle style, size_t seed = 0) noexcept
{
    return qHash(style.rawValue(), seed);
}
