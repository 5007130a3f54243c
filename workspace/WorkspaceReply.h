#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

class QJsonArray;
class QJsonObject;

// One complete answer, built by a route and written by WorkspaceResponder.
struct WorkspaceReply {
    int status = 200;
    QByteArray contentType;
    QByteArray body;
    QList<QPair<QByteArray, QByteArray>> headers;

    [[nodiscard]] static WorkspaceReply json(const QJsonObject &object, int status = 200);
    [[nodiscard]] static WorkspaceReply json(const QJsonArray &array, int status = 200);
    // The service's error envelope: {"error": message}.
    [[nodiscard]] static WorkspaceReply error(int status, const QString &message);
    // {"ok": true}, the answer of endpoints that return nothing else.
    [[nodiscard]] static WorkspaceReply ok();
    [[nodiscard]] static WorkspaceReply html(const QString &page, int status = 200);
    // A small browser page: `content` is HTML already escaped by the caller.
    [[nodiscard]] static WorkspaceReply page(const QString &title, const QString &content, int status = 200);
    [[nodiscard]] static WorkspaceReply redirect(const QString &location);

    // `base` followed by a query of the items, each value percent-encoded in
    // full, for links and redirect targets.
    [[nodiscard]] static QString withQuery(const QString &base, const QList<QPair<QString, QString>> &items);

    // The shared answers of the request pipeline.
    [[nodiscard]] static WorkspaceReply notFound();
    [[nodiscard]] static WorkspaceReply signInRequired();
    [[nodiscard]] static WorkspaceReply csrfRefused();
};
