#include "app/NativeScreenshot.h"

#include "app/NativeRootState.h"
#include "shell/TarnNavigation.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QQuickWindow>
#include <QTimer>

using namespace Qt::StringLiterals;

NativeScreenshot::Profile NativeScreenshot::profile(const QString &text)
{
    Profile result;
    result.place = text.trimmed().toLower();
    const qsizetype colon = result.place.lastIndexOf(u':');
    if (colon >= 0) {
        const QStringView scheme = QStringView(result.place).mid(colon + 1);
        if (scheme == "dark"_L1 || scheme == "light"_L1)
            result.dark = scheme == "dark"_L1;
        result.place.truncate(colon);
    }
    result.gallery = result.place == "gallery"_L1;
    result.search = result.place == "search"_L1;
    result.settings = result.place == "settings"_L1;
    result.pilo = result.place == "agent"_L1;
    return result;
}

std::optional<TarnDestination> NativeScreenshot::destination(const QString &profile)
{
    const QString name = profile.trimmed().toLower();
    struct Alias {
        QLatin1StringView name;
        TarnScreen screen;
        QLatin1StringView section;
    };
    static constexpr Alias aliases[] {
        { "books"_L1, TarnScreen::documents, "Dashboard"_L1 },
        { "books-transactions"_L1, TarnScreen::documents, "Transactions"_L1 },
        { "books-invoices"_L1, TarnScreen::documents, "Invoices"_L1 },
        { "books-expenses"_L1, TarnScreen::documents, "Expenses"_L1 },
        { "books-reports"_L1, TarnScreen::documents, "Reports"_L1 },
        { "books-banking"_L1, TarnScreen::documents, "Bank feed"_L1 },
        { "inbox"_L1, TarnScreen::calls, "Inbox"_L1 },
        { "customers"_L1, TarnScreen::sales, "Customers"_L1 },
        { "pipeline"_L1, TarnScreen::sales, "Pipeline"_L1 },
        { "recordings"_L1, TarnScreen::calls, "Recordings"_L1 },
        { "support-recurring"_L1, TarnScreen::support, "Recurring"_L1 },
        { "envelopes"_L1, TarnScreen::documents, "Envelopes"_L1 },
        { "document-preview"_L1, TarnScreen::documents, "Worksheets"_L1 },
        { "support-time"_L1, TarnScreen::support, "Time"_L1 },
        { "company"_L1, TarnScreen::company, "Team & access"_L1 },
        { "booking-links"_L1, TarnScreen::schedule, "Booking links"_L1 },
        { "schedule-month"_L1, TarnScreen::schedule, "Calendar"_L1 },
        { "product-boards"_L1, TarnScreen::overview, "Product boards"_L1 },
        { "fulfilment"_L1, TarnScreen::overview, "Fulfilment"_L1 },
        { "timeclock"_L1, TarnScreen::people, "Time clock"_L1 },
        { "payroll"_L1, TarnScreen::people, "Payroll"_L1 },
        { "connections"_L1, TarnScreen::company, "Connections"_L1 },
        { "assistant"_L1, TarnScreen::agent, "New chat"_L1 },
        { "calendar"_L1, TarnScreen::schedule, "Calendar"_L1 },
        { "agent-history"_L1, TarnScreen::agent, "History"_L1 },
        { "agent-review"_L1, TarnScreen::agent, "Blocked work"_L1 },
        // The chat's last room with a huddle running in it.
        { "huddle"_L1, TarnScreen::chat, {} },
    };
    for (const Alias &alias : aliases) {
        if (name != alias.name)
            continue;
        return TarnDestination { .screen = alias.screen,
            .section = alias.section.isEmpty() ? std::nullopt : std::optional<QString>(QString(alias.section)) };
    }
    if (const std::optional<TarnScreen> screen = TarnScreens::fromRawValue(name))
        return TarnDestination { .screen = *screen, .section = std::nullopt };
    return std::nullopt;
}

NativeScreenshot::NativeScreenshot(QQuickWindow &window, NativeRootState *root, TarnNavigation &navigation,
    Profile profile, QString file, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_root(root)
    , m_navigation(navigation)
    , m_profile(std::move(profile))
    , m_file(std::move(file))
{
    if (m_root)
        connect(m_root, &NativeRootState::changed, this, &NativeScreenshot::settleCheck);
    settleCheck();
}

void NativeScreenshot::settleCheck()
{
    using Phase = NativeRootState::Phase;
    const bool settled
        = !m_root || (!m_root->busy() && m_root->phase() != Phase::Starting && m_root->phase() != Phase::SigningIn);
    if (!settled || m_capturing)
        return;
    const bool signedIn = m_root && m_root->phase() == Phase::SignedIn;
    if (signedIn && m_profile.pilo)
        m_navigation.setPiloPanelOpen(true);
    if (signedIn && m_ready && !m_ready())
        return;
    m_capturing = true;
    m_shot = &m_window;
    if (signedIn && m_profile.search)
        m_navigation.setSearchOpen(true);
    if (signedIn && m_profile.settings) {
        m_navigation.setAppearanceOpen(true);
        for (QWindow *shown : QGuiApplication::topLevelWindows()) {
            if (shown->objectName() == "settingsWindow"_L1 && shown->isVisible())
                m_shot = qobject_cast<QQuickWindow *>(shown);
        }
    }
    // The view of the new phase is made in this turn of the event loop and
    // laid out over the next few (lists scroll to the lit place): take the
    // first frame drawn once that has settled.
    QTimer::singleShot(settleTime, this, [this] {
        connect(m_shot, &QQuickWindow::frameSwapped, this, &NativeScreenshot::capture, Qt::SingleShotConnection);
        m_shot->update();
    });
}

void NativeScreenshot::capture()
{
    QTimer::singleShot(0, this, [this] {
        const QImage image = m_shot->grabWindow();
        const bool saved = !image.isNull() && image.save(m_file, "PNG");
        if (!saved)
            qCritical("Could not save the screenshot to %s", qPrintable(m_file));
        QCoreApplication::exit(saved ? 0 : 1);
    });
}
