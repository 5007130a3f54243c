#pragma once

#include "screens/websites/NativeWebsiteModel.h"
#include "screens/websites/TarnSiteCheck.h"
#include "screens/websites/TarnSiteCheckRequest.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QVariantList>

#include <optional>

class TarnAPI;
class TarnAPIError;

// The websites screen's state: the clients' sites searched in place, read
// when the screen appears and every minute while it is shown, and a check
// of any site's address, the one typed or an open site's, run one at a time
// with its scores and findings kept until the next. A refusal or failure is
// kept in `errorText`; a signed-out answer emits `signedOut`.
class NativeWebsitesView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeWebsiteModel *sites READ sites CONSTANT)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)
    Q_PROPERTY(int liveCount READ liveCount NOTIFY sitesChanged)
    Q_PROPERTY(int totalCount READ totalCount NOTIFY sitesChanged)
    Q_PROPERTY(QString checkText READ checkText WRITE setCheckText NOTIFY checkChanged)
    Q_PROPERTY(bool checking READ checking NOTIFY checkChanged)
    Q_PROPERTY(QString checkedUrl READ checkedUrl NOTIFY checkChanged)
    Q_PROPERTY(int overall READ overall NOTIFY checkChanged)
    Q_PROPERTY(QVariantList scores READ scores NOTIFY checkChanged)
    Q_PROPERTY(QVariantList findings READ findings NOTIFY checkChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int refreshIntervalMs = 60'000;

    explicit NativeWebsitesView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeWebsiteModel *sites() const { return m_sites; }
    [[nodiscard]] QString search() const { return m_search; }
    void setSearch(const QString &search);
    [[nodiscard]] int liveCount() const;
    [[nodiscard]] int totalCount() const { return int(m_all.size()); }
    [[nodiscard]] QString checkText() const { return m_checkText; }
    void setCheckText(const QString &text);
    [[nodiscard]] bool checking() const { return m_checking; }
    [[nodiscard]] QString checkedUrl() const { return m_check ? m_check->url : QString(); }
    [[nodiscard]] int overall() const { return m_check ? int(m_check->overall) : 0; }
    // {label, score} for speed, mobile, search engines, security and
    // accessibility, in that order.
    [[nodiscard]] QVariantList scores() const;
    // {severity, text}, worst first.
    [[nodiscard]] QVariantList findings() const;
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    // Checks the address typed; one that cannot be a site's is refused here.
    Q_INVOKABLE void check();
    // Checks the site with this id.
    Q_INVOKABLE void checkSite(const QString &siteId);
    // Forgets everything shown: the session ended.
    void clear();

Q_SIGNALS:
    void searchChanged();
    void sitesChanged();
    void checkChanged();
    void busyChanged();
    void errorTextChanged();
    // A load or a check has finished, well or not (for tests and the screenshot).
    void refreshed();
    void signedOut();

private:
    QCoro::Task<> refreshOnce();
    QCoro::Task<> checkTask(TarnSiteCheckRequest request, int generation);
    void applySearch();
    void fail(const TarnAPIError &error);
    void setError(const QString &text);

    TarnAPI &m_api;
    NativeWebsiteModel *m_sites;
    QList<TarnWebsite> m_all;
    QString m_search;
    QString m_checkText;
    bool m_checking = false;
    std::optional<TarnSiteCheck> m_check;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    // Bumped when the screen goes away or the session ends.
    int m_generation = 0;
};
