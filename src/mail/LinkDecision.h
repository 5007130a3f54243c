#pragma once

#include <QUrl>

// What happens when the user activates a link of a mail.
class LinkDecision {
public:
    enum class Kind : quint8 {
        Open, // open the URL
        Confirm, // ask first: the link's text named another site
        Block, // refuse
    };

    [[nodiscard]] static LinkDecision open(const QUrl &url) { return { Kind::Open, url }; }
    [[nodiscard]] static LinkDecision confirm(const QUrl &url) { return { Kind::Confirm, url }; }
    [[nodiscard]] static LinkDecision block() { return { Kind::Block, QUrl() }; }

    [[nodiscard]] Kind kind() const { return m_kind; }
    // Open and Confirm: the target; empty for Block.
    [[nodiscard]] const QUrl &url() const { return m_url; }

    friend bool operator==(const LinkDecision &, const LinkDecision &) = default;

private:
    LinkDecision(Kind kind, const QUrl &url)
        : m_kind(kind)
        , m_url(url)
    {
    }

    Kind m_kind;
    QUrl m_url;
};
