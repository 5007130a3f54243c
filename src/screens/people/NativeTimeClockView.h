#pragma once

#include "screens/people/NativePeopleSection.h"
#include "screens/people/NativeTimeClockDayModel.h"
#include "screens/people/NativeTimeEntryModel.h"
#include "screens/people/TarnPeopleRequests.h"
#include "screens/people/TarnTimeClockWeek.h"

#include <QCoroTask>
#include <QDate>
#include <QString>

#include <functional>

class TarnAPI;

// The time clock section's state: one person's week (oneself, or anyone for
// an owner), its days' hours in the local zone and its entries, clocking in
// and out, and an owner's corrections with the reason they need, checked by
// `TimeClockRules` before anything is sent.
//
// The week is read when the section appears and every 30 seconds while it is
// shown, so an open entry's hours keep counting. A refused change reads the
// week again and keeps the refusal in `errorText`.
class NativeTimeClockView : public NativePeopleSection {
    Q_OBJECT
    Q_PROPERTY(NativeTimeClockDayModel *days READ days CONSTANT)
    Q_PROPERTY(NativeTimeEntryModel *entries READ entries CONSTANT)
    Q_PROPERTY(int entryCount READ entryCount NOTIFY weekChanged)
    Q_PROPERTY(QString weekLabel READ weekLabel NOTIFY weekChanged)
    Q_PROPERTY(QString totalText READ totalText NOTIFY weekChanged)
    Q_PROPERTY(QString personName READ personName NOTIFY weekChanged)
    Q_PROPERTY(QString personId READ personId WRITE setPersonId NOTIFY weekChanged)
    Q_PROPERTY(bool clockedIn READ clockedIn NOTIFY weekChanged)
    Q_PROPERTY(bool ownClock READ ownClock NOTIFY weekChanged)
    Q_PROPERTY(bool canCorrect READ canCorrect NOTIFY weekChanged)

public:
    static constexpr int refreshIntervalMs = 30'000;

    explicit NativeTimeClockView(TarnAPI &api, QObject *parent = nullptr);
    ~NativeTimeClockView() override;

    [[nodiscard]] NativeTimeClockDayModel *days() const { return m_days; }
    [[nodiscard]] NativeTimeEntryModel *entries() const { return m_entries; }
    // For the page: a list view's own count can lag behind its rows being removed.
    [[nodiscard]] int entryCount() const { return m_entries->rowCount(); }
    [[nodiscard]] QDate monday() const { return m_monday; }
    [[nodiscard]] QString weekLabel() const;
    [[nodiscard]] QString totalText() const;
    [[nodiscard]] QString personName() const { return m_week.person_name; }
    // Empty: one's own clock.
    [[nodiscard]] QString personId() const { return m_person; }
    void setPersonId(const QString &person);
    [[nodiscard]] bool clockedIn() const { return m_week.clocked_in; }
    [[nodiscard]] bool ownClock() const;
    [[nodiscard]] bool canCorrect() const;

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    // Moves the shown week by whole weeks; 0 returns to this week.
    Q_INVOKABLE void moveWeek(int weeks);
    Q_INVOKABLE void clockInOrOut();
    // Local times typed as "YYYY-MM-DD HH:MM"; an empty clock-out leaves the
    // entry open.
    Q_INVOKABLE void correctEntry(
        const QString &entryId, const QString &clockIn, const QString &clockOut, const QString &reason);
    void clear();

Q_SIGNALS:
    void weekChanged();

private:
    QCoro::Task<> refreshLoop(int generation);
    QCoro::Task<> refreshOnce();
    QCoro::Task<> change(std::function<QCoro::Task<TarnTimeEntry>()> call);
    void show(const TarnTimeClockWeek &week);

    TarnAPI &m_api;
    NativeTimeClockDayModel *m_days;
    NativeTimeEntryModel *m_entries;
    TarnTimeClockWeek m_week;
    QDate m_monday;
    QString m_person;
    qint64 m_totalSeconds = 0;
    int m_generation = 0;
    // Answers for a week or person left behind are dropped.
    int m_shown = 0;
};
