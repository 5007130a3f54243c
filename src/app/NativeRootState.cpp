#include "app/NativeRootState.h"

#include "auth/NativeAuth.h"
#include "service/TarnAPI.h"
#include "service/TarnSessionStore.h"
#include "shell/TarnAccess.h"
#include "shell/TarnNavigation.h"
#include "shell/TarnShell.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

const auto signInToContinue = "Sign in to continue."_L1;

QString textOf(const std::exception &error)
{
    return QString::fromUtf8(error.what());
}

} // namespace

NativeRootState::NativeRootState(TarnAPI &api, NativeAuth &auth, TarnNavigation &navigation, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_auth(auth)
    , m_navigation(navigation)
{
    connect(&m_auth, &NativeAuth::waitingChanged, this, &NativeRootState::changed);
    // Any request that finds the session over brings the window back here.
    connect(&m_api, &TarnAPI::signedOut, this, [this] {
        if (m_phase == Phase::SignedIn) {
            begin(false);
            endSession(signInToContinue);
        }
    });
}

NativeRootState::~NativeRootState() = default;

QString NativeRootState::personName() const
{
    return m_api.session() ? m_api.session()->name : QString();
}

QString NativeRootState::personEmail() const
{
    return m_api.session() ? m_api.session()->email : QString();
}

QString NativeRootState::signInAddress() const
{
    return m_auth.pendingAddress();
}

int NativeRootState::begin(bool busy)
{
    m_busy = busy;
    return ++m_generation;
}

void NativeRootState::show(Phase phase, QString message, QString detail)
{
    m_phase = phase;
    m_message = std::move(message);
    m_detail = std::move(detail);
    Q_EMIT changed();
}

void NativeRootState::endSession(QString message)
{
    m_navigation.signedOut();
    show(Phase::SignedOut, std::move(message));
    Q_EMIT signedOut();
}

void NativeRootState::setStartDestination(const std::optional<TarnDestination> &destination)
{
    m_startDestination = destination;
}

void NativeRootState::start()
{
    const int generation = begin(true);
    show(Phase::Starting);
    restore(generation);
}

void NativeRootState::signIn()
{
    const int generation = begin(true);
    show(Phase::SigningIn);
    runSignIn(generation);
}

void NativeRootState::cancelSignIn()
{
    m_auth.cancel();
}

bool NativeRootState::submitCallbackAddress(const QString &text)
{
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != QLatin1StringView(NativeAuth::callbackScheme)) {
        m_message = u"Paste the whole address that starts with pilo-tarn://"_s;
        Q_EMIT changed();
        return false;
    }
    return m_auth.deliver(url);
}

void NativeRootState::openCallback(const QUrl &url)
{
    m_auth.deliver(url);
}

void NativeRootState::signOut()
{
    const int generation = begin(true);
    Q_EMIT changed();
    runSignOut(generation);
}

QCoro::Task<> NativeRootState::restore(int generation)
{
    const QPointer<NativeRootState> self(this);
    const std::optional<QString> token = co_await m_api.sessionStore().token();
    if (!self || !current(generation))
        co_return;
    if (!token) {
        m_busy = false;
        show(Phase::SignedOut);
        co_return;
    }
    co_await loadSession(generation);
}

QCoro::Task<> NativeRootState::loadSession(int generation)
{
    const QPointer<NativeRootState> self(this);
    try {
        const TarnSession session = co_await m_api.refreshSession();
        if (!self || !current(generation))
            co_return;
        m_busy = false;
        const TarnAccess access = TarnAccess::fromSession(session);
        if (!TarnShell::home(access)) {
            show(Phase::SignedOut, u"This account cannot open Tarn Home."_s);
            co_return;
        }
        m_navigation.setAccess(access);
        if (!m_startDestination || !m_navigation.open(*m_startDestination))
            m_navigation.openHome();
        show(Phase::SignedIn);
    } catch (const TarnAPIError &error) {
        if (!self || !current(generation))
            co_return;
        m_busy = false;
        // The message says what to do; the detail says what failed, in the
        // error's own words ("Connection refused", "Pilo Tarn returned HTTP 502.").
        if (error.kind() == TarnAPIError::Kind::signedOut)
            show(Phase::SignedOut, signInToContinue);
        else
            show(Phase::Unreachable, u"Tarn is unreachable. Check your connection and retry."_s, textOf(error));
    }
}

QCoro::Task<> NativeRootState::runSignIn(int generation)
{
    const QPointer<NativeRootState> self(this);
    try {
        co_await m_auth.signIn();
    } catch (const std::exception &error) {
        if (self && current(generation)) {
            m_busy = false;
            show(Phase::SignedOut, textOf(error));
        }
        co_return;
    }
    if (self && current(generation))
        co_await loadSession(generation);
}

QCoro::Task<> NativeRootState::runSignOut(int generation)
{
    const QPointer<NativeRootState> self(this);
    try {
        co_await m_api.logout();
    } catch (const std::exception &) {
        // Signed out here either way; the service forgets the session on its own.
    }
    if (!self || !current(generation))
        co_return;
    m_busy = false;
    endSession({});
}
