#pragma once

#include <QLatin1StringView>
#include <QString>

#include <optional>

// An endpoint path, built one way everywhere: a fixed part written in the
// code, then ids as escaped segments and filters as escaped query values. An
// id holding "/", "?" or "&" can never reach another endpoint or smuggle a
// parameter.
//
//   TarnPath(u"/api/rooms"_s).id(roomID).segment("messages"_L1).query("before"_L1, cursor)
//     -> "/api/rooms/r%2F1/messages?before=12"
class TarnPath {
public:
    // A path of the code's own: "/api/session", or "api/mobile/exchange"
    // (below the service's base path).
    explicit TarnPath(QString fixed)
        : m_text(std::move(fixed))
    {
    }

    // "/" and a literal segment of the code's own.
    [[nodiscard]] TarnPath segment(QLatin1StringView literal) const;
    // "/" and an escaped value.
    [[nodiscard]] TarnPath id(const QString &value) const;
    // "?key=value", or "&key=value" after the first; the value escaped.
    [[nodiscard]] TarnPath query(QLatin1StringView key, const QString &value) const;
    // The same, left out when there is no value.
    [[nodiscard]] TarnPath query(QLatin1StringView key, const std::optional<QString> &value) const;

    [[nodiscard]] const QString &toString() const { return m_text; }

    // Percent-encodes everything outside the URL query-allowed characters, and
    // always the six characters "&=+#?/".
    [[nodiscard]] static QString escape(const QString &value);

private:
    QString m_text;
};
