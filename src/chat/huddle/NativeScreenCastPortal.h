#pragma once

#include <QCoroTask>
#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <optional>

// A screen cast through the desktop portal, the way a Wayland desktop lets
// an app see its screen: the desktop asks the person which monitor to share
// (or refuses on its own), then hands over a PipeWire remote and the node
// of that monitor's stream. Every step answers later, on a request object's
// Response signal; nothing here waits on the bus.
//
// The session lasts until close() or until the desktop ends it, which it
// says with `closed` (its sharing indicator was stopped, say).
class NativeScreenCastPortal : public QObject {
    Q_OBJECT

public:
    explicit NativeScreenCastPortal(QObject *parent = nullptr);
    ~NativeScreenCastPortal() override;

    enum class Outcome { Started, Refused, Failed };
    struct Cast {
        Outcome outcome = Outcome::Failed;
        QString error; // why it failed
        int fd = -1; // the PipeWire remote, open until close()
        quint32 node = 0;
    };
    // Opens a session and asks for one monitor, drawn with its cursor when
    // the desktop can. A running session is closed first.
    [[nodiscard]] QCoro::Task<Cast> start();
    void close();

Q_SIGNALS:
    void closed();
    void answered();

private Q_SLOTS:
    void requestAnswered(uint code, const QVariantMap &results);
    void sessionClosed();

private:
    struct Answer {
        uint code = 2; // 0 done, 1 refused by the person, 2 ended otherwise
        QVariantMap results;
        QString error; // the call itself failed
    };
    // Calls a portal method that answers through a request object, and
    // waits for that answer.
    QCoro::Task<Answer> request(QString method, QVariantList arguments, QVariantMap options);
    QCoro::Task<uint> cursorModes();
    // Follows, or stops following, the answer of the request at `request`.
    void listen(const QString &request, bool on);

    QString m_session;
    QDBusUnixFileDescriptor m_remote;
    std::optional<Answer> m_answer;
    quint64 m_tokens = 0;
    bool m_starting = false;
};
