#pragma once

#include "workspace/WorkspacePerson.h"

#include <QList>
#include <QString>
#include <QVariantList>

#include <optional>

class QSqlDatabase;
class QSqlQuery;

// The service's SQLite database in its data folder. Every secret handed out
// (session tokens, CSRF tokens, sign-in codes, connection states) is kept
// only as a hash. A session's CSRF token is derived from its token, so the
// session record can return it without the store keeping it.
class WorkspaceStore {
public:
    struct Session {
        qint64 id = 0;
        QString personId;
        QString csrf;
    };

    // A new session: the token goes to the client once and is never stored.
    struct NewSession {
        QString token;
        Session session;
    };

    enum class Redeemed { Ok, Expired, WrongVerifier };
    struct Redemption {
        Redeemed result = Redeemed::Expired;
        QString personId;
    };

    WorkspaceStore();
    ~WorkspaceStore();
    WorkspaceStore(const WorkspaceStore &) = delete;
    WorkspaceStore &operator=(const WorkspaceStore &) = delete;

    // Opens (creating when needed) workspace.sqlite in `dataDir` with its schema.
    [[nodiscard]] bool open(const QString &dataDir, QString *error);
    // Seeding happens once per database, in one transaction with the mark.
    [[nodiscard]] bool isSeeded() const;
    bool beginSeed();
    bool finishSeed();

    [[nodiscard]] QList<WorkspacePerson> people() const;
    [[nodiscard]] std::optional<WorkspacePerson> person(const QString &id) const;
    // Whether the person may open an app: owners open every one.
    [[nodiscard]] bool opens(const QString &personId, const QString &app) const;
    [[nodiscard]] std::optional<WorkspacePerson> personByEmail(const QString &email) const;
    void addPerson(const WorkspacePerson &person, int position);

    [[nodiscard]] NewSession createSession(const QString &personId);
    // The live session a token belongs to; ended and unknown tokens give nothing.
    [[nodiscard]] std::optional<Session> session(const QString &token) const;
    void endSession(qint64 id);
    // Ends every live session of the person except `keep`; returns how many.
    [[nodiscard]] int endOtherSessions(const QString &personId, qint64 keep);

    [[nodiscard]] QString createSignInCode(const QString &personId, const QString &challenge, int ttlSeconds);
    // Spends the code whatever the outcome, so a guessed verifier gets one try.
    [[nodiscard]] Redemption redeemSignInCode(const QString &code, const QString &verifier);

    enum class Appearance { Background, Accent, TextSize };
    void setAppearance(const QString &personId, Appearance which, const QString &value);

    [[nodiscard]] QString createGoogleState(const QString &personId, const QString &service);
    // Marks the service connected for the state's person; false for an
    // unknown or spent state, or one made for another service.
    [[nodiscard]] bool connectGoogle(const QString &state, const QString &service);
    [[nodiscard]] QStringList googleConnections(const QString &personId) const;

    // The open database, for parts of the service that keep tables of their
    // own in it (chat, the assistant's worker, the books and the terminal).
    [[nodiscard]] QSqlDatabase database() const;

private:
    [[nodiscard]] QSqlQuery prepare(const QString &sql) const;
    bool exec(QSqlQuery &query) const;
    bool createSchema();
    // Makes a one-time secret and stores its hash (the first of `columns`)
    // with `values` for the rest; returns the secret.
    QString issueOnce(const QString &table, const QString &columns, const QVariantList &values);
    // Reads and deletes the row of a one-time secret, after clearing the
    // rows whose `lapsed` column is at or before `lapsedAt`.
    std::optional<QVariantList> takeOnce(const QString &table, const QString &hashColumn, const QString &secret,
        const QString &columns, const QString &lapsed, qint64 lapsedAt);

    QString m_connection;
};
