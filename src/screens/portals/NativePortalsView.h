#pragma once

#include "screens/portals/TarnPerformanceMonth.h"
#include "screens/portals/TarnPortalAccountDetail.h"
#include "screens/portals/TarnPortalDashboard.h"
#include "screens/portals/TarnPortalKey.h"
#include "screens/portals/TarnPortalLink.h"
#include "shell/NativeKeyedListModel.h"

#include <QAbstractListModel>
#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

class TarnAPI;
class TarnAPIError;

// The portals screen's state: the dashboard (every client's portal and the
// open alerts) and one client's portal opened beside it, with its people,
// keys, reports, work and monthly figures.
//
// A key is shown once, in `issuedKey`, right after it was issued; it is
// forgotten when another portal opens, when it is dismissed and when the
// session ends, and afterwards only the account's tails show which key is
// in use. Every change reloads the open portal and the dashboard, so counts
// and alerts follow; a refusal (a stale account version included, after
// which the portal shows the other person's change) is kept in `errorText`.
class NativePortalsView : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractListModel *accounts READ accounts CONSTANT)
    Q_PROPERTY(QAbstractListModel *alerts READ alerts CONSTANT)
    Q_PROPERTY(QAbstractListModel *people READ people CONSTANT)
    Q_PROPERTY(QAbstractListModel *reports READ reports CONSTANT)
    Q_PROPERTY(QAbstractListModel *work READ work CONSTANT)
    Q_PROPERTY(QString openClientId READ openClientId NOTIFY portalChanged)
    Q_PROPERTY(QVariantMap account READ account NOTIFY portalChanged)
    Q_PROPERTY(QVariantList months READ months NOTIFY portalChanged)
    Q_PROPERTY(QString issuedKey READ issuedKey NOTIFY issuedKeyChanged)
    Q_PROPERTY(QString personLink READ personLink NOTIFY issuedKeyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    using AccountModel = NativeKeyedListModel<TarnPortalAccount, &TarnPortalAccount::client_id>;
    using AlertModel = NativeKeyedListModel<TarnPortalAlert, &TarnPortalAlert::id>;
    using PersonModel = NativeKeyedListModel<TarnPortalPerson, &TarnPortalPerson::id>;
    using ReportModel = NativeKeyedListModel<TarnPortalReport, &TarnPortalReport::id>;
    using WorkModel = NativeKeyedListModel<TarnPortalWork, &TarnPortalWork::id>;

    explicit NativePortalsView(TarnAPI &api, QObject *parent = nullptr);
    ~NativePortalsView() override;

    [[nodiscard]] QAbstractListModel *accounts() const { return m_accounts; }
    [[nodiscard]] QAbstractListModel *alerts() const { return m_alerts; }
    [[nodiscard]] QAbstractListModel *people() const { return m_people; }
    [[nodiscard]] QAbstractListModel *reports() const { return m_reports; }
    [[nodiscard]] QAbstractListModel *work() const { return m_work; }
    [[nodiscard]] const AccountModel &accountRows() const { return *m_accounts; }
    [[nodiscard]] const AlertModel &alertRows() const { return *m_alerts; }
    [[nodiscard]] const PersonModel &personRows() const { return *m_people; }
    [[nodiscard]] const ReportModel &reportRows() const { return *m_reports; }
    [[nodiscard]] QString openClientId() const { return m_open ? m_open->account.client_id : QString(); }
    [[nodiscard]] QVariantMap account() const;
    [[nodiscard]] QVariantList months() const;
    [[nodiscard]] QString issuedKey() const { return m_issuedKey; }
    [[nodiscard]] QString personLink() const { return m_personLink; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void refresh();
    // Forgets everything shown, keys first: the session ended.
    void clear();

    Q_INVOKABLE void openPortal(const QString &clientId);
    Q_INVOKABLE void closePortal();
    Q_INVOKABLE void acknowledgeAlert(const QString &alertId);
    // Only what differs from the open account is sent.
    Q_INVOKABLE void saveAccount(const QString &status, const QString &welcome);
    Q_INVOKABLE void invitePerson(const QString &name, const QString &email);
    Q_INVOKABLE void removePerson(const QString &personId);
    Q_INVOKABLE void makePersonLink(const QString &personId);
    Q_INVOKABLE void issueLeadKey();
    Q_INVOKABLE void issuePiloKey();
    Q_INVOKABLE void revokePiloKey();
    Q_INVOKABLE void dismissIssued();
    Q_INVOKABLE void createReport(const QString &title, const QString &month);
    Q_INVOKABLE void setReportPublished(const QString &reportId, bool published);
    Q_INVOKABLE void deleteReport(const QString &reportId);
    Q_INVOKABLE void deleteWork(const QString &workId);
    Q_INVOKABLE void syncPerformance();
    Q_INVOKABLE void refreshPortal();

Q_SIGNALS:
    void portalChanged();
    void issuedKeyChanged();
    void busyChanged();
    void errorTextChanged();
    // A load or an action has finished (for tests and the screenshot).
    void refreshed();
    void actionFinished();
    void signedOut();

private:
    QCoro::Task<> refreshTask();
    QCoro::Task<> openTask(QString clientId);
    // Awaits one change, shows a refusal, then shows everything as it now is.
    template <typename T> QCoro::Task<> changeTask(QCoro::Task<T> change);
    QCoro::Task<> issueTask(QCoro::Task<TarnPortalKey> issuing);
    QCoro::Task<> linkTask(QCoro::Task<TarnPortalLink> making);
    QCoro::Task<> reloadOpen();
    void showPortal(std::optional<TarnPortalAccountDetail> detail, QList<TarnPerformanceMonth> months);
    void setIssued(const QString &key, const QString &link);
    void fail(const TarnAPIError &error);
    void setError(const QString &text);

    TarnAPI &m_api;
    AccountModel *m_accounts;
    AlertModel *m_alerts;
    PersonModel *m_people;
    ReportModel *m_reports;
    WorkModel *m_work;
    std::optional<TarnPortalAccountDetail> m_open;
    QList<TarnPerformanceMonth> m_months;
    QString m_issuedKey;
    QString m_personLink;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    // Bumped when another portal opens and when the session ends, so an
    // answer about the one before is dropped.
    int m_generation = 0;
};
