#pragma once

#include "workspace/WorkspaceReply.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QVariantList>

class WorkspaceStore;

// The client portals over the workspace's `portals_*` tables. A portal
// belongs to a customer (a `clients` row on the "customers" board); one that
// was never set up reads as status "setup" at version 0 and gets its row with
// its first change. Each method answers a route whole, refusals included.
//
// Keys and sign-in links are secrets: they are in the answer that issues
// them and nowhere else; the tables hold their SHA-256 and a key's last
// characters. Issuing a key replaces the one before it, and a revoked or
// replaced key is refused from that moment.
class PortalStore {
public:
    // How many of a key's last characters are shown after it was issued.
    static constexpr int tailLength = 4;
    static constexpr qint64 linkLifetimeMs = 24 * 3600 * 1000LL;
    // Where the portals themselves are served, outside this workspace.
    static constexpr QLatin1StringView portalOrigin { "https://portal.halvard.example" };

    enum class Key { Lead, Pilo };

    explicit PortalStore(WorkspaceStore &store);

    [[nodiscard]] bool mayUse(const QString &me) const;
    [[nodiscard]] bool hasPortals() const;

    [[nodiscard]] WorkspaceReply dashboard() const;
    [[nodiscard]] WorkspaceReply acknowledge(const QString &me, const QString &client, const QString &alert);
    [[nodiscard]] WorkspaceReply detail(const QString &client) const;
    [[nodiscard]] WorkspaceReply update(const QString &me, const QString &client, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply profile(const QString &client) const;
    [[nodiscard]] WorkspaceReply performance(const QString &client) const;
    [[nodiscard]] WorkspaceReply syncPerformance(const QString &client);
    [[nodiscard]] WorkspaceReply refresh(const QString &client);

    [[nodiscard]] WorkspaceReply invite(const QString &client, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply removePerson(const QString &client, const QString &person);
    [[nodiscard]] WorkspaceReply personLink(const QString &client, const QString &person);

    [[nodiscard]] WorkspaceReply issueKey(const QString &client, Key key);
    [[nodiscard]] WorkspaceReply revokePiloKey(const QString &client);

    [[nodiscard]] WorkspaceReply createReport(const QString &client, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply report(const QString &client, const QString &id) const;
    [[nodiscard]] WorkspaceReply setPublished(const QString &client, const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply deleteReport(const QString &client, const QString &id);
    [[nodiscard]] WorkspaceReply deleteWork(const QString &client, const QString &id);

    // What the keys open, for the client's own site and tools: a lead key
    // sends leads in, a Pilo key reads the published reports.
    [[nodiscard]] WorkspaceReply intakeLead(const QString &key, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply publishedReports(const QString &key) const;

    // For the demo.
    void plantAccount(const QString &client, const QString &status, const QString &welcome);
    void plantPerson(
        const QString &client, const QString &name, const QString &email, qint64 invitedAtMs, qint64 lastSeenAtMs);
    void plantAlert(const QString &client, const QString &kind, const QString &text, qint64 atMs);
    void plantReport(const QString &client, const QString &title, const QString &month, bool published);
    void plantWork(const QString &client, const QString &title, const QString &status, qint64 atMs);
    void plantMonth(
        const QString &client, const QString &month, qint64 visits, qint64 leads, qint64 calls, qint64 revenue);

private:
    [[nodiscard]] bool isClient(const QString &client) const;
    [[nodiscard]] QJsonObject account(const QString &client) const;
    [[nodiscard]] QJsonArray accounts(const QString &where, const QVariantList &values) const;
    [[nodiscard]] QJsonArray reports(const QString &where, const QVariantList &values) const;
    [[nodiscard]] QJsonArray months(const QString &client) const;
    [[nodiscard]] QString clientOfKey(const QString &key, Key kind) const;
    void ensureAccount(const QString &client);

    WorkspaceStore &m_store;
};
