#pragma once

#include "screens/overview/NativeBoardItemModel.h"
#include "screens/overview/NativeOrderModel.h"
#include "screens/overview/NativeTeamActivityModel.h"
#include "screens/overview/TarnBoardMove.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>

class TarnAPI;
class TarnAPIError;

// The overview screen's state: the team now, the product boards with the
// chosen one's stages as a list each, and the orders being fulfilled; all
// read when the screen appears and every 30 s while it is shown, row by row.
// A moved item shows in its new stage at once and is sent with the version
// it was seen at; a refused move reads the boards again, so the other
// person's move shows, with the refusal in `errorText`.
class NativeOverviewView : public QObject {
    Q_OBJECT
    Q_PROPERTY(NativeTeamActivityModel *team READ team CONSTANT)
    Q_PROPERTY(NativeOrderModel *orders READ orders CONSTANT)
    Q_PROPERTY(QVariantList boards READ boards NOTIFY boardsChanged)
    Q_PROPERTY(QString boardId READ boardId WRITE setBoardId NOTIFY boardsChanged)
    Q_PROPERTY(QStringList stages READ stages NOTIFY boardsChanged)
    Q_PROPERTY(int clockedIn READ clockedIn NOTIFY teamChanged)
    Q_PROPERTY(int teamSize READ teamSize NOTIFY teamChanged)
    Q_PROPERTY(int lateOrders READ lateOrders NOTIFY ordersChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(bool loading READ loading NOTIFY busyChanged)
    Q_PROPERTY(bool loaded READ loaded NOTIFY busyChanged)
    Q_PROPERTY(QString errorText READ errorText NOTIFY errorTextChanged)

public:
    static constexpr int refreshIntervalMs = 30'000;

    explicit NativeOverviewView(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] NativeTeamActivityModel *team() const { return m_team; }
    [[nodiscard]] NativeOrderModel *orders() const { return m_orders; }
    // {id, name} of every board.
    [[nodiscard]] QVariantList boards() const;
    [[nodiscard]] QString boardId() const { return m_boardId; }
    void setBoardId(const QString &id);
    [[nodiscard]] QStringList stages() const;
    // The chosen board's work in `stage`; null for a stage it does not have.
    Q_INVOKABLE QAbstractListModel *stageModel(const QString &stage) const;
    [[nodiscard]] int clockedIn() const;
    [[nodiscard]] int teamSize() const { return m_team->rowCount(); }
    [[nodiscard]] int lateOrders() const;
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] bool loading() const { return m_loading; }
    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString errorText() const { return m_error; }

    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void moveItem(const QString &itemId, const QString &stage);
    Q_INVOKABLE void advanceOrder(const QString &orderId);
    // Forgets everything shown: the session ended.
    void clear();

Q_SIGNALS:
    void teamChanged();
    void boardsChanged();
    void ordersChanged();
    void busyChanged();
    void errorTextChanged();
    // A load or a change has finished, well or not (for tests and the screenshot).
    void refreshed();
    void signedOut();

private:
    QCoro::Task<> refreshOnce();
    QCoro::Task<> readBoards();
    QCoro::Task<> moveTask(QString itemId, TarnBoardMove move);
    QCoro::Task<> advanceTask(QString orderId);
    void showBoards(const QList<TarnProductBoard> &boards);
    void fillStages();
    void fail(const TarnAPIError &error);
    void setError(const QString &text);
    void setBusy(bool busy);

    TarnAPI &m_api;
    NativeTeamActivityModel *m_team;
    NativeOrderModel *m_orders;
    QList<TarnProductBoard> m_boards;
    QString m_boardId;
    QHash<QString, NativeBoardItemModel *> m_stages;
    bool m_busy = false;
    bool m_loading = false;
    bool m_loaded = false;
    QString m_error;
    // Bumped when the screen goes away or the session ends.
    int m_generation = 0;
};
