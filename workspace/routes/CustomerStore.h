#pragma once

#include "workspace/WorkspaceReply.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>

class WorkspaceStore;

// The customer register over the shared `clients` rows and the `crm_*`
// tables keyed by a client's id. Each method answers a route whole
// (refusals included), so the routes only read requests.
//
// A client with no `crm_profiles` row yet (one made from an inbox thread,
// say) reads as version 1 in the stage its board implies; its row is made
// on the first change. Only the details (name, email, phone, company,
// address) are versioned: a stage move or a follow-up never makes someone's
// open edit stale.
class CustomerStore {
public:
    // One entry of a customer's timeline, from whichever table it came.
    struct Event {
        qint64 atMs = 0;
        QString id;
        QString kind;
        QString title;
        QString body;
        QString author;
    };

    // What the demo plants, as it stands.
    struct DemoTask {
        QString title;
        QString dueOn;
        bool done = false;
        qint64 createdMs = 0;
    };

    static constexpr qint64 fileLimitBytes = 10 * 1024 * 1024;
    static constexpr int timelinePageDefault = 50;
    static constexpr int timelinePageMax = 500;

    explicit CustomerStore(WorkspaceStore &store);

    bool createSchema();
    [[nodiscard]] bool hasProfiles() const;

    [[nodiscard]] WorkspaceReply search(const QString &text) const;
    [[nodiscard]] WorkspaceReply list(const QString &stage) const;
    [[nodiscard]] WorkspaceReply profile(const QString &id) const;
    [[nodiscard]] WorkspaceReply saveDetails(const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply timeline(const QString &id, const QString &before, int limit) const;
    [[nodiscard]] WorkspaceReply changeStage(const QString &me, const QString &id, const QString &stage);
    [[nodiscard]] WorkspaceReply updateTask(const QString &task, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply deleteTask(const QString &task);
    [[nodiscard]] WorkspaceReply addNote(const QString &me, const QString &id, const QString &body);
    [[nodiscard]] WorkspaceReply addContact(const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply deleteContact(const QString &contact);
    [[nodiscard]] WorkspaceReply uploadFile(const QString &me, const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply downloadFile(const QString &id, const QString &file) const;
    [[nodiscard]] WorkspaceReply deleteFile(const QString &id, const QString &file);
    [[nodiscard]] WorkspaceReply addReminder(const QString &me, const QString &id, const QJsonObject &body);
    [[nodiscard]] WorkspaceReply setFollowUp(const QString &id, const QString &on);
    [[nodiscard]] WorkspaceReply archive(const QString &id);
    [[nodiscard]] WorkspaceReply sendDraft(const QString &me, const QString &draft);
    [[nodiscard]] WorkspaceReply discardDraft(const QString &draft);

    // For the demo and tests: rows as they stand, times given.
    void plantClient(const QString &id, const QString &name, const QString &phone, const QString &email, qint64 atMs);
    void plantProfile(const QString &id, const QString &stage, const QString &company, const QString &address,
        const QString &followUpOn);
    void plantNote(const QString &id, const QString &author, const QString &body, qint64 atMs);
    void plantTask(const QString &id, const DemoTask &task);
    void plantStageChange(const QString &id, const QString &from, const QString &to, const QString &by, qint64 atMs);
    void plantContact(const QString &id, const QString &name, const QString &role, const QString &email);
    QString plantFile(const QString &id, const QString &name, const QByteArray &data, const QString &by, qint64 atMs);
    void plantReminder(const QString &id, const QString &person, const QString &text, qint64 atMs);
    void plantDraft(
        const QString &id, const QString &channel, const QString &subject, const QString &body, qint64 atMs);

private:
    [[nodiscard]] bool exists(const QString &id) const;
    [[nodiscard]] QJsonObject profileJSON(const QString &id) const;
    void ensureProfile(const QString &id);
    [[nodiscard]] WorkspaceReply removeRow(QLatin1StringView table, const QString &id, const QString &missing);
    [[nodiscard]] WorkspaceReply settleDraft(const QString &draft, const QString &status, const QString &by);

    // The timeline's sources, one each, so another part's table joins as
    // one more function.
    [[nodiscard]] QList<Event> noteEvents(const QString &id) const;
    [[nodiscard]] QList<Event> taskEvents(const QString &id) const;
    [[nodiscard]] QList<Event> stageEvents(const QString &id) const;
    [[nodiscard]] QList<Event> sentDraftEvents(const QString &id) const;
    [[nodiscard]] QList<Event> inboxEvents(const QString &id) const;
    [[nodiscard]] QList<Event> mailEvents(const QString &id) const;
    [[nodiscard]] QList<Event> callEvents(const QString &id) const;
    [[nodiscard]] QList<Event> supportEvents(const QString &id) const;

    WorkspaceStore &m_store;
};
