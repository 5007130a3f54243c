#pragma once

#include "screens/owner/NativeOwnerFigureModel.h"
#include "screens/owner/NativeTeamWeekModel.h"
#include "screens/owner/TarnTeamSnapshot.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

class TarnAPI;
class TarnAPIError;

// The owner dashboard's state: the snapshot's figures (each naming the screen
// and section behind it), money in and out of last month and this one for the
// chart, and the team's week. Read when the screen appears and every minute
// while it is shown; a refresh that changed nothing leaves the rows as they
// are. A refusal or failure is kept in `errorText` over the last figures
// read; a signed-out answer emits `signedOut`.
class NativeOwnerView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeOwnerFigureModel *figures READ figures CONSTANT)
    Q_PROPERTY(NativeTeamWeekModel *team READ team CONSTANT)
    Q_PROPERTY(QString weekLabel READ weekLabel NOTIFY snapshotChanged)
    Q_PROPERTY(QStringList chartMonths READ chartMonths NOTIFY snapshotChanged)
    Q_PROPERTY(QVariantList chartIn READ chartIn NOTIFY snapshotChanged)
    Q_PROPERTY(QVariantList chartOut READ chartOut NOTIFY snapshotChanged)
    Q_PROPERTY(double chartTop READ chartTop NOTIFY snapshotChanged)
    Q_PROPERTY(int chartTicks READ chartTicks NOTIFY snapshotChanged)
    Q_PROPERTY(QString chartLabelFormat READ chartLabelFormat NOTIFY snapshotChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int refreshIntervalMs = 60'000;

    explicit NativeOwnerView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeOwnerFigureModel *figures() const { return m_figures; }
    [[nodiscard]] NativeTeamWeekModel *team() const { return m_team; }
    // "Week of 23 November", or empty before the first load.
    [[nodiscard]] QString weekLabel() const;
    [[nodiscard]] QStringList chartMonths() const;
    [[nodiscard]] QVariantList chartIn() const;
    [[nodiscard]] QVariantList chartOut() const;
    [[nodiscard]] double chartTop() const;
    [[nodiscard]] int chartTicks() const;
    [[nodiscard]] QString chartLabelFormat() const;
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    // Forgets everything shown: the session ended.
    void clear();

Q_SIGNALS:
    void snapshotChanged();
    void busyChanged();
    void errorTextChanged();
    // A load has finished, well or not (for tests and the screenshot).
    void refreshed();
    void signedOut();

private:
    QCoro::Task<> refreshOnce();
    void show(const TarnTeamSnapshot &snapshot);
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    [[nodiscard]] qint64 largestBar() const;
    [[nodiscard]] QVariantList chartValues(qint64 TarnMoneyMonth::*field) const;

    TarnAPI &m_api;
    NativeOwnerFigureModel *m_figures;
    NativeTeamWeekModel *m_team;
    TarnTeamSnapshot m_snapshot;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    int m_generation = 0;
};
