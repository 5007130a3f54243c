#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

// The lines of standard input (typed in a terminal, or piped), read as they
// come without blocking the event loop, so that a command can wait for a
// line and for something else at once.
class TerminalInput : public QObject {
    Q_OBJECT

public:
    explicit TerminalInput(QObject *parent = nullptr);

Q_SIGNALS:
    void lineRead(const QString &line);
    // The end of input (Ctrl+D, or the pipe closed): no more lines come.
    void ended();

private:
    void readAvailable();

    QSocketNotifier m_notifier;
    QByteArray m_pending;
};
