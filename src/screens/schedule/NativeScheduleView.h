#pragma once

#include "screens/schedule/NativeBookingLinkModel.h"
#include "screens/schedule/NativeBookingModel.h"
#include "screens/schedule/NativeScheduleDayModel.h"
#include "screens/schedule/TarnBookingLinkDraft.h"

#include <QCoroTask>
#include <QDate>
#include <QObject>
#include <QString>
#include <QTimeZone>
#include <QTimer>

class TarnAPI;
class TarnAPIError;

// The schedule screen's state: one week of the person's calendar, moved a
// week at a time, and their booking links with the bookings of the one open.
// Read when the screen appears and every minute while it is shown; a refresh
// that changed nothing leaves the rows as they are. A week's answer that
// arrives after another week was chosen is dropped. A refusal or failure is
// kept in `errorText`; a signed-out answer emits `signedOut`.
class NativeScheduleView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeScheduleDayModel *days READ days CONSTANT)
    Q_PROPERTY(NativeBookingLinkModel *links READ links CONSTANT)
    Q_PROPERTY(NativeBookingModel *bookings READ bookings CONSTANT)
    Q_PROPERTY(QString weekLabel READ weekLabel NOTIFY weekChanged)
    Q_PROPERTY(bool thisWeekShown READ thisWeekShown NOTIFY weekChanged)
    Q_PROPERTY(int eventCount READ eventCount NOTIFY eventsChanged)
    Q_PROPERTY(QString openLinkId READ openLinkId NOTIFY linkChanged)
    Q_PROPERTY(QString openLinkTitle READ openLinkTitle NOTIFY linkChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int refreshIntervalMs = 60'000;

    explicit NativeScheduleView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeScheduleDayModel *days() const { return m_days; }
    [[nodiscard]] NativeBookingLinkModel *links() const { return m_links; }
    [[nodiscard]] NativeBookingModel *bookings() const { return m_bookings; }
    [[nodiscard]] QDate monday() const { return m_monday; }
    [[nodiscard]] QString weekLabel() const;
    [[nodiscard]] bool thisWeekShown() const;
    [[nodiscard]] int eventCount() const { return m_eventCount; }
    [[nodiscard]] QString openLinkId() const { return m_openLink; }
    [[nodiscard]] QString openLinkTitle() const;
    // What just happened, said for a few seconds ("Link copied").
    [[nodiscard]] QString notice() const { return m_notice; }
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    // The week's events are read in this zone; the system's by default.
    void setTimeZone(const QTimeZone &zone);

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void previousWeek();
    Q_INVOKABLE void nextWeek();
    Q_INVOKABLE void thisWeek();
    Q_INVOKABLE void openLink(const QString &linkId);
    Q_INVOKABLE void closeLink();
    // A title is needed and a booking lasts 15 minutes to 4 hours; anything
    // else is refused here with the reason, before anything is sent.
    Q_INVOKABLE void createLink(const QString &title, int minutes);
    // Puts the link's address on the clipboard.
    Q_INVOKABLE void copyLink(const QString &linkId);
    // Forgets everything shown: the session ended.
    void clear();

Q_SIGNALS:
    void weekChanged();
    void eventsChanged();
    void linkChanged();
    void noticeChanged();
    void busyChanged();
    void errorTextChanged();
    // A load has finished, well or not (for tests and the screenshot).
    void refreshed();
    void linkCreated(const QString &linkId);
    void signedOut();

private:
    QCoro::Task<> refreshOnce();
    QCoro::Task<> readWeek();
    QCoro::Task<> readBookings(QString linkId);
    QCoro::Task<> createTask(TarnBookingLinkDraft draft);
    void showWeek(const QDate &monday);
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void say(const QString &text);

    TarnAPI &m_api;
    NativeScheduleDayModel *m_days;
    NativeBookingLinkModel *m_links;
    NativeBookingModel *m_bookings;
    QTimeZone m_zone = QTimeZone::systemTimeZone();
    QDate m_monday;
    int m_eventCount = 0;
    QString m_openLink;
    QString m_notice;
    QTimer m_noticeTimer;
    bool m_busy = false;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    // Bumped when the screen goes away or the session ends.
    int m_generation = 0;
    // Bumped when another week is chosen.
    int m_weekGeneration = 0;
};
