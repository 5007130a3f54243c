#include "screens/company/NativeCompanyView.h"

#include "screens/company/TarnCompanyCalls.h"
#include "service/TarnAPI.h"
#include "service/TarnAPIError.h"
#include "shell/NativeStateErrors.h"
#include "shell/TarnAccess.h"

#include <QPointer>

using namespace Qt::StringLiterals;

NativeCompanyView::NativeCompanyView(TarnAPI &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
    , m_team(new NativeTeamModel(this))
    , m_sops(new NativeSopModel(this))
    , m_thoughts(new NativeThoughtModel(this))
    , m_connections(new NativeConnectionsView(api, this))
{
    connect(&m_api, &TarnAPI::sessionChanged, this, &NativeCompanyView::accountChanged);
    connect(m_connections, &NativeConnectionsView::signedOut, this, &NativeCompanyView::signedOut);
}

QString NativeCompanyView::myName() const
{
    return m_api.session() ? m_api.session()->name : QString();
}

QString NativeCompanyView::myEmail() const
{
    return m_api.session() ? m_api.session()->email : QString();
}

bool NativeCompanyView::managesTeam() const
{
    return m_api.session() && TarnAccess::fromSession(*m_api.session()).owner;
}

QStringList NativeCompanyView::allApps()
{
    return { u"Home"_s, u"Sales"_s, u"Support"_s, u"Docs"_s, u"Books"_s, u"Payments"_s, u"Payroll"_s, u"Kiln"_s,
        u"Website"_s, u"Clients"_s, u"Calls"_s, u"Market Scan"_s, u"Overview"_s, u"Schedule"_s, u"Mail"_s };
}

bool NativeCompanyView::mayRead(Part part) const
{
    if (!m_api.session())
        return false;
    const TarnAccess access = TarnAccess::fromSession(*m_api.session());
    switch (part) {
    case Part::Team:
        return access.owner;
    case Part::Sops:
        return access.owner || access.has(u"Docs"_s);
    case Part::Thoughts:
        return access.owner || access.has(u"Overview"_s);
    }
    return false;
}

void NativeCompanyView::setSearch(const QString &search)
{
    if (m_search == search)
        return;
    m_search = search;
    Q_EMIT searchChanged();
    reread(Part::Team);
}

QCoro::Task<> NativeCompanyView::reread(Part part)
{
    const QPointer<NativeCompanyView> self(this);
    try {
        if (part == Part::Team)
            co_await loadTeam();
        else
            co_await loadThoughts();
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
}

int NativeCompanyView::unreadPosts() const
{
    const QList<TarnThoughtPost> &rows = m_thoughts->rows();
    return int(std::count_if(rows.begin(), rows.end(), [](const TarnThoughtPost &post) { return !post.read; }));
}

void NativeCompanyView::appear()
{
    load(++m_generation);
}

void NativeCompanyView::disappear()
{
    ++m_generation;
}

void NativeCompanyView::clear()
{
    ++m_generation;
    m_team->setRows({});
    m_sops->setRows({});
    m_thoughts->setRows({});
    m_connections->clear();
    m_search.clear();
    m_loading = m_loaded = m_busy = false;
    m_error.clear();
    Q_EMIT searchChanged();
    Q_EMIT boardChanged();
    Q_EMIT busyChanged();
    Q_EMIT errorTextChanged();
}

QCoro::Task<> NativeCompanyView::load(int generation)
{
    const QPointer<NativeCompanyView> self(this);
    if (!m_loaded) {
        m_loading = true;
        Q_EMIT busyChanged();
    }
    try {
        co_await loadTeam();
        if (!self || generation != m_generation)
            co_return;
        if (mayRead(Part::Sops)) {
            const QList<TarnSop> sops = co_await TarnCompanyCalls::companySops(m_api);
            if (!self || generation != m_generation)
                co_return;
            m_sops->setRows(sops);
        }
        co_await loadThoughts();
        if (!self || generation != m_generation)
            co_return;
    } catch (const TarnAPIError &error) {
        if (!self || generation != m_generation)
            co_return;
        fail(error);
    }
    m_loading = false;
    m_loaded = true;
    Q_EMIT busyChanged();
    Q_EMIT refreshed();
}

QCoro::Task<> NativeCompanyView::loadTeam()
{
    if (!mayRead(Part::Team))
        co_return;
    const QPointer<NativeCompanyView> self(this);
    const QString query = m_search;
    const QList<TarnTeamMember> team = co_await TarnCompanyCalls::peopleSearch(m_api, query);
    // A later search has been typed meanwhile: its own answer shows it.
    if (self && query == m_search)
        m_team->setRows(team);
}

QCoro::Task<> NativeCompanyView::loadThoughts()
{
    if (!mayRead(Part::Thoughts))
        co_return;
    const QPointer<NativeCompanyView> self(this);
    const QList<TarnThoughtPost> posts = co_await TarnCompanyCalls::thoughtBoard(m_api);
    if (!self)
        co_return;
    m_thoughts->setRows(posts);
    Q_EMIT boardChanged();
}

void NativeCompanyView::renameMe(const QString &name)
{
    if (m_busy || name.simplified() == myName())
        return;
    renameTask(TarnAccountRename { name.simplified() });
}

QCoro::Task<> NativeCompanyView::renameTask(TarnAccountRename rename)
{
    const QPointer<NativeCompanyView> self(this);
    setBusy(true);
    QString refusal;
    try {
        co_await TarnCompanyCalls::renameMyAccount(m_api, rename);
        if (!self)
            co_return;
        // The session carries the name everywhere else it is shown.
        co_await m_api.refreshSession();
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
        refusal = error.text();
    }
    if (self)
        finish(refusal);
}

void NativeCompanyView::addMember(
    const QString &name, const QString &email, const QString &role, const QStringList &apps)
{
    if (m_busy || !managesTeam())
        return;
    addTask(TarnTeamMemberDraft { name, email, role, apps });
}

QCoro::Task<> NativeCompanyView::addTask(TarnTeamMemberDraft draft)
{
    const QPointer<NativeCompanyView> self(this);
    setBusy(true);
    QString refusal;
    try {
        co_await TarnCompanyCalls::createTeamMember(m_api, draft);
        if (!self)
            co_return;
        co_await loadTeam();
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
        refusal = error.text();
    }
    if (self)
        finish(refusal);
}

void NativeCompanyView::setMemberApp(const QString &personId, const QString &app, bool allowed)
{
    const QList<TarnTeamMember> &rows = m_team->rows();
    const auto at
        = std::find_if(rows.begin(), rows.end(), [&personId](const TarnTeamMember &m) { return m.id == personId; });
    if (m_busy || at == rows.end() || at->owner || !at->apps || at->apps->contains(app) == allowed)
        return;
    QStringList apps;
    // Kept in the shell's order, whichever order they were given in.
    for (const QString &known : allApps()) {
        if (known == app ? allowed : at->apps->contains(known))
            apps.append(known);
    }
    accessTask(personId, TarnTeamAccess { apps });
}

QCoro::Task<> NativeCompanyView::accessTask(QString personId, TarnTeamAccess access)
{
    const QPointer<NativeCompanyView> self(this);
    setBusy(true);
    QString refusal;
    try {
        co_await TarnCompanyCalls::updateTeamAccess(m_api, personId, access);
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
        refusal = error.text();
    }
    if (!self)
        co_return;
    co_await reread(Part::Team);
    if (self)
        finish(refusal);
}

const TarnThoughtPost *NativeCompanyView::post(const QString &id) const
{
    const QList<TarnThoughtPost> &rows = m_thoughts->rows();
    const auto at = std::find_if(rows.begin(), rows.end(), [&id](const TarnThoughtPost &p) { return p.id == id; });
    return at == rows.end() ? nullptr : &*at;
}

void NativeCompanyView::showPost(const TarnThoughtPost &changed)
{
    QList<TarnThoughtPost> next = m_thoughts->rows();
    for (TarnThoughtPost &post : next)
        if (post.id == changed.id)
            post = changed;
    m_thoughts->setRows(next);
    Q_EMIT boardChanged();
}

void NativeCompanyView::markRead(const QString &postId)
{
    const TarnThoughtPost *shown = post(postId);
    if (!shown || shown->read)
        return;
    // Shown read at once: the mark is the reader's own and cannot clash.
    TarnThoughtPost read = *shown;
    read.read = true;
    showPost(read);
    readTask(postId);
}

QCoro::Task<> NativeCompanyView::readTask(QString postId)
{
    const QPointer<NativeCompanyView> self(this);
    try {
        co_await TarnCompanyCalls::markPostRead(m_api, postId);
    } catch (const TarnAPIError &error) {
        if (self)
            fail(error);
    }
    if (self)
        Q_EMIT actionFinished();
}

void NativeCompanyView::decide(const QString &postId, const QString &decision)
{
    const TarnThoughtPost *shown = post(postId);
    if (m_busy || !shown || shown->decision == decision)
        return;
    decideTask(postId, TarnPostDecision { decision, shown->version });
}

QCoro::Task<> NativeCompanyView::decideTask(QString postId, TarnPostDecision decision)
{
    const QPointer<NativeCompanyView> self(this);
    setBusy(true);
    QString refusal;
    try {
        const TarnThoughtPost decided = co_await TarnCompanyCalls::decidePost(m_api, postId, decision);
        if (!self)
            co_return;
        showPost(decided);
    } catch (const TarnAPIError &error) {
        if (!self)
            co_return;
        fail(error);
        refusal = error.text();
    }
    if (!self)
        co_return;
    // Someone decided first: show the board as it now is.
    if (!refusal.isEmpty())
        co_await reread(Part::Thoughts);
    if (self)
        finish(refusal);
}

void NativeCompanyView::finish(const QString &refusal)
{
    setError(refusal);
    setBusy(false);
    Q_EMIT actionFinished();
}

void NativeCompanyView::fail(const TarnAPIError &error)
{
    NativeStateErrors::fail(*this, m_error, error);
}

void NativeCompanyView::setError(const QString &text)
{
    NativeStateErrors::show(*this, m_error, text);
}

void NativeCompanyView::setBusy(bool busy)
{
    if (m_busy == busy)
        return;
    m_busy = busy;
    Q_EMIT busyChanged();
}
