#include "chat/huddle/NativeScreenCastPortal.h"

#include <QCoroDBusPendingCall>
#include <QCoroSignal>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QPointer>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString desktopPath = u"/org/freedesktop/portal/desktop"_s;
const QString screenCast = u"org.freedesktop.portal.ScreenCast"_s;
const QString requestInterface = u"org.freedesktop.portal.Request"_s;
const QString sessionInterface = u"org.freedesktop.portal.Session"_s;

constexpr uint monitorSource = 1;
constexpr uint embeddedCursor = 2;

QDBusMessage portalCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(service, desktopPath, screenCast, method);
    call.setArguments(arguments);
    return call;
}

// The first stream's PipeWire node, from Start's a(ua{sv}).
std::optional<quint32> firstNode(const QVariant &streams)
{
    if (streams.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    const QDBusArgument list = streams.value<QDBusArgument>();
    list.beginArray();
    std::optional<quint32> node;
    if (!list.atEnd()) {
        quint32 id = 0;
        QVariantMap properties;
        list.beginStructure();
        list >> id >> properties;
        list.endStructure();
        node = id;
    }
    return node;
}

} // namespace

NativeScreenCastPortal::NativeScreenCastPortal(QObject *parent)
    : QObject(parent)
{
}

NativeScreenCastPortal::~NativeScreenCastPortal()
{
    close();
}

QCoro::Task<NativeScreenCastPortal::Answer> NativeScreenCastPortal::request(
    QString method, QVariantList arguments, QVariantMap options)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QPointer<NativeScreenCastPortal> self(this);
    // The request's path is known before the call, so its answer cannot
    // slip past: the portal may answer before the call itself returns.
    const QString token = u"pilotarn%1"_s.arg(++m_tokens);
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    QString path = u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(sender, token);
    options.insert(u"handle_token"_s, token);
    arguments.append(options);
    m_answer.reset();
    listen(path, true);
    const QDBusMessage call = portalCall(method, arguments);
    const QDBusPendingCall pending = bus.asyncCall(call);
    const QDBusMessage reply = co_await pending;
    if (!self)
        co_return Answer {};
    Answer failed { .code = 2, .results = {}, .error = reply.errorMessage() };
    if (reply.type() == QDBusMessage::ErrorMessage) {
        listen(path, false);
        co_return failed;
    }
    // Portals older than the token rule pick a path of their own.
    const QString handle = reply.arguments().value(0).value<QDBusObjectPath>().path();
    if (!handle.isEmpty() && handle != path) {
        listen(path, false);
        path = handle;
        listen(path, true);
    }
    while (!m_answer) {
        co_await qCoro(this, &NativeScreenCastPortal::answered);
        if (!self)
            co_return Answer {};
    }
    listen(path, false);
    Answer answer = *m_answer;
    m_answer.reset();
    co_return answer;
}

void NativeScreenCastPortal::listen(const QString &request, bool on)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QString signal = u"Response"_s;
    const char *slot = SLOT(requestAnswered(uint, QVariantMap));
    if (on)
        bus.connect(service, request, requestInterface, signal, this, slot);
    else
        bus.disconnect(service, request, requestInterface, signal, this, slot);
}

void NativeScreenCastPortal::requestAnswered(uint code, const QVariantMap &results)
{
    if (m_answer)
        return;
    m_answer = Answer { .code = code, .results = results, .error = {} };
    Q_EMIT answered();
}

QCoro::Task<uint> NativeScreenCastPortal::cursorModes()
{
    QDBusMessage call
        = QDBusMessage::createMethodCall(service, desktopPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call << screenCast << u"AvailableCursorModes"_s;
    const QDBusPendingCall pending = QDBusConnection::sessionBus().asyncCall(call);
    const QDBusMessage reply = co_await pending;
    // Portals before version 2 have no cursor modes at all.
    if (reply.type() == QDBusMessage::ErrorMessage)
        co_return 0U;
    co_return reply.arguments().value(0).value<QDBusVariant>().variant().toUInt();
}

QCoro::Task<NativeScreenCastPortal::Cast> NativeScreenCastPortal::start()
{
    // One question at a time: the answers of two would cross.
    if (m_starting)
        co_return Cast { .error = u"the desktop is still asking about the last one"_s };
    close();
    const QPointer<NativeScreenCastPortal> self(this);
    m_starting = true;
    const auto done = qScopeGuard([self] {
        if (self)
            self->m_starting = false;
    });
    if (!QDBusConnection::sessionBus().isConnected())
        co_return Cast { .error = u"there is no session bus"_s };
    const uint cursors = co_await cursorModes();
    if (!self)
        co_return Cast {};

    QString createSession = u"CreateSession"_s;
    QVariantList createArguments;
    QVariantMap sessionOptions { { u"session_handle_token"_s, u"pilotarn%1"_s.arg(++m_tokens) } };
    const Answer created
        = co_await request(std::move(createSession), std::move(createArguments), std::move(sessionOptions));
    if (!self || !created.error.isEmpty() || created.code != 0)
        co_return Cast { .error = created.error.isEmpty() ? u"the desktop did not open a session"_s : created.error };
    m_session = created.results.value(u"session_handle"_s).toString();
    QDBusConnection::sessionBus().connect(
        service, m_session, sessionInterface, u"Closed"_s, this, SLOT(sessionClosed()));
    const QVariant session = QVariant::fromValue(QDBusObjectPath(m_session));

    QVariantMap sources { { u"types"_s, monitorSource }, { u"multiple"_s, false } };
    if (cursors & embeddedCursor)
        sources.insert(u"cursor_mode"_s, embeddedCursor);
    QString selectSources = u"SelectSources"_s;
    QVariantList selectArguments { session };
    const Answer selected = co_await request(std::move(selectSources), std::move(selectArguments), std::move(sources));
    if (!self)
        co_return Cast {};
    // The desktop's own picker is shown by Start: refusing it is the
    // person's choice, not a failure.
    Answer started;
    if (selected.error.isEmpty() && selected.code == 0) {
        QString startCast = u"Start"_s;
        QVariantList startArguments { session, QString() };
        QVariantMap startOptions;
        started = co_await request(std::move(startCast), std::move(startArguments), std::move(startOptions));
        if (!self)
            co_return Cast {};
    } else {
        started = selected;
    }
    const std::optional<quint32> node = firstNode(started.results.value(u"streams"_s));
    if (!started.error.isEmpty() || started.code != 0 || !node) {
        close();
        if (started.error.isEmpty() && started.code != 0)
            co_return Cast { .outcome = Outcome::Refused, .error = {}, .fd = -1, .node = 0 };
        co_return Cast { .error = started.error.isEmpty() ? u"the desktop offered no screen"_s : started.error };
    }

    QDBusMessage open = portalCall(u"OpenPipeWireRemote"_s, { session, QVariantMap() });
    const QDBusPendingCall pending = QDBusConnection::sessionBus().asyncCall(open);
    const QDBusMessage remote = co_await pending;
    if (!self)
        co_return Cast {};
    if (remote.type() == QDBusMessage::ErrorMessage) {
        close();
        co_return Cast { .error = remote.errorMessage() };
    }
    m_remote = remote.arguments().value(0).value<QDBusUnixFileDescriptor>();
    co_return Cast { .outcome = Outcome::Started, .error = {}, .fd = m_remote.fileDescriptor(), .node = *node };
}

void NativeScreenCastPortal::close()
{
    m_remote = QDBusUnixFileDescriptor();
    if (m_session.isEmpty())
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.disconnect(service, m_session, sessionInterface, u"Closed"_s, this, SLOT(sessionClosed()));
    bus.asyncCall(QDBusMessage::createMethodCall(service, m_session, sessionInterface, u"Close"_s));
    m_session.clear();
}

void NativeScreenCastPortal::sessionClosed()
{
    QDBusConnection::sessionBus().disconnect(
        service, m_session, sessionInterface, u"Closed"_s, this, SLOT(sessionClosed()));
    m_session.clear();
    m_remote = QDBusUnixFileDescriptor();
    Q_EMIT closed();
}
