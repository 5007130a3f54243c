#pragma once

#include "screens/schedule/NativeBookingLinkModel.h"
#include "screens/schedule/NativeBookingModel.h"
#include "screens/schedule/NativeScheduleDayModel.h"
#include "screens/schedule/NativeScheduleMonthModel.h"
#include "screens/schedule/TarnBookingLinkDraft.h"
#include "screens/schedule/TarnCalendarEvent.h"
#include "screens/schedule/TarnCalendarEventDraft.h"

#include <QCoroTask>
#include <QDate>
#include <QObject>
#include <QString>
#include <QTimeZone>
#include <QTimer>

class QSettings;
class TarnAPI;
class TarnAPIError;

// The schedule screen's state: the person's calendar as a week or a month
// (the choice remembered), moved a week or a month at a time, and their
// booking links with the bookings of the one open. The workspace's events
// are merged with those of the Google calendar when the person's connected
// mailbox grants it (each marked with its calendar), and a new event goes
// there; without it the screen says so once and shows the workspace's own.
// Read when the screen appears and every minute while it is shown; a refresh
// that changed nothing leaves the rows as they are. A week's answer that
// arrives after another week was chosen is dropped. A refusal or failure is
// kept in `errorText`; a signed-out answer emits `signedOut`.
class NativeScheduleView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeScheduleDayModel *days READ days CONSTANT)
    Q_PROPERTY(NativeScheduleMonthModel *month READ month CONSTANT)
    Q_PROPERTY(QString mode READ mode WRITE setMode NOTIFY modeChanged)
    Q_PROPERTY(QString monthLabel READ monthLabel NOTIFY weekChanged)
    Q_PROPERTY(bool thisMonthShown READ thisMonthShown NOTIFY weekChanged)
    Q_PROPERTY(NativeBookingLinkModel *links READ links CONSTANT)
    Q_PROPERTY(NativeBookingModel *bookings READ bookings CONSTANT)
    Q_PROPERTY(QString weekLabel READ weekLabel NOTIFY weekChanged)
    Q_PROPERTY(bool thisWeekShown READ thisWeekShown NOTIFY weekChanged)
    Q_PROPERTY(int eventCount READ eventCount NOTIFY eventsChanged)
    Q_PROPERTY(QString openLinkId READ openLinkId NOTIFY linkChanged)
    Q_PROPERTY(QString openLinkTitle READ openLinkTitle NOTIFY linkChanged)
    Q_PROPERTY(bool googleConnected READ googleConnected NOTIFY googleChanged)
    Q_PROPERTY(QString calendarNote READ calendarNote NOTIFY googleChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int refreshIntervalMs = 60'000;

    // "Week" or "Month".
    static constexpr QLatin1StringView weekMode { "Week" };
    static constexpr QLatin1StringView monthMode { "Month" };

    NativeScheduleView(TarnAPI &api, QSettings &settings, QObject *parent = nullptr);

    [[nodiscard]] NativeScheduleDayModel *days() const { return m_days; }
    [[nodiscard]] NativeScheduleMonthModel *month() const { return m_month; }
    [[nodiscard]] QString mode() const { return m_mode; }
    void setMode(const QString &mode);
    // The first of the month shown.
    [[nodiscard]] QDate monthFirst() const { return m_first; }
    [[nodiscard]] QString monthLabel() const;
    [[nodiscard]] bool thisMonthShown() const;
    [[nodiscard]] NativeBookingLinkModel *links() const { return m_links; }
    [[nodiscard]] NativeBookingModel *bookings() const { return m_bookings; }
    [[nodiscard]] QDate monday() const { return m_monday; }
    [[nodiscard]] QString weekLabel() const;
    [[nodiscard]] bool thisWeekShown() const;
    [[nodiscard]] int eventCount() const { return m_eventCount; }
    // Whether the Google calendar is read and new events go to it.
    [[nodiscard]] bool googleConnected() const { return m_google; }
    // Why only the workspace's events show, said quietly; empty otherwise.
    [[nodiscard]] QString calendarNote() const { return m_calendarNote; }
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
    Q_INVOKABLE void previousMonth();
    Q_INVOKABLE void nextMonth();
    Q_INVOKABLE void thisMonth();
    // Shows the week holding the day ("yyyy-MM-dd").
    Q_INVOKABLE void openDay(const QString &date);
    Q_INVOKABLE void openLink(const QString &linkId);
    Q_INVOKABLE void closeLink();
    // A title is needed and a booking lasts 15 minutes to 4 hours; anything
    // else is refused here with the reason, before anything is sent.
    Q_INVOKABLE void createLink(const QString &title, int minutes);
    // Adds an event to the Google calendar, checked by
    // ScheduleRules::eventDraft before anything is sent; a refusal is kept
    // in `errorText` and the form keeps what was typed.
    Q_INVOKABLE void createEvent(
        const QString &title, const QString &day, const QString &start, const QString &end, const QString &location);
    // The day a new event starts on: today when it is shown, else the first
    // day shown ("yyyy-MM-dd").
    Q_INVOKABLE QString suggestedDay() const;
    // Puts the link's address on the clipboard.
    Q_INVOKABLE void copyLink(const QString &linkId);
    // Forgets everything shown: the session ended.
    void clear();

Q_SIGNALS:
    void weekChanged();
    void modeChanged();
    void googleChanged();
    void eventsChanged();
    void linkChanged();
    void noticeChanged();
    void busyChanged();
    void errorTextChanged();
    // A load has finished, well or not (for tests and the screenshot).
    void refreshed();
    void linkCreated(const QString &linkId);
    void eventCreated(const QString &eventId);
    void signedOut();

private:
    QCoro::Task<> refreshOnce();
    // The week's or the month's events, whichever is shown.
    QCoro::Task<> readWeek();
    QCoro::Task<> readGoogleStatus();
    // The workspace's events in the range, with the Google calendar's when
    // it is connected (or only the former, noted, when it fails).
    QCoro::Task<QList<TarnCalendarEvent>> readEvents(QDateTime from, QDateTime to);
    QCoro::Task<> readBookings(QString linkId);
    QCoro::Task<> createEventTask(TarnCalendarEventDraft draft);
    QCoro::Task<> createTask(TarnBookingLinkDraft draft);
    void showWeek(const QDate &monday);
    void showMonth(const QDate &first);
    // Shows the mode, week and month given: their days at once, drawn empty,
    // filled when their events arrive.
    void show(const QString &mode, const QDate &monday, const QDate &first);
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void say(const QString &text);
    void setGoogle(bool connected, const QString &note);

    TarnAPI &m_api;
    QSettings &m_settings;
    NativeScheduleDayModel *m_days;
    NativeScheduleMonthModel *m_month;
    NativeBookingLinkModel *m_links;
    NativeBookingModel *m_bookings;
    QTimeZone m_zone = QTimeZone::systemTimeZone();
    QString m_mode;
    QDate m_monday;
    QDate m_first;
    int m_eventCount = 0;
    bool m_google = false;
    QString m_calendarNote;
    QString m_openLink;
    QString m_notice;
    QTimer m_noticeTimer;
    // Between appear() and disappear(): a change of week reads it.
    bool m_shown = false;
    bool m_busy = false;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    // Bumped when the screen goes away or the session ends.
    int m_generation = 0;
    // Bumped when another week or month is chosen.
    int m_weekGeneration = 0;
};
