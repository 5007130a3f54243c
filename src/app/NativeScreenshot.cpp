#include "app/NativeScreenshot.h"

#include "app/NativeRootState.h"

#include <QCoreApplication>
#include <QImage>
#include <QQuickWindow>
#include <QTimer>

using namespace Qt::StringLiterals;

NativeScreenshot::Profile NativeScreenshot::profile(const QString &text)
{
    Profile result { .place = text.trimmed().toLower(), .gallery = false, .dark = std::nullopt };
    const qsizetype colon = result.place.lastIndexOf(u':');
    if (colon >= 0) {
        const QStringView scheme = QStringView(result.place).mid(colon + 1);
        if (scheme == "dark"_L1 || scheme == "light"_L1)
            result.dark = scheme == "dark"_L1;
        result.place.truncate(colon);
    }
    result.gallery = result.place == "gallery"_L1;
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
        { "inbox"_L1, TarnScreen::calls, "Inbox"_L1 },
        { "assistant"_L1, TarnScreen::agent, "New chat"_L1 },
        { "calendar"_L1, TarnScreen::schedule, "Calendar"_L1 },
    };
    for (const Alias &alias : aliases) {
        if (name == alias.name)
            return TarnDestination { .screen = alias.screen, .section = QString(alias.section) };
    }
    if (const std::optional<TarnScreen> screen = TarnScreens::fromRawValue(name))
        return TarnDestination { .screen = *screen, .section = std::nullopt };
    return std::nullopt;
}

NativeScreenshot::NativeScreenshot(QQuickWindow &window, NativeRootState *root, QString file, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_root(root)
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
    m_capturing = true;
    // The view of the new phase is made in this turn of the event loop and
    // laid out over the next few (lists scroll to the lit place): take the
    // first frame drawn once that has settled.
    QTimer::singleShot(settleTime, this, [this] {
        connect(&m_window, &QQuickWindow::frameSwapped, this, &NativeScreenshot::capture, Qt::SingleShotConnection);
        m_window.update();
    });
}

void NativeScreenshot::capture()
{
    QTimer::singleShot(0, this, [this] {
        const QImage image = m_window.grabWindow();
        const bool saved = !image.isNull() && image.save(m_file, "PNG");
        if (!saved)
            qCritical("Could not save the screenshot to %s", qPrintable(m_file));
        QCoreApplication::exit(saved ? 0 : 1);
    });
}
