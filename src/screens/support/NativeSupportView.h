#pragma once

#include "screens/support/NativeSupportCardModel.h"
#include "screens/support/NativeSupportNoteModel.h"
#include "screens/support/NativeSupportRecurringModel.h"
#include "screens/support/NativeSupportTaskDetail.h"
#include "screens/support/NativeSupportTimeModel.h"
#include "screens/support/NativeSupportViewModel.h"
#include "screens/support/TarnSupportBoard.h"
#include "screens/support/TarnSupportClient.h"

#include <QCoroTask>
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantList>

#include <functional>
#include <optional>

class QSettings;
class TarnAPI;
class TarnAPIError;

// The support screen: the board in columns by status, filtered by the
// chosen view (built-in or saved) and the filters over it; cards moved
// between columns; the task open beside it (`task`); the person's running
// timer, which lives on the service and so outlasts the app; the recurring
// rules and the logged time of the other sections; a customer's page with
// notes; new tasks and views.
//
// The chosen view, the default view and the board's configuration (the
// filters other than the text, and whether done work shows) are kept in the
// preferences under "tarn.support.work.view", "tarn.support.work.defaultView"
// and "tarn.support.work.config", so the board opens as it was left.
//
// Filtering is done here over the cards already read: a keystroke sorts the
// matching cards into the four column models, which change row by row. A
// move is shown at once and sent with the card's version; when someone moved
// it first, the refusal stays in `errorText` and the board is read again, so
// the card stands where the service has it. The board is read again every
// 30 s while shown.
class NativeSupportView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeSupportCardModel *todo READ todo CONSTANT)
    Q_PROPERTY(NativeSupportCardModel *inProgress READ inProgress CONSTANT)
    Q_PROPERTY(NativeSupportCardModel *waiting READ waiting CONSTANT)
    Q_PROPERTY(NativeSupportCardModel *done READ done CONSTANT)
    // [{status, title}] of the columns in order.
    Q_PROPERTY(QVariantList columns READ columns CONSTANT)
    Q_PROPERTY(NativeSupportViewModel *views READ views CONSTANT)
    Q_PROPERTY(QString viewId READ viewId WRITE setViewId NOTIFY viewChanged)
    Q_PROPERTY(QString viewTitle READ viewTitle NOTIFY viewChanged)
    Q_PROPERTY(bool savedViewChosen READ savedViewChosen NOTIFY viewChanged)
    Q_PROPERTY(QString defaultViewId READ defaultViewId WRITE setDefaultViewId NOTIFY viewChanged)
    Q_PROPERTY(QString assigneeFilter READ assigneeFilter WRITE setAssigneeFilter NOTIFY filtersChanged)
    Q_PROPERTY(QString clientFilter READ clientFilter WRITE setClientFilter NOTIFY filtersChanged)
    Q_PROPERTY(QString priorityFilter READ priorityFilter WRITE setPriorityFilter NOTIFY filtersChanged)
    Q_PROPERTY(QString dueFilter READ dueFilter WRITE setDueFilter NOTIFY filtersChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY filtersChanged)
    Q_PROPERTY(bool hideDone READ hideDone WRITE setHideDone NOTIFY filtersChanged)
    Q_PROPERTY(QVariantList people READ people NOTIFY boardChanged)
    Q_PROPERTY(QVariantList clients READ clients NOTIFY boardChanged)
    Q_PROPERTY(int shownCount READ shownCount NOTIFY boardChanged)
    Q_PROPERTY(NativeSupportTaskDetail *task READ task CONSTANT)
    Q_PROPERTY(QString timerTaskId READ timerTaskId NOTIFY timerChanged)
    Q_PROPERTY(QString timerTaskTitle READ timerTaskTitle NOTIFY timerChanged)
    Q_PROPERTY(QString timerText READ timerText NOTIFY timerTick)
    Q_PROPERTY(NativeSupportRecurringModel *recurring READ recurring CONSTANT)
    Q_PROPERTY(NativeSupportTimeModel *timeEntries READ timeEntries CONSTANT)
    Q_PROPERTY(QString weekLogged READ weekLogged NOTIFY boardChanged)
    Q_PROPERTY(QString clientId READ clientId NOTIFY clientChanged)
    Q_PROPERTY(QString clientName READ clientName NOTIFY clientChanged)
    Q_PROPERTY(QString clientContact READ clientContact NOTIFY clientChanged)
    Q_PROPERTY(QString clientLogged READ clientLogged NOTIFY clientChanged)
    Q_PROPERTY(NativeSupportNoteModel *clientNotes READ clientNotes CONSTANT)
    Q_PROPERTY(NativeSupportCardModel *clientTasks READ clientTasks CONSTANT)
    Q_PROPERTY(bool loading READ loading NOTIFY loadingChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY loadingChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int refreshIntervalMs = 30'000;
    static constexpr QLatin1StringView viewKey { "tarn.support.work.view" };
    static constexpr QLatin1StringView defaultViewKey { "tarn.support.work.defaultView" };
    static constexpr QLatin1StringView configKey { "tarn.support.work.config" };

    using Clock = std::function<QDateTime()>;
    NativeSupportView(
        TarnAPI &api, QSettings &preferences, Clock clock = &QDateTime::currentDateTime, QObject *parent = nullptr);
    ~NativeSupportView() override;

    [[nodiscard]] NativeSupportCardModel *todo() const { return m_columns.at(0); }
    [[nodiscard]] NativeSupportCardModel *inProgress() const { return m_columns.at(1); }
    [[nodiscard]] NativeSupportCardModel *waiting() const { return m_columns.at(2); }
    [[nodiscard]] NativeSupportCardModel *done() const { return m_columns.at(3); }
    [[nodiscard]] QVariantList columns() const;
    [[nodiscard]] NativeSupportViewModel *views() const { return m_views; }
    [[nodiscard]] QString viewId() const { return m_viewId; }
    void setViewId(const QString &id);
    [[nodiscard]] QString viewTitle() const;
    [[nodiscard]] bool savedViewChosen() const;
    [[nodiscard]] QString defaultViewId() const { return m_defaultViewId; }
    void setDefaultViewId(const QString &id);
    [[nodiscard]] QString assigneeFilter() const { return m_filters.assignee_id.value_or(QString()); }
    void setAssigneeFilter(const QString &id);
    [[nodiscard]] QString clientFilter() const { return m_filters.client_id.value_or(QString()); }
    void setClientFilter(const QString &id);
    [[nodiscard]] QString priorityFilter() const { return m_filters.priority.value_or(QString()); }
    void setPriorityFilter(const QString &priority);
    [[nodiscard]] QString dueFilter() const { return m_filters.due.value_or(QString()); }
    void setDueFilter(const QString &due);
    [[nodiscard]] QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    [[nodiscard]] bool hideDone() const { return m_hideDone; }
    void setHideDone(bool hide);
    [[nodiscard]] QVariantList people() const;
    [[nodiscard]] QVariantList clients() const;
    [[nodiscard]] int shownCount() const;
    [[nodiscard]] NativeSupportTaskDetail *task() const { return m_task; }
    [[nodiscard]] QString timerTaskId() const { return m_timer ? m_timer->task_id : QString(); }
    [[nodiscard]] QString timerTaskTitle() const { return m_timer ? m_timer->task_title : QString(); }
    [[nodiscard]] QString timerText() const;
    [[nodiscard]] NativeSupportRecurringModel *recurring() const { return m_recurring; }
    [[nodiscard]] NativeSupportTimeModel *timeEntries() const { return m_time; }
    [[nodiscard]] QString weekLogged() const;
    [[nodiscard]] QString clientId() const { return m_client ? m_client->id : QString(); }
    [[nodiscard]] QString clientName() const { return m_client ? m_client->name : QString(); }
    [[nodiscard]] QString clientContact() const;
    [[nodiscard]] QString clientLogged() const;
    [[nodiscard]] NativeSupportNoteModel *clientNotes() const { return m_clientNotes; }
    [[nodiscard]] NativeSupportCardModel *clientTasks() const { return m_clientTasks; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }
    [[nodiscard]] const TarnSupportBoard &board() const { return m_board; }

    // Shown: loads, then reads the board every 30 s until `disappear`.
    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    // Forgets everything shown: the session ended. The preferences stay.
    void clear();

    Q_INVOKABLE void clearFilters();
    // Moves a card to a column, or one column along (-1 back, +1 on).
    Q_INVOKABLE void moveCard(const QString &taskId, const QString &status);
    Q_INVOKABLE void moveCardBy(const QString &taskId, int step);
    Q_INVOKABLE void openTask(const QString &taskId) { m_task->openTask(taskId); }
    Q_INVOKABLE void startTimer(const QString &taskId);
    Q_INVOKABLE void stopTimer();
    // A new task with what the filters say where the form leaves it open; it opens.
    Q_INVOKABLE void createTask(const QString &title, const QString &priority, const QString &clientId,
        const QString &assigneeId, const QString &dueDate);
    // Saves the filters shown under a name and chooses the new view.
    Q_INVOKABLE void saveView(const QString &name);
    Q_INVOKABLE void renameView(const QString &id, const QString &name);
    Q_INVOKABLE void deleteView(const QString &id);
    Q_INVOKABLE void addRecurring(const QString &title, const QString &every, const QString &firstDue,
        const QString &clientId, const QString &assigneeId);
    Q_INVOKABLE void stopRecurring(const QString &id);
    Q_INVOKABLE void openClient(const QString &clientId);
    Q_INVOKABLE void closeClient();
    Q_INVOKABLE void addClientNote(const QString &body);
    // The cards of each column, in column order, as the column models get
    // them for one filtering; `timing` marks the card the timer runs on.
    [[nodiscard]] static QList<QList<SupportCard>> cardColumns(const QList<TarnSupportTaskSummary> &tasks,
        const TarnSupportFilters &filters, const QDate &today, bool byClient, const QString &timing);
    // A picker's choices: "none" under `label` (id ""), then `choices`.
    Q_INVOKABLE static QVariantList withNone(const QString &label, const QVariantList &choices);

Q_SIGNALS:
    void boardChanged();
    void viewChanged();
    void filtersChanged();
    void timerChanged();
    void timerTick();
    void clientChanged();
    void loadingChanged();
    void errorTextChanged();
    // A read of the board or an action has finished (for tests and the screenshot).
    void refreshed();
    void actionFinished();
    void signedOut();

private:
    QCoro::Task<> refreshOnce();
    QCoro::Task<> loadClient(QString id);
    // Runs one change, then reads the board (and the open task) again.
    QCoro::Task<> act(std::function<QCoro::Task<>()> call);
    void showBoard(TarnSupportBoard board);
    // Sorts the cards into the columns for the view and filters shown.
    void applyFilters();
    void rebuildViews();
    void setFilter(std::optional<QString> &filter, const QString &value);
    void saveConfig();
    void setTimer(std::optional<TarnSupportTimer> timer);
    [[nodiscard]] TarnSupportFilters effectiveFilters() const;
    [[nodiscard]] bool viewExists(const QString &id) const;
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void setLoading(bool loading);

    TarnAPI &m_api;
    QSettings &m_preferences;
    Clock m_clock;
    QList<NativeSupportCardModel *> m_columns;
    NativeSupportViewModel *m_views;
    NativeSupportTaskDetail *m_task;
    NativeSupportRecurringModel *m_recurring;
    NativeSupportTimeModel *m_time;
    NativeSupportNoteModel *m_clientNotes;
    NativeSupportCardModel *m_clientTasks;
    TarnSupportBoard m_board;
    QString m_viewId;
    QString m_defaultViewId;
    TarnSupportFilters m_filters;
    QString m_searchText;
    bool m_hideDone = false;
    std::optional<TarnSupportTimer> m_timer;
    QTimer m_tick;
    std::optional<TarnSupportClient> m_client;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    bool m_refreshFailed = false;
    int m_loopGeneration = 0;
    int m_clientGeneration = 0;
};
