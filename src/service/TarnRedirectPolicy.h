#pragma once

#include <QUrl>

#include <optional>

class Config;
class QNetworkReply;

// Decides which redirects a service request follows: only those to https on
// the service's own host. Any other 3xx is not followed; the answer itself
// reaches the caller, which judges it like any other answer.
class TarnRedirectPolicy {
public:
    explicit TarnRedirectPolicy(const Config &config)
        : m_config(config)
    {
    }

    // The target to follow for this answer, or nothing.
    [[nodiscard]] std::optional<QUrl> follow(const QNetworkReply &reply) const;

    // Redirect chains longer than this are answered as they stand.
    static constexpr int maximumHops = 10;

private:
    const Config &m_config;
};
