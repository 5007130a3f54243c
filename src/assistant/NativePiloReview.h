#pragma once

#include "assistant/NativeAgentRequestModel.h"

#include <QCoroTask>
#include <QObject>
#include <QString>

class TarnAPI;

// The owner's review of blocked work: everyone's blocked requests, each
// resumed with a decision and a note on how it was reconciled.
class NativePiloReview : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool loaded READ loaded NOTIFY loadedChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    Q_PROPERTY(NativeAgentRequestModel *requests READ requestsModel CONSTANT)

public:
    explicit NativePiloReview(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] bool loaded() const { return m_loaded; }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] bool busy() const { return m_busy; }
    [[nodiscard]] NativeAgentRequestModel &requestModel() { return m_model; }
    [[nodiscard]] NativeAgentRequestModel *requestsModel() { return &m_model; }

    QCoro::Task<> refresh();
    // Whether the service took the decision ("approve" or "decline").
    QCoro::Task<bool> resume(QString id, QString decision, QString reconciliation);

    // Forgets the list when the person signs out.
    void clear();

    Q_INVOKABLE void reload();
    Q_INVOKABLE void decide(const QString &id, bool approve, const QString &reconciliation);

Q_SIGNALS:
    void loadedChanged();
    void errorChanged();
    void busyChanged();

private:
    void setError(const QString &error);
    void setBusy(bool busy);

    TarnAPI &m_api;
    NativeAgentRequestModel m_model;
    QString m_error;
    bool m_loaded = false;
    bool m_busy = false;
    quint64 m_generation = 0;
};
