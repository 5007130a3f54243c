#include "workspace/WorkspaceServer.h"

#include "workspace/WorkspaceCertificate.h"
#include "workspace/WorkspaceListener.h"
#include "workspace/WorkspaceRequest.h"
#include "workspace/WorkspaceResponder.h"
#include "workspace/WorkspaceSeed.h"
#include "workspace/WorkspaceTokens.h"
#include "workspace/routes/AgentRoutes.h"
#include "workspace/routes/BankFeedRoutes.h"
#include "workspace/routes/BooksRoutes.h"
#include "workspace/routes/CallRoutes.h"
#include "workspace/routes/ChatRoutes.h"
#include "workspace/routes/CompanyRoutes.h"
#include "workspace/routes/CustomerRoutes.h"
#include "workspace/routes/DocumentRoutes.h"
#include "workspace/routes/GifRoutes.h"
#include "workspace/routes/GoogleRoutes.h"
#include "workspace/routes/HuddleRoutes.h"
#include "workspace/routes/InboxRoutes.h"
#include "workspace/routes/KilnRoutes.h"
#include "workspace/routes/MailRoutes.h"
#include "workspace/routes/MarketScanRoutes.h"
#include "workspace/routes/OverviewRoutes.h"
#include "workspace/routes/OwnerRoutes.h"
#include "workspace/routes/PaymentsRoutes.h"
#include "workspace/routes/PeopleRoutes.h"
#include "workspace/routes/PortalRoutes.h"
#include "workspace/routes/ScheduleRoutes.h"
#include "workspace/routes/SessionRoutes.h"
#include "workspace/routes/SignInRoutes.h"
#include "workspace/routes/SupportRoutes.h"
#include "workspace/routes/TeamRoutes.h"
#include "workspace/routes/TestRoutes.h"
#include "workspace/routes/WebsiteRoutes.h"
#include "workspace/routes/WorkPlanRoutes.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QHttpServerRequest>
#include <QHttpServerResponder>
#include <QTimer>

#include <memory>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// Every connection holds a descriptor: the soft limit (often 1,024) is
// raised as far as the hard one allows. Returns the soft limit in force.
rlim_t raiseDescriptorLimit()
{
    rlimit limit {};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return 1024;
    if (limit.rlim_cur < limit.rlim_max) {
        limit.rlim_cur = limit.rlim_max;
        if (::setrlimit(RLIMIT_NOFILE, &limit) != 0)
            ::getrlimit(RLIMIT_NOFILE, &limit);
    }
    return limit.rlim_cur;
}

// The folder and every file in it are the user's alone, whatever the umask
// was and whatever an earlier version left; files made later (the database's
// journal and WAL) inherit the umask set here.
bool makePrivate(const QString &dataDir)
{
    ::umask(077);
    bool ok = ::chmod(QFile::encodeName(dataDir).constData(), 0700) == 0;
    const QDir dir(dataDir);
    for (const QString &name : dir.entryList(QDir::Files | QDir::Hidden | QDir::System))
        ok = ::chmod(QFile::encodeName(dir.filePath(name)).constData(), 0600) == 0 && ok;
    return ok;
}

} // namespace

WorkspaceServer::WorkspaceServer(WorkspaceOptions options, QObject *parent)
    : QAbstractHttpServer(parent)
    , m_options(std::move(options))
{
}

WorkspaceServer::~WorkspaceServer() = default;

bool WorkspaceServer::start(QString *error)
{
    if (!QDir().mkpath(m_options.dataDir) || !makePrivate(m_options.dataDir)) {
        *error = u"cannot create a private data folder %1"_s.arg(m_options.dataDir);
        return false;
    }
    if (!m_store.open(m_options.dataDir, error))
        return false;
    if (!m_store.isSeeded() && !WorkspaceSeed::plant(m_store)) {
        *error = u"could not plant the demo company"_s;
        return false;
    }

    if (!m_options.autoSignIn.isEmpty()) {
        const std::optional<WorkspacePerson> person = m_options.autoSignIn == "owner"_L1
            ? m_store.person(WorkspaceSeed::ownerId())
            : m_store.personByEmail(m_options.autoSignIn);
        if (!person) {
            *error = u"--auto-sign-in: nobody has the address %1"_s.arg(m_options.autoSignIn);
            return false;
        }
        m_autoSignInPersonId = person->id;
    }

    const WorkspaceCertificate certificate(m_options.dataDir);
    if (!certificate.isValid()) {
        *error = certificate.error();
        return false;
    }
    m_certificatePath = certificate.certificatePath();
    if (!makePrivate(m_options.dataDir)) {
        *error = u"cannot make the files of %1 private"_s.arg(m_options.dataDir);
        return false;
    }

    const rlim_t descriptors = raiseDescriptorLimit();
    const rlim_t reserve = WorkspaceLimits::descriptorReserve;
    const rlim_t spare = descriptors > 2 * reserve ? descriptors - reserve : descriptors / 2;
    const int connections = m_options.maxConnections > 0 ? m_options.maxConnections
                                                         : int(qMin<rlim_t>(WorkspaceLimits::connections, spare));
    WorkspaceConnection::Settings guard { m_options.idleTimeoutMs, m_options.requestTimeoutMs,
        [this](QByteArrayView method, QByteArrayView path) { return m_router.bodyLimit(method, path); } };
    auto *tls = new WorkspaceListener(std::move(guard), connections, this);
    tls->setSslConfiguration(certificate.serverConfiguration());
    if (!tls->start(QHostAddress::LocalHost, m_options.port)) {
        *error = u"cannot listen on 127.0.0.1:%1: %2"_s.arg(m_options.port).arg(tls->errorString());
        return false;
    }
    bind(tls);
    m_url = QUrl(u"https://127.0.0.1:%1/"_s.arg(tls->serverPort()));

    SignInRoutes::add(*this);
    SessionRoutes::add(*this);
    TeamRoutes::add(*this);
    GoogleRoutes::add(*this);
    AgentRoutes::add(*this);
    if (!ChatRoutes::add(*this, error))
        return false;
    HuddleRoutes::add(*this);
    GifRoutes::add(*this);
    if (!MailRoutes::add(*this, error))
        return false;
    PaymentsRoutes::add(*this);
    // After the terminal: the books link to its invoices and payments.
    BooksRoutes::add(*this);
    BankFeedRoutes::add(*this);
    InboxRoutes::add(*this);
    // After the inbox: the register extends the customers it planted.
    if (!CustomerRoutes::add(*this, error))
        return false;
    // After the inbox, whose demo customers the calls name.
    CallRoutes::add(*this);
    CompanyRoutes::add(*this);
    SupportRoutes::add(*this);
    // After the inbox, whose demo customers have the portals.
    PortalRoutes::add(*this);
    // After the inbox, whose demo customers the documents name.
    DocumentRoutes::add(*this);
    OwnerRoutes::add(*this);
    // After the inbox, whose demo customers the events name.
    ScheduleRoutes::add(*this);
    MarketScanRoutes::add(*this);
    KilnRoutes::add(*this);
    // After the inbox, whose demo customers own the sites.
    WebsiteRoutes::add(*this);
    // Last: it reads the time clock, the support board and the calendar.
    OverviewRoutes::add(*this);
    PeopleRoutes::add(*this);
    WorkPlanRoutes::add(*this);
    if (m_options.testFaults)
        TestRoutes::add(*this);
    return true;
}

bool WorkspaceServer::handleRequest(const QHttpServerRequest &httpRequest, QTcpSocket *socket)
{
    const WorkspaceRequest request(httpRequest);
    WorkspaceResponder responder(makeResponder(httpRequest, socket),
        request.method() == "HEAD" ? WorkspaceResponder::Body::Omit : WorkspaceResponder::Body::Send);

    const bool control = request.path().startsWith("/api/test/"_L1);
    std::optional<WorkspaceFaults::Hit> hit;
    if (m_options.testFaults && !control) {
        m_faults.record(request);
        hit = m_faults.take(request.method(), request.path());
    }
    if (!hit) {
        dispatch(request, std::move(responder));
        return true;
    }
    if (hit->cut) {
        // The answer is still in the socket's buffer: aborting drops it unsent.
        const QPointer<QTcpSocket> connection(socket);
        dispatch(request, std::move(responder));
        if (connection)
            connection->abort();
        return true;
    }

    // The held answer outlives this call; the timer's functor must be copyable.
    auto held = std::make_shared<WorkspaceResponder>(std::move(responder));
    QTimer::singleShot(hit->delayMs, Qt::PreciseTimer, this, [this, request, held, reply = std::move(hit->reply)] {
        if (reply)
            held->send(*reply);
        else
            dispatch(request, std::move(*held));
    });
    return true;
}

void WorkspaceServer::missingHandler(const QHttpServerRequest &httpRequest, QTcpSocket *socket)
{
    WorkspaceResponder(makeResponder(httpRequest, socket)).send(WorkspaceReply::notFound());
}

void WorkspaceServer::dispatch(const WorkspaceRequest &incoming, WorkspaceResponder &&responder)
{
    const std::optional<WorkspaceRouter::Match> match = m_router.match(incoming.method(), incoming.path());
    if (!match) {
        responder.send(WorkspaceReply::notFound());
        return;
    }

    WorkspaceRequest request = incoming;
    request.setArguments(match->arguments);
    if (match->route->access == WorkspaceRouter::Access::Session) {
        std::optional<WorkspaceStore::Session> session = m_store.session(request.sessionToken());
        if (!session) {
            responder.send(WorkspaceReply::signInRequired());
            return;
        }
        if (!request.isSafeMethod()) {
            const std::optional<QByteArray> csrf = request.header("X-CSRF-Token");
            if (!csrf || !WorkspaceTokens::equal(QString::fromUtf8(*csrf), session->csrf)) {
                responder.send(WorkspaceReply::csrfRefused());
                return;
            }
        }
        request.setSession(std::move(*session));
        if (!request.isSafeMethod()) {
            if (const std::optional<QByteArray> key = request.header("Idempotency-Key"); key && !key->isEmpty()) {
                WorkspaceReplays::Key replay { request.session().id, *key, request.method(), request.path() };
                const qint64 now = QDateTime::currentMSecsSinceEpoch();
                if (const std::optional<WorkspaceReply> answered = m_replays.answerTo(replay, now)) {
                    responder.send(*answered);
                    return;
                }
                responder.setWitness([this, replay = std::move(replay)](const WorkspaceReply &reply) {
                    m_replays.remember(replay, reply, QDateTime::currentMSecsSinceEpoch());
                });
            }
        }
    }
    match->route->run(request, std::move(responder));
}
