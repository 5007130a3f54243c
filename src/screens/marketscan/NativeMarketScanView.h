#pragma once

#include "screens/marketscan/NativeMarketBusinessModel.h"
#include "screens/marketscan/NativeMarketScanModel.h"
#include "screens/marketscan/TarnMarketScanRequest.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

class TarnAPI;
class TarnAPIError;

// The market scan screen's state: the recent scans, the one open with its
// businesses narrowed by opportunity and ordered in place, and a new scan
// of a trade in an area, checked before it is sent and run once at a time.
// The newest scan opens when the screen appears with none open. A refusal
// or failure is kept in `errorText`; a signed-out answer emits `signedOut`.
class NativeMarketScanView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeMarketScanModel *scans READ scans CONSTANT)
    Q_PROPERTY(NativeMarketBusinessModel *businesses READ businesses CONSTANT)
    Q_PROPERTY(QString trade READ trade WRITE setTrade NOTIFY requestChanged)
    Q_PROPERTY(QString area READ area WRITE setArea NOTIFY requestChanged)
    Q_PROPERTY(bool canScan READ canScan NOTIFY requestChanged)
    Q_PROPERTY(bool scanning READ scanning NOTIFY busyChanged)
    Q_PROPERTY(QString openScanId READ openScanId NOTIFY scanChanged)
    Q_PROPERTY(QString openScanTitle READ openScanTitle NOTIFY scanChanged)
    Q_PROPERTY(QString openScanSummary READ openScanSummary NOTIFY scanChanged)
    Q_PROPERTY(QString opportunity READ opportunity WRITE setOpportunity NOTIFY orderChanged)
    Q_PROPERTY(QString sortKey READ sortKey WRITE setSortKey NOTIFY orderChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    explicit NativeMarketScanView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeMarketScanModel *scans() const { return m_scans; }
    [[nodiscard]] NativeMarketBusinessModel *businesses() const { return m_businesses; }
    [[nodiscard]] QString trade() const { return m_trade; }
    void setTrade(const QString &trade);
    [[nodiscard]] QString area() const { return m_area; }
    void setArea(const QString &area);
    [[nodiscard]] bool canScan() const;
    [[nodiscard]] bool scanning() const { return m_scanning; }
    [[nodiscard]] QString openScanId() const { return m_open ? m_open->id : QString(); }
    // "Dentists in Portland, OR".
    [[nodiscard]] QString openScanTitle() const;
    // "24 found · 7 high opportunity · scanned 25 Nov, 09:14".
    [[nodiscard]] QString openScanSummary() const;
    [[nodiscard]] QString opportunity() const { return m_opportunity; }
    void setOpportunity(const QString &opportunity);
    [[nodiscard]] QString sortKey() const { return m_sortKey; }
    // An unknown order is ignored.
    void setSortKey(const QString &key);
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void appear();
    Q_INVOKABLE void scan();
    Q_INVOKABLE void openScan(const QString &scanId);
    // Forgets everything shown: the session ended.
    void clear();

Q_SIGNALS:
    void requestChanged();
    void scanChanged();
    void orderChanged();
    void busyChanged();
    void errorTextChanged();
    // A load or a scan has finished, well or not (for tests and the screenshot).
    void refreshed();
    void signedOut();

private:
    QCoro::Task<> loadTask(int generation);
    QCoro::Task<> scanTask(TarnMarketScanRequest request, int generation);
    QCoro::Task<> openTask(QString scanId, int generation);
    void show(const TarnMarketScan &scan);
    void applyOrder();
    void fail(const TarnAPIError &error);
    void setError(const QString &text);

    TarnAPI &m_api;
    NativeMarketScanModel *m_scans;
    NativeMarketBusinessModel *m_businesses;
    std::optional<TarnMarketScan> m_open;
    QString m_trade;
    QString m_area;
    QString m_opportunity;
    QString m_sortKey = QStringLiteral("opportunity");
    bool m_scanning = false;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    // Bumped when the session ends.
    int m_generation = 0;
};
