#pragma once

#include <QLockFile>
#include <QObject>
#include <QUrl>

#include <memory>

class QLocalServer;

// One receiver of "pilo-tarn:" addresses per person. The first start of the
// app holds a lock file in the runtime folder and listens on a user-only
// local socket; every later start (the desktop opening a "pilo-tarn:"
// address, or a second click on the launcher) hands its address to the first
// and exits. `tarn sign-in` holds the same name while it waits, so the
// browser's callback reaches it through the same route.
class NativeSingleInstance : public QObject {
    Q_OBJECT

public:
    explicit NativeSingleInstance(const QString &name, QObject *parent = nullptr);
    ~NativeSingleInstance() override;

    // True when this process is now the running instance.
    [[nodiscard]] bool claim();
    // From a later start: sends `url` (empty: just "come forward") to the
    // running instance; false when it could not be reached within two seconds.
    [[nodiscard]] bool forward(const QUrl &url) const;

Q_SIGNALS:
    // A later start came; `url` is its "pilo-tarn:" address, or empty.
    void activated(const QUrl &url);

private:
    void readFrom(class QLocalSocket *socket);

    QString m_lockPath;
    QString m_serverPath;
    std::unique_ptr<QLockFile> m_lock;
    std::unique_ptr<QLocalServer> m_server;
};
