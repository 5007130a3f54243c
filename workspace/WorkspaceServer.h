#pragma once

#include "workspace/WorkspaceFaults.h"
#include "workspace/WorkspaceOptions.h"
#include "workspace/WorkspaceReplays.h"
#include "workspace/WorkspaceRouter.h"
#include "workspace/WorkspaceStore.h"

#include <QAbstractHttpServer>
#include <QUrl>

class WorkspaceRequest;
class WorkspaceResponder;

// The local workspace service: HTTPS on 127.0.0.1 in front of the store.
// Every request goes through one pipeline: request log and test faults (with
// "--test-faults"), then the route table with its session and CSRF checks.
class WorkspaceServer : public QAbstractHttpServer {
    Q_OBJECT

public:
    explicit WorkspaceServer(WorkspaceOptions options, QObject *parent = nullptr);
    ~WorkspaceServer() override;

    // Opens the data folder (store, seed, certificate) and starts listening.
    [[nodiscard]] bool start(QString *error);

    [[nodiscard]] QUrl url() const { return m_url; }
    [[nodiscard]] QString certificatePath() const { return m_certificatePath; }

    [[nodiscard]] const WorkspaceOptions &options() const { return m_options; }
    [[nodiscard]] WorkspaceStore &store() { return m_store; }
    [[nodiscard]] WorkspaceFaults &faults() { return m_faults; }
    [[nodiscard]] WorkspaceRouter &router() { return m_router; }

    // The person "--auto-sign-in" names, resolved at start; empty when off.
    [[nodiscard]] QString autoSignInPersonId() const { return m_autoSignInPersonId; }

protected:
    bool handleRequest(const QHttpServerRequest &request, QTcpSocket *socket) override;
    void missingHandler(const QHttpServerRequest &request, QTcpSocket *socket) override;

private:
    void dispatch(const WorkspaceRequest &request, WorkspaceResponder &&responder);

    WorkspaceOptions m_options;
    WorkspaceStore m_store;
    WorkspaceFaults m_faults;
    WorkspaceRouter m_router;
    WorkspaceReplays m_replays;
    QUrl m_url;
    QString m_certificatePath;
    QString m_autoSignInPersonId;
};
