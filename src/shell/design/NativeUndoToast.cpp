#include "shell/design/NativeUndoToast.h"

NativeUndoToast::NativeUndoToast(QObject *parent)
    : NativeUndoToast(standardTime, parent)
{
}

NativeUndoToast::NativeUndoToast(std::chrono::milliseconds time, QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(time);
    connect(&m_timer, &QTimer::timeout, this, [this] { end(false); });
}

void NativeUndoToast::offer(const QString &text, const QString &key)
{
    if (key.isEmpty())
        return;
    if (shown())
        end(false);
    m_text = text;
    m_key = key;
    m_timer.start();
    Q_EMIT offerChanged();
}

void NativeUndoToast::undo()
{
    if (shown())
        end(true);
}

void NativeUndoToast::dismiss()
{
    if (shown())
        end(false);
}

void NativeUndoToast::end(bool undoing)
{
    m_timer.stop();
    const QString key = m_key;
    m_key.clear();
    m_text.clear();
    Q_EMIT offerChanged();
    if (undoing)
        Q_EMIT undone(key);
    else
        Q_EMIT stood(key);
}
