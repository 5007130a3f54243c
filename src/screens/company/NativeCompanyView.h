#pragma once

#include "screens/company/NativeConnectionsView.h"
#include "screens/company/NativeSopModel.h"
#include "screens/company/NativeTeamModel.h"
#include "screens/company/NativeThoughtModel.h"
#include "screens/company/TarnCompanyRequests.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QStringList>

class TarnAPI;
class TarnAPIError;

// The company screen's state: the signed-in person's name, the team and the
// apps each may open (owners), the handbook and the thought board; the
// Connections section's state is `connections`, read while it is shown.
//
// A part is read only when the session may open it, as the shell gates the
// sections: the team for owners, the handbook with "Docs", the board with
// "Overview" (owners pass every gate). Changes are sent one at a time; a
// refusal is kept in `errorText` and the part it touched is read again, so
// a decision refused because another owner decided first shows theirs.
// A signed-out answer emits `signedOut`.
class NativeCompanyView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeTeamModel *team READ team CONSTANT)
    Q_PROPERTY(NativeSopModel *sops READ sops CONSTANT)
    Q_PROPERTY(NativeThoughtModel *thoughts READ thoughts CONSTANT)
    Q_PROPERTY(NativeConnectionsView *connections READ connections CONSTANT)
    Q_PROPERTY(QString myName READ myName NOTIFY accountChanged)
    Q_PROPERTY(QString myEmail READ myEmail NOTIFY accountChanged)
    Q_PROPERTY(bool managesTeam READ managesTeam NOTIFY accountChanged)
    Q_PROPERTY(bool decidesPosts READ managesTeam NOTIFY accountChanged)
    Q_PROPERTY(QStringList allApps READ allApps CONSTANT)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)
    Q_PROPERTY(int unreadPosts READ unreadPosts NOTIFY boardChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    explicit NativeCompanyView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeTeamModel *team() const { return m_team; }
    [[nodiscard]] NativeSopModel *sops() const { return m_sops; }
    [[nodiscard]] NativeThoughtModel *thoughts() const { return m_thoughts; }
    [[nodiscard]] NativeConnectionsView *connections() const { return m_connections; }
    [[nodiscard]] QString myName() const;
    [[nodiscard]] QString myEmail() const;
    [[nodiscard]] bool managesTeam() const;
    // The apps an owner hands out, in the shell's order.
    [[nodiscard]] static QStringList allApps();
    [[nodiscard]] QString search() const { return m_search; }
    void setSearch(const QString &search);
    [[nodiscard]] int unreadPosts() const;
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    // Forgets everything shown: the session ended.
    void clear();

    Q_INVOKABLE void renameMe(const QString &name);
    Q_INVOKABLE void addMember(const QString &name, const QString &email, const QString &role, const QStringList &apps);
    // Gives or takes one app; the person's whole list is sent.
    Q_INVOKABLE void setMemberApp(const QString &personId, const QString &app, bool allowed);
    Q_INVOKABLE void markRead(const QString &postId);
    // "adopt", "later" or "decline", against the version shown.
    Q_INVOKABLE void decide(const QString &postId, const QString &decision);

Q_SIGNALS:
    void accountChanged();
    void searchChanged();
    void boardChanged();
    void busyChanged();
    void errorTextChanged();
    // A load or an action has finished (for tests and the screenshot).
    void refreshed();
    void actionFinished();
    void signedOut();

private:
    enum class Part { Team, Sops, Thoughts };
    [[nodiscard]] bool mayRead(Part part) const;
    QCoro::Task<> load(int generation);
    QCoro::Task<> loadTeam();
    // Reads the part again, a failure shown rather than thrown.
    QCoro::Task<> reread(Part part);
    [[nodiscard]] const TarnThoughtPost *post(const QString &id) const;
    void showPost(const TarnThoughtPost &changed);
    QCoro::Task<> loadThoughts();
    QCoro::Task<> renameTask(TarnAccountRename rename);
    QCoro::Task<> addTask(TarnTeamMemberDraft draft);
    QCoro::Task<> accessTask(QString personId, TarnTeamAccess access);
    QCoro::Task<> readTask(QString postId);
    QCoro::Task<> decideTask(QString postId, TarnPostDecision decision);
    // Ends an action: the refusal shown (or cleared), `busy` off.
    void finish(const QString &refusal);
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void setBusy(bool busy);

    TarnAPI &m_api;
    NativeTeamModel *m_team;
    NativeSopModel *m_sops;
    NativeThoughtModel *m_thoughts;
    NativeConnectionsView *m_connections;
    QString m_search;
    int m_generation = 0;
    bool m_busy = false;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
};
