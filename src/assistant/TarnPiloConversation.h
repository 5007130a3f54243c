#pragma once

#include "assistant/NativeAgentRequestModel.h"
#include "assistant/TarnAgentConversation.h"
#include "assistant/TarnPiloRun.h"
#include "service/TarnAPIError.h"

#include <QCoroTask>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantList>

#include <functional>
#include <optional>

class TarnAPI;

// The assistant panel's state: the person's conversation with the agent,
// the send under way and its outcome. Every request carries a key made
// here, so a send whose answer was lost is settled by asking again with the
// same key: the service answers the id it stored, or stores the request now
// if it never arrived, and never keeps it twice. Until that is settled no
// other request is sent.
class TarnPiloConversation : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool loaded READ loaded NOTIFY conversationChanged)
    Q_PROPERTY(bool configured READ configured NOTIFY conversationChanged)
    Q_PROPERTY(bool online READ online NOTIFY conversationChanged)
    Q_PROPERTY(bool canSend READ canSend NOTIFY canSendChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(bool sending READ sending NOTIFY sendingChanged)
    Q_PROPERTY(bool uncertainSend READ uncertainSend NOTIFY uncertainSendChanged)
    Q_PROPERTY(bool showHistory READ showHistory WRITE setShowHistory NOTIFY showHistoryChanged)
    Q_PROPERTY(int foldedCount READ foldedCount NOTIFY conversationChanged)
    // Set while someone looks at the conversation: it is polled then, as
    // long as a request is unfinished.
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged)
    Q_PROPERTY(NativeAgentRequestModel *requests READ requestsModel CONSTANT)
    // The empty panel's starter prompts: maps of label, symbol and prompt.
    Q_PROPERTY(QVariantList suggestions READ suggestions CONSTANT)

public:
    // How often an unfinished conversation is looked at again.
    static constexpr int pollMs = 2000;

    explicit TarnPiloConversation(TarnAPI &api, QObject *parent = nullptr);

    [[nodiscard]] const std::optional<TarnAgentConversation> &conversation() const { return m_conversation; }
    [[nodiscard]] bool loaded() const { return m_conversation.has_value(); }
    [[nodiscard]] bool configured() const { return m_conversation && m_conversation->configured; }
    [[nodiscard]] bool online() const { return m_conversation && m_conversation->online; }
    // Sending needs an agent that is set up and connected, and no send
    // under way or unsettled.
    [[nodiscard]] bool canSend() const { return online() && configured() && !m_sending && !m_uncertain; }
    [[nodiscard]] QString error() const { return m_error; }
    [[nodiscard]] bool sending() const { return m_sending; }
    [[nodiscard]] bool uncertainSend() const { return m_uncertain; }
    [[nodiscard]] bool showHistory() const { return m_showHistory; }
    void setShowHistory(bool show);
    [[nodiscard]] int foldedCount() const { return m_folded; }
    [[nodiscard]] bool active() const { return m_active; }
    void setActive(bool active);
    [[nodiscard]] NativeAgentRequestModel &requestModel() { return m_model; }
    [[nodiscard]] NativeAgentRequestModel *requestsModel() { return &m_model; }

    // Reloads the conversation; with resolveUncertain, settles an unsettled
    // send first.
    QCoro::Task<> refresh(bool resolveUncertain);
    // Whether the service accepted the request.
    QCoro::Task<bool> send(QString text, std::optional<QString> page, TarnPiloRun run);

    [[nodiscard]] static QVariantList suggestions();
    // The empty panel's greeting, at the local clock's hour.
    [[nodiscard]] Q_INVOKABLE QString greeting(const QString &name) const;

    // For QML: the same, without waiting.
    Q_INVOKABLE void reload();
    Q_INVOKABLE void ask(const QString &text, const QString &page, bool process);
    Q_INVOKABLE void rename(const QString &id, const QString &title);
    Q_INVOKABLE void remove(const QString &id);

    // Forgets everything of the person who signed out.
    void clear();

    // The clock the history cut-off reads; tests fix it.
    void setClock(std::function<QDateTime()> clock);

Q_SIGNALS:
    void conversationChanged();
    void canSendChanged();
    void errorChanged();
    void sendingChanged();
    void uncertainSendChanged();
    void showHistoryChanged();
    void activeChanged();
    // A send was accepted (the composer clears itself).
    void sent();

private:
    struct Pending {
        QString key;
        QString text;
        std::optional<QString> page;
        TarnPiloRun run;
    };
    // Sends a pending request under its key; the error, if it failed.
    QCoro::Task<std::optional<TarnAPIError>> askPending(Pending pending);
    QCoro::Task<> change(std::function<QCoro::Task<>()> call);
    void setError(const QString &error);
    void setSending(bool sending);
    void setUncertain(bool uncertain);
    void apply(TarnAgentConversation conversation);
    void showRows();
    void updatePolling();

    TarnAPI &m_api;
    NativeAgentRequestModel m_model;
    std::optional<TarnAgentConversation> m_conversation;
    std::optional<Pending> m_pending;
    QString m_error;
    bool m_sending = false;
    bool m_uncertain = false;
    bool m_showHistory = false;
    bool m_active = false;
    int m_folded = 0;
    quint64 m_generation = 0;
    QTimer m_poll;
    std::function<QDateTime()> m_clock;
};
