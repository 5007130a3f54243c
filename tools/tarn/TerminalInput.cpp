#include "TerminalInput.h"

#include <cerrno>

#include <unistd.h>

TerminalInput::TerminalInput(QObject *parent)
    : QObject(parent)
    , m_notifier(STDIN_FILENO, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &TerminalInput::readAvailable);
}

void TerminalInput::readAvailable()
{
    char buffer[4096];
    const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (count > 0) {
        m_pending.append(buffer, count);
        qsizetype end = 0;
        while ((end = m_pending.indexOf('\n')) >= 0) {
            const QByteArray line = m_pending.first(end);
            m_pending.remove(0, end + 1);
            Q_EMIT lineRead(QString::fromUtf8(line).trimmed());
        }
        return;
    }
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    // The end, or an input that cannot be read: either way nothing more comes.
    m_notifier.setEnabled(false);
    if (!m_pending.isEmpty())
        Q_EMIT lineRead(QString::fromUtf8(std::exchange(m_pending, {})).trimmed());
    Q_EMIT ended();
}
