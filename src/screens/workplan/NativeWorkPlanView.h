#pragma once

#include "screens/workplan/NativeCoachNoteModel.h"
#include "screens/workplan/NativeWorkEntryModel.h"
#include "screens/workplan/NativeWorkPersonModel.h"
#include "screens/workplan/TarnWorkPlan.h"
#include "screens/workplan/TarnWorkPlanRequests.h"

#include <QCoroTask>
#include <QDate>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantList>

#include <functional>

class TarnAPI;
class TarnAPIError;

// The work plan's state: one week of the team's planned work, the people
// with how far each is, the entries of everyone or of the chosen person by
// day, and the coaching notes on that person's week.
//
// The week is read when the screen appears and every minute while it is
// shown. A change shows at once where it can (a completion, an admin task's
// edit), then the week is read again so the service's final state shows;
// a refusal stays in `errorText`. A read that comes back while a change is
// under way is dropped: the read after the change supersedes it. A
// signed-out answer emits `signedOut`.
class NativeWorkPlanView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeWorkEntryModel *entries READ entries CONSTANT)
    Q_PROPERTY(NativeWorkPersonModel *people READ people CONSTANT)
    Q_PROPERTY(NativeCoachNoteModel *coachNotes READ coachNotes CONSTANT)
    Q_PROPERTY(QString week READ week NOTIFY weekChanged)
    Q_PROPERTY(QString weekLabel READ weekLabel NOTIFY weekChanged)
    Q_PROPERTY(bool thisWeek READ thisWeek NOTIFY weekChanged)
    // {"day": "YYYY-MM-DD", "label": "Monday 23 Nov"} for each day of the week.
    Q_PROPERTY(QVariantList days READ days NOTIFY weekChanged)
    Q_PROPERTY(QString person READ person WRITE setPerson NOTIFY personChanged)
    Q_PROPERTY(QString personName READ personName NOTIFY personChanged)
    Q_PROPERTY(QString myId READ myId NOTIFY planChanged)
    Q_PROPERTY(bool mayCoach READ mayCoach NOTIFY planChanged)
    Q_PROPERTY(int planned READ planned NOTIFY planChanged)
    Q_PROPERTY(int done READ done NOTIFY planChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    explicit NativeWorkPlanView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeWorkEntryModel *entries() const { return m_entries; }
    [[nodiscard]] NativeWorkPersonModel *people() const { return m_people; }
    [[nodiscard]] NativeCoachNoteModel *coachNotes() const { return m_notes; }
    [[nodiscard]] QString week() const { return m_week.toString(Qt::ISODate); }
    [[nodiscard]] QString weekLabel() const;
    [[nodiscard]] bool thisWeek() const;
    [[nodiscard]] QVariantList days() const;
    [[nodiscard]] QString person() const { return m_person; }
    void setPerson(const QString &person);
    [[nodiscard]] QString personName() const;
    [[nodiscard]] QString myId() const;
    [[nodiscard]] bool mayCoach() const { return m_plan.may_coach; }
    [[nodiscard]] int planned() const;
    [[nodiscard]] int done() const;
    [[nodiscard]] bool busy() const { return m_pending > 0; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    // Forgets everything shown: the session ended.
    void clear();

    Q_INVOKABLE void previousWeek();
    Q_INVOKABLE void nextWeek();
    Q_INVOKABLE void showThisWeek();

    Q_INVOKABLE void complete(const QString &entryId, bool done);
    // For the chosen person, or oneself when everyone is shown.
    Q_INVOKABLE void addAdminTask(const QString &title, const QString &day, const QString &notes);
    Q_INVOKABLE void editAdminTask(
        const QString &entryId, const QString &title, const QString &day, const QString &notes);
    // `time` as typed ("9:30"); empty for none.
    Q_INVOKABLE void addReminder(const QString &title, const QString &day, const QString &time);
    // On the chosen person's week.
    Q_INVOKABLE void addCoachNote(const QString &body);

Q_SIGNALS:
    void weekChanged();
    void personChanged();
    void planChanged();
    void busyChanged();
    void errorTextChanged();
    // A read or a change has finished (for tests and the screenshot).
    void refreshed();
    void actionFinished();
    void signedOut();

private:
    void showWeek(const QDate &monday);
    QCoro::Task<> load(int generation);
    void show(const TarnWorkPlan &plan);
    [[nodiscard]] const TarnWorkEntry *entry(const QString &id) const;
    void changeEntry(const QString &id, const std::function<void(TarnWorkEntry &)> &edit);
    // Ends a change: reads the week again, then shows the refusal or
    // clears it.
    QCoro::Task<> settle(QString refusal);
    // The text a failed change leaves; a signed-out answer leaves none.
    [[nodiscard]] QString refusalOf(const TarnAPIError &error);
    // Awaits one change already sent, shows the entry it answers (when it
    // answers one), then settles it.
    template <typename Answer> QCoro::Task<> sent(QCoro::Task<Answer> change);
    void setError(const QString &text, bool fromRead = false);
    void setPending(int pending);

    TarnAPI &m_api;
    NativeWorkEntryModel *m_entries;
    NativeWorkPersonModel *m_people;
    NativeCoachNoteModel *m_notes;
    QTimer m_refresh;
    QDate m_week;
    QString m_person;
    TarnWorkPlan m_plan;
    int m_generation = 0;
    int m_pending = 0;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    bool m_errorFromRead = false;
};
