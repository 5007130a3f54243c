#pragma once

#include "money/TarnPaymentCards.h"
#include "money/TarnPaymentRequests.h"
#include "shell/NativeKeyedListModel.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>

class TarnAPI;

// One client's side of the payments terminal: their saved cards, the
// recurring charges on them, and adding a card through the processor's page.
// Adding a card opens the page in the browser and follows the session every
// 2 s until the page is completed (the card joins the list), the session
// expires, or the person stops following.
class NativePaymentClientPanel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString clientId READ clientId WRITE setClientId NOTIFY clientChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY stateChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY stateChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)
    Q_PROPERTY(QAbstractListModel *cards READ cards CONSTANT)
    Q_PROPERTY(QAbstractListModel *schedules READ schedules CONSTANT)
    Q_PROPERTY(bool following READ following NOTIFY cardSessionChanged)
    Q_PROPERTY(QString cardSessionText READ cardSessionText NOTIFY cardSessionChanged)

public:
    struct CardRow {
        QString id;
        QString cardType;
        QString label;
        friend bool operator==(const CardRow &, const CardRow &) = default;
    };
    struct ScheduleRow {
        QString id;
        QString amount;
        QString interval;
        QString nextOn;
        QString status;
        QString card;
        friend bool operator==(const ScheduleRow &, const ScheduleRow &) = default;
    };
    // How a card page reaches the person: the desktop's browser by default.
    using Opener = std::function<bool(const QUrl &)>;

    // How often a card session is asked for while its page is open.
    static constexpr int followIntervalMs = 2000;

    explicit NativePaymentClientPanel(TarnAPI &api, QObject *parent = nullptr);
    ~NativePaymentClientPanel() override;

    void setOpener(Opener opener) { m_opener = std::move(opener); }

    [[nodiscard]] QString clientId() const { return m_clientID; }
    void setClientId(const QString &clientID);
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] QString errorText() const { return m_error; }
    [[nodiscard]] QAbstractListModel *cards() { return &m_cards; }
    [[nodiscard]] QAbstractListModel *schedules() { return &m_schedules; }
    [[nodiscard]] bool following() const { return m_following; }
    [[nodiscard]] QString cardSessionText() const { return m_sessionText; }

    Q_INVOKABLE void reload();
    // Forgets the client: the session ended.
    void clear();

    Q_INVOKABLE void addCard();
    // Stops following the card session; the page stays open in the browser.
    Q_INVOKABLE void cancelCard();

    // False when the form is refused here: nothing is sent. `interval` is
    // "monthly" or "weekly".
    Q_INVOKABLE bool createSchedule(
        const QString &profileID, const QString &amount, const QString &interval, const QString &nextOn);
    Q_INVOKABLE void pauseSchedule(const QString &scheduleID);
    Q_INVOKABLE void resumeSchedule(const QString &scheduleID);
    Q_INVOKABLE void cancelSchedule(const QString &scheduleID);

Q_SIGNALS:
    void clientChanged();
    void stateChanged();
    void errorTextChanged();
    void cardSessionChanged();
    // A schedule changed; its runs are payments, so the list reads again.
    void changed();
    void signedOut();

private:
    QCoro::Task<> load(int generation);
    QCoro::Task<> startSession(int generation);
    QCoro::Task<> follow(QString sessionID, int generation);
    QCoro::Task<> act(TarnPaymentScheduleAction action);
    void apply(const TarnPaymentCards &cards);
    void setSession(bool following, const QString &text);
    void stopFollowing(const QString &error);
    void setBusy(bool busy);

    TarnAPI &m_api;
    Opener m_opener;
    QString m_clientID;
    NativeKeyedListModel<CardRow, &CardRow::id> m_cards;
    NativeKeyedListModel<ScheduleRow, &ScheduleRow::id> m_schedules;
    bool m_loading = false;
    bool m_busy = false;
    bool m_following = false;
    QString m_error;
    QString m_sessionText;
    // Bumped by every load and every client chosen.
    int m_generation = 0;
    // Bumped by every card session started or stopped.
    int m_sessionGeneration = 0;
};
