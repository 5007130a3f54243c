#pragma once

#include "screens/calls/NativeCallModel.h"
#include "screens/calls/NativeCallPlayer.h"
#include "screens/calls/NativeLeadModel.h"
#include "screens/calls/TarnCall.h"
#include "screens/calls/TarnCallRequests.h"
#include "screens/calls/TarnSalesLeadDetail.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

class QSettings;
class TarnAPI;
class TarnAPIError;

// The calls screen's state: the call book (filtered by direction or missed
// calls and by a search, cells edited in place against the version they
// were based on), the recorded calls with their player, the dialer (the
// number checked as it is typed, the mode remembered under
// "tarn.calls.mode", the placed call followed from ringing to ended) and
// the sales leads, one of them open with its calls.
//
// The book is read when the screen appears and again every 30 seconds while
// it is shown, every second while a placed call is on. An edit the service
// refuses because someone changed the call first reloads the book, so the
// other person's change is shown, and says so in `errorText`. A signed-out
// answer emits `signedOut`.
class NativeCallsView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeCallModel *calls READ calls CONSTANT)
    Q_PROPERTY(NativeCallModel *recordings READ recordings CONSTANT)
    Q_PROPERTY(NativeLeadModel *leads READ leads CONSTANT)
    Q_PROPERTY(NativeCallModel *leadCalls READ leadCalls CONSTANT)
    Q_PROPERTY(NativeCallPlayer *player READ player CONSTANT)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY filterChanged)
    Q_PROPERTY(int totalCalls READ totalCalls NOTIFY bookChanged)
    Q_PROPERTY(QVariantList modes READ modes CONSTANT)
    Q_PROPERTY(QString mode READ mode WRITE setMode NOTIFY modeChanged)
    Q_PROPERTY(QString dialText READ dialText WRITE setDialText NOTIFY dialChanged)
    Q_PROPERTY(QString dialName READ dialName NOTIFY dialChanged)
    Q_PROPERTY(bool numberValid READ numberValid NOTIFY dialChanged)
    Q_PROPERTY(QString numberHint READ numberHint NOTIFY dialChanged)
    Q_PROPERTY(bool canDial READ canDial NOTIFY dialChanged)
    Q_PROPERTY(bool mayCall READ mayCall NOTIFY busyChanged)
    Q_PROPERTY(QString placedStatus READ placedStatus NOTIFY placedChanged)
    Q_PROPERTY(QString placedLabel READ placedLabel NOTIFY placedChanged)
    Q_PROPERTY(QString openLeadId READ openLeadId NOTIFY leadChanged)
    Q_PROPERTY(QVariantMap openLead READ openLead NOTIFY leadChanged)
    Q_PROPERTY(QString leadSearch READ leadSearch WRITE setLeadSearch NOTIFY leadFilterChanged)
    Q_PROPERTY(QString leadStatus READ leadStatus WRITE setLeadStatus NOTIFY leadFilterChanged)
    Q_PROPERTY(QVariantList leadStatuses READ leadStatuses NOTIFY leadsChanged)
    Q_PROPERTY(QString leadSummary READ leadSummary NOTIFY leadsChanged)
    Q_PROPERTY(int totalLeads READ totalLeads NOTIFY leadsChanged)
    Q_PROPERTY(QString fetchingRecording READ fetchingRecording NOTIFY busyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int refreshIntervalMs = 30'000;
    static constexpr int placedPollMs = 1'000;
    static constexpr QLatin1StringView modeKey { "tarn.calls.mode" };

    NativeCallsView(TarnAPI &api, QSettings &settings, QObject *parent = nullptr);
    ~NativeCallsView() override;

    [[nodiscard]] NativeCallModel *calls() const { return m_calls; }
    [[nodiscard]] NativeCallModel *recordings() const { return m_recordings; }
    [[nodiscard]] NativeLeadModel *leads() const { return m_leads; }
    [[nodiscard]] NativeCallModel *leadCalls() const { return m_leadCalls; }
    [[nodiscard]] NativeCallPlayer *player() const { return m_player; }
    [[nodiscard]] QString filter() const { return m_filter; }
    void setFilter(const QString &filter);
    [[nodiscard]] QString search() const { return m_search; }
    void setSearch(const QString &search);
    [[nodiscard]] int totalCalls() const { return int(m_book.size()); }
    [[nodiscard]] QVariantList modes() const;
    [[nodiscard]] QString mode() const { return m_mode; }
    void setMode(const QString &mode);
    [[nodiscard]] QString dialText() const { return m_dialText; }
    void setDialText(const QString &text);
    // The customer the number belongs to, when it was dialled from a lead.
    [[nodiscard]] QString dialName() const { return m_dialName; }
    [[nodiscard]] bool numberValid() const;
    [[nodiscard]] QString numberHint() const;
    [[nodiscard]] bool canDial() const;
    // Whether the signed-in person has the Calls app, so may place a call.
    [[nodiscard]] bool mayCall() const;
    // "", or the placed call's "placing", "ringing", "in-call" or "ended".
    [[nodiscard]] QString placedStatus() const;
    [[nodiscard]] QString placedLabel() const;
    [[nodiscard]] QString openLeadId() const { return m_lead ? m_lead->lead.id : QString(); }
    [[nodiscard]] QVariantMap openLead() const;
    // The leads shown are those of `leadStatus` ("" for every status) that
    // match `leadSearch`, applied on every keystroke.
    [[nodiscard]] QString leadSearch() const { return m_leadSearch; }
    void setLeadSearch(const QString &search);
    [[nodiscard]] QString leadStatus() const { return m_leadStatus; }
    void setLeadStatus(const QString &status);
    // "" (every lead) and each status the leads have, in the service's
    // order, as {key, label, count}.
    [[nodiscard]] QVariantList leadStatuses() const;
    // "9 leads · $48,200 estimated" over the leads shown.
    [[nodiscard]] QString leadSummary() const;
    [[nodiscard]] int totalLeads() const { return int(m_allLeads.size()); }
    // The call whose recording is being downloaded, if any.
    [[nodiscard]] QString fetchingRecording() const { return m_fetching; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    // Forgets everything shown: the session ended.
    void clear();

    // One cell of a call: "outcome", "notes" or "client_id" (empty clears
    // the customer). An unchanged value sends nothing.
    Q_INVOKABLE void saveCell(const QString &callId, const QString &column, const QString &value);
    Q_INVOKABLE void dial();
    // Puts the lead's number in the dialer and calls it.
    Q_INVOKABLE void dialLead(const QString &leadId);
    Q_INVOKABLE void playRecording(const QString &callId);
    Q_INVOKABLE void openLeadDetail(const QString &leadId);
    Q_INVOKABLE void closeLead();

Q_SIGNALS:
    void filterChanged();
    void bookChanged();
    void modeChanged();
    void dialChanged();
    void placedChanged();
    void leadChanged();
    void leadFilterChanged();
    void leadsChanged();
    void busyChanged();
    void errorTextChanged();
    // A load or an action has finished (for tests and the screenshot).
    void refreshed();
    void actionFinished();
    void signedOut();

private:
    [[nodiscard]] bool opens(const QString &app) const;
    QCoro::Task<> refreshOnce();
    QCoro::Task<> saveTask(QString callId, TarnCallCell cell);
    QCoro::Task<> dialTask(TarnSalesCallStart start);
    QCoro::Task<> followPlaced(QString callId, int generation);
    QCoro::Task<> recordingTask(QString callId);
    QCoro::Task<> leadTask(QString leadId);
    void showBook(const QList<TarnCall> &book);
    void applyFilter();
    void applyLeadFilter();
    void fail(const TarnAPIError &error);
    void setError(const QString &text);

    TarnAPI &m_api;
    QSettings &m_settings;
    NativeCallModel *m_calls;
    NativeCallModel *m_recordings;
    NativeLeadModel *m_leads;
    NativeCallModel *m_leadCalls;
    NativeCallPlayer *m_player;
    QList<TarnCall> m_book;
    QList<TarnSalesLead> m_allLeads;
    QString m_leadSearch;
    QString m_leadStatus;
    QString m_filter = QStringLiteral("all");
    QString m_search;
    QString m_mode;
    QString m_dialText;
    QString m_dialClientId;
    QString m_dialName;
    bool m_placing = false;
    std::optional<TarnCall> m_placed;
    std::optional<TarnSalesLeadDetail> m_lead;
    QString m_fetching;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    // Bumped when the screen goes away (ends the refresh loop and the
    // following of a placed call) and when the session ends.
    int m_generation = 0;
};
