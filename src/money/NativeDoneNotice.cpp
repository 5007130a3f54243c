#include "money/NativeDoneNotice.h"

NativeDoneNotice::NativeDoneNotice(QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(standardTime);
    connect(&m_timer, &QTimer::timeout, this, &NativeDoneNotice::changed);
}

void NativeDoneNotice::show(const QString &text)
{
    m_text = text;
    m_timer.start();
    Q_EMIT changed();
}

void NativeDoneNotice::dismiss()
{
    m_timer.stop();
    Q_EMIT changed();
}
