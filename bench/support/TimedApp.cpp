#include "TimedApp.h"

#include "BenchTime.h"

#include <QElapsedTimer>

#include <typeinfo>

using namespace Qt::StringLiterals;

void TimedApp::resetLongest()
{
    longest = 0;
    longestEvent.clear();
}

QString TimedApp::longestText() const
{
    return u"longest event handled %1 ms (%2)"_s.arg(BenchTime::ms(longest)).arg(QString::fromLatin1(longestEvent));
}

bool TimedApp::notify(QObject *receiver, QEvent *event)
{
    if (!watching || m_depth > 0)
        return QGuiApplication::notify(receiver, event);
    const QByteArray kind = QByteArray(typeid(*event).name()) + ' ' + QByteArray::number(event->type()) + " to "
        + receiver->metaObject()->className();
    QElapsedTimer clock;
    clock.start();
    ++m_depth;
    const bool handled = QGuiApplication::notify(receiver, event);
    --m_depth;
    if (clock.nsecsElapsed() > longest) {
        longest = clock.nsecsElapsed();
        longestEvent = kind;
    }
    return handled;
}
