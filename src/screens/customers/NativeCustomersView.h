#pragma once

#include "screens/customers/NativeCustomerProfile.h"
#include "screens/customers/TarnCustomerSummary.h"
#include "shell/NativeKeyedListModel.h"

#include <QAbstractListModel>
#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantList>

class TarnAPI;
class TarnAPIError;

// The customer register: every customer (archived ones aside) as a list
// filtered by stage and by a search applied a moment after the last
// keystroke, and the same customers as pipeline columns, one list per
// stage. Moving a customer to another stage moves its row at once, then
// shows the service's final state; the open customer is `profile`. It loads
// when shown and again after any change the profile reports.
class NativeCustomersView : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractListModel *customers READ customers CONSTANT)
    Q_PROPERTY(NativeCustomerProfile *profile READ profile CONSTANT)
    // {id, label} of each stage, in pipeline order.
    Q_PROPERTY(QVariantList stages READ stages CONSTANT)
    // "Every stage" (an empty id), then the stages: the list's stage filter.
    Q_PROPERTY(QVariantList stageFilters READ stageFilters CONSTANT)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    // A stage's id, or empty for every stage.
    Q_PROPERTY(QString stageFilter READ stageFilter WRITE setStageFilter NOTIFY stageFilterChanged)
    Q_PROPERTY(int count READ count NOTIFY listChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY loadingChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY loadingChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int searchDelayMs = 150;
    // Others change stages and add customers; a shown register follows them.
    static constexpr int refreshIntervalMs = 60'000;

    explicit NativeCustomersView(TarnAPI &api, QObject *parent = nullptr);
    ~NativeCustomersView() override;

    [[nodiscard]] QAbstractListModel *customers() const { return m_list; }
    [[nodiscard]] NativeCustomerProfile *profile() const { return m_profile; }
    [[nodiscard]] QVariantList stages() const;
    [[nodiscard]] QVariantList stageFilters() const;
    [[nodiscard]] QString searchText() const { return m_search; }
    void setSearchText(const QString &text);
    [[nodiscard]] QString stageFilter() const { return m_stage; }
    void setStageFilter(const QString &stage);
    [[nodiscard]] int count() const { return m_list->rowCount(); }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    // The pipeline column of a stage: its customers matching the search.
    Q_INVOKABLE QAbstractListModel *stageModel(const QString &stage) const;
    // The id of the customer at a row of the list, for Enter.
    Q_INVOKABLE QString customerAt(int row) const;

    // Reads the register now and every minute until `disappear`.
    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void open(const QString &clientId);
    Q_INVOKABLE void changeStage(const QString &clientId, const QString &stage);
    // Forgets everything shown: the session ended.
    void clear();

Q_SIGNALS:
    void searchTextChanged();
    void stageFilterChanged();
    void listChanged();
    void loadingChanged();
    void errorTextChanged();
    // A load or a stage change has finished (for tests and the screenshot).
    void refreshed();
    void signedOut();

private:
    using Model = NativeKeyedListModel<TarnCustomerSummary, &TarnCustomerSummary::id>;
    [[nodiscard]] Model *makeModel();
    QCoro::Task<> refreshOnce();
    QCoro::Task<> loadTask(int generation);
    QCoro::Task<> stageTask(QString id, QString stage);
    // The rows as the search and stage filter show them.
    void apply();
    void fail(const TarnAPIError &error);
    void setError(const QString &text);

    TarnAPI &m_api;
    Model *m_list;
    QHash<QString, Model *> m_columns;
    NativeCustomerProfile *m_profile;
    QTimer m_searchDelay;
    QList<TarnCustomerSummary> m_all;
    QString m_search;
    // The search the rows show; it follows m_search after the delay.
    QString m_applied;
    QString m_stage;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    int m_generation = 0;
    // Bumped when the screen goes away, ending the refresh loop.
    int m_loopGeneration = 0;
};
