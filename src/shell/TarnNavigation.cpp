#include "shell/TarnNavigation.h"

#include <QSettings>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

template <typename T, typename Signal> void assign(TarnNavigation *owner, T &field, const T &value, Signal changed)
{
    if (field == value)
        return;
    field = value;
    Q_EMIT(owner->*changed)();
}

} // namespace

TarnNavigation::TarnNavigation(QSettings *settings, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
{
    Q_ASSERT(m_settings);
    m_sidebarCollapsed = m_settings->value(sidebarCollapsedKey, false).toBool();
    m_sidebar = new NativeSidebarModel(*this);
    m_workBoard = new NativeBoardModel(*this);
}

void TarnNavigation::setPendingChatDraft(const QString &text)
{
    assign(this, m_pendingChatDraft, text, &TarnNavigation::pendingChatDraftChanged);
}

void TarnNavigation::setPendingChatSearch(const QString &text)
{
    assign(this, m_pendingChatSearch, text, &TarnNavigation::pendingChatSearchChanged);
}

void TarnNavigation::setPendingAgentDraft(const QString &text)
{
    assign(this, m_pendingAgentDraft, text, &TarnNavigation::pendingAgentDraftChanged);
}

void TarnNavigation::setPiloShowHistory(bool show)
{
    assign(this, m_piloShowHistory, show, &TarnNavigation::piloShowHistoryChanged);
}

void TarnNavigation::setChatCreate(const std::optional<TarnChatCreateRequest> &request)
{
    assign(this, m_chatCreate, request, &TarnNavigation::chatCreateChanged);
}

void TarnNavigation::setSearchOpen(bool open)
{
    assign(this, m_searchOpen, open, &TarnNavigation::searchOpenChanged);
}

void TarnNavigation::setAppearanceOpen(bool open)
{
    assign(this, m_appearanceOpen, open, &TarnNavigation::appearanceOpenChanged);
}

void TarnNavigation::setBackground(const QString &background)
{
    assign(this, m_background, background, &TarnNavigation::backgroundChanged);
}

void TarnNavigation::setOpenRecord(const std::optional<TarnOpenRecord> &record)
{
    assign(this, m_openRecord, record, &TarnNavigation::openRecordChanged);
}

void TarnNavigation::setSidebarCollapsed(bool collapsed)
{
    if (m_sidebarCollapsed == collapsed)
        return;
    m_sidebarCollapsed = collapsed;
    m_settings->setValue(sidebarCollapsedKey, collapsed);
    Q_EMIT sidebarCollapsedChanged();
}

void TarnNavigation::setPiloPanelOpen(bool open)
{
    assign(this, m_piloPanelOpen, open, &TarnNavigation::piloPanelOpenChanged);
}

void TarnNavigation::setAccess(const std::optional<TarnAccess> &access)
{
    if (m_access == access)
        return;
    m_access = access;
    m_navGroups = m_access ? TarnShell::navGroups(*m_access) : QList<TarnNavGroup>();
    m_workBoard->setRows(workBoard());
    Q_EMIT accessChanged();
    Q_EMIT placeChanged();
}

QList<TarnBoardGroup> TarnNavigation::workBoard() const
{
    return m_access ? TarnShell::workBoard(*m_access) : QList<TarnBoardGroup>();
}

QList<TarnAdminArea> TarnNavigation::adminAreas() const
{
    return m_access ? TarnShell::adminAreas(*m_access) : QList<TarnAdminArea>();
}

QList<TarnShell::Place> TarnNavigation::places() const
{
    return m_access ? TarnShell::places(m_navGroups, *m_access) : QList<TarnShell::Place>();
}

QStringList TarnNavigation::trail() const
{
    return TarnShell::trail(m_navGroups, m_destination);
}

std::optional<TarnShell::Active> TarnNavigation::active() const
{
    return TarnShell::active(m_navGroups, m_destination);
}

QString TarnNavigation::subtitle() const
{
    const std::optional<TarnShell::Active> lit = active();
    if (!lit)
        return {};
    return lit->child ? lit->child->subtitle : lit->item.subtitle;
}

QString TarnNavigation::piloPage() const
{
    return TarnShell::piloPage(m_destination).value_or(QString());
}

QList<TarnShell::Place> TarnNavigation::matchingPlaces(const QString &query) const
{
    return TarnShell::matchingPlaces(places(), query);
}

QList<TarnBoardGroup> TarnNavigation::sectionBoard(const QString &item) const
{
    return m_access ? TarnShell::sectionBoard(item, *m_access) : QList<TarnBoardGroup>();
}

bool TarnNavigation::openHome()
{
    const std::optional<TarnDestination> home = m_access ? TarnShell::home(*m_access) : std::nullopt;
    return home && open(*home);
}

bool TarnNavigation::open(const TarnDestination &destination)
{
    if (!canOpen(destination))
        return false;
    setDestination(destination);
    ++m_openCount;
    Q_EMIT openCountChanged();
    return true;
}

bool TarnNavigation::openScreen(const QString &screen, const QString &section)
{
    const std::optional<TarnScreen> known = TarnScreens::fromRawValue(screen);
    if (!known)
        return false;
    return open({ .screen = *known, .section = section.isEmpty() ? std::nullopt : std::optional(section) });
}

bool TarnNavigation::canOpen(const TarnDestination &destination) const
{
    return m_access && TarnShell::canOpen(destination, *m_access);
}

void TarnNavigation::reloadChat()
{
    ++m_chatGeneration;
    Q_EMIT chatGenerationChanged();
}

bool TarnNavigation::requestChatCreate(const QString &mode)
{
    const TarnDestination chat { .screen = TarnScreen::chat, .section = std::nullopt };
    if (!canOpen(chat))
        return false;
    // Set before moving, so that a chat screen created by the move finds it.
    setChatCreate(TarnChatCreateRequest { .mode = mode, .id = QUuid::createUuid().toString(QUuid::WithoutBraces) });
    return open(chat);
}

void TarnNavigation::signedOut()
{
    setAccess(std::nullopt);
    setDestination({});
    setPendingChatDraft({});
    setPendingChatSearch({});
    setPendingAgentDraft({});
    setPiloShowHistory(false);
    if (m_chatGeneration != 0) {
        m_chatGeneration = 0;
        Q_EMIT chatGenerationChanged();
    }
    setChatCreate(std::nullopt);
    setSearchOpen(false);
    setAppearanceOpen(false);
    setBackground({});
    setOpenRecord(std::nullopt);
    setPiloPanelOpen(false);
    if (m_openCount != 0) {
        m_openCount = 0;
        Q_EMIT openCountChanged();
    }
}

TarnAccess TarnNavigation::accessOrNone() const
{
    // QML reads a record that opens nothing gated while signed out.
    if (m_access)
        return *m_access;
    TarnAccess none;
    none.apps = QStringList();
    return none;
}

void TarnNavigation::setDestination(const TarnDestination &destination)
{
    if (m_destination == destination)
        return;
    m_destination = destination;
    Q_EMIT destinationChanged();
    Q_EMIT placeChanged();
}
