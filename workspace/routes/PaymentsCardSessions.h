#pragma once

#include "workspace/WorkspaceReply.h"

#include <QByteArray>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QString>

// Saving a card through a session: the app opens a page of the workspace
// that stands in for the card processor, and follows the session until the
// page has saved the card. The page keeps only the card type, last four
// digits and expiry, never the number or the security code; a session left
// open expires after 15 minutes. The token in the page's address is kept
// only as its SHA-256.
namespace PaymentsCardSessions {

constexpr qint64 lifeMs = 15 * 60 * 1000;

// `host` is the one the app called, so the page is on the service's own.
[[nodiscard]] WorkspaceReply start(
    const QSqlDatabase &db, const QString &personID, const QString &host, const QJsonObject &body);
// Answers "open", "expired", or "completed" with the card, which joins the
// client's cards the first time and is answered again after that.
[[nodiscard]] WorkspaceReply finish(const QSqlDatabase &db, const QString &personID, const QString &id);

// The page: the form, or what became of the session.
[[nodiscard]] WorkspaceReply page(const QSqlDatabase &db, const QString &token);
// The form posted back (application/x-www-form-urlencoded).
[[nodiscard]] WorkspaceReply submit(const QSqlDatabase &db, const QString &token, const QByteArray &form);

// Moves a session's expiry into the past, for tests of what follows it; the
// session is named by its id or by its page's token.
[[nodiscard]] WorkspaceReply expire(const QSqlDatabase &db, const QString &idOrToken);

} // namespace PaymentsCardSessions
