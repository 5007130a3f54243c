#pragma once

#include "shell/NativeBoardModel.h"
#include "shell/NativeSidebarModel.h"
#include "shell/TarnAccess.h"
#include "shell/TarnChatCreateRequest.h"
#include "shell/TarnDestination.h"
#include "shell/TarnOpenRecord.h"
#include "shell/TarnShell.h"

#include <QObject>
#include <QString>

#include <optional>

class QSettings;

// Where the window is and what screens hand each other, shared by the root
// view and every screen. Places change only through open(), which refuses
// whatever the current access does not allow; with no access (signed out)
// nothing opens.
class TarnNavigation : public QObject {
    Q_OBJECT
    Q_PROPERTY(TarnDestination destination READ destination NOTIFY destinationChanged)
    Q_PROPERTY(QString pendingChatDraft READ pendingChatDraft WRITE setPendingChatDraft NOTIFY pendingChatDraftChanged)
    Q_PROPERTY(
        QString pendingChatSearch READ pendingChatSearch WRITE setPendingChatSearch NOTIFY pendingChatSearchChanged)
    Q_PROPERTY(
        QString pendingAgentDraft READ pendingAgentDraft WRITE setPendingAgentDraft NOTIFY pendingAgentDraftChanged)
    Q_PROPERTY(bool piloShowHistory READ piloShowHistory WRITE setPiloShowHistory NOTIFY piloShowHistoryChanged)
    Q_PROPERTY(int chatGeneration READ chatGeneration NOTIFY chatGenerationChanged)
    Q_PROPERTY(bool hasChatCreate READ hasChatCreate NOTIFY chatCreateChanged)
    Q_PROPERTY(TarnChatCreateRequest chatCreate READ chatCreateOrNone NOTIFY chatCreateChanged)
    Q_PROPERTY(bool searchOpen READ searchOpen WRITE setSearchOpen NOTIFY searchOpenChanged)
    Q_PROPERTY(bool appearanceOpen READ appearanceOpen WRITE setAppearanceOpen NOTIFY appearanceOpenChanged)
    Q_PROPERTY(QString background READ background WRITE setBackground NOTIFY backgroundChanged)
    Q_PROPERTY(bool hasOpenRecord READ hasOpenRecord NOTIFY openRecordChanged)
    Q_PROPERTY(TarnOpenRecord openRecord READ openRecordOrNone NOTIFY openRecordChanged)
    Q_PROPERTY(bool sidebarCollapsed READ sidebarCollapsed WRITE setSidebarCollapsed NOTIFY sidebarCollapsedChanged)
    Q_PROPERTY(bool piloPanelOpen READ piloPanelOpen WRITE setPiloPanelOpen NOTIFY piloPanelOpenChanged)
    Q_PROPERTY(int openCount READ openCount NOTIFY openCountChanged)
    Q_PROPERTY(TarnAccess access READ accessOrNone NOTIFY accessChanged)
    Q_PROPERTY(bool hasAccess READ hasAccess NOTIFY accessChanged)
    // What the window draws from the tables for the current person and place.
    Q_PROPERTY(NativeSidebarModel *sidebar READ sidebar CONSTANT)
    Q_PROPERTY(NativeBoardModel *workBoard READ workBoardModel CONSTANT)
    Q_PROPERTY(QList<TarnAdminArea> adminAreas READ adminAreas NOTIFY accessChanged)
    Q_PROPERTY(QStringList trail READ trail NOTIFY placeChanged)
    // The trail as one phrase, "Books › Dashboard".
    Q_PROPERTY(QString placeName READ placeName NOTIFY placeChanged)
    Q_PROPERTY(bool hasActive READ hasActive NOTIFY placeChanged)
    Q_PROPERTY(TarnShell::Active active READ activeOrNone NOTIFY placeChanged)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY placeChanged)
    Q_PROPERTY(QString piloPage READ piloPage NOTIFY placeChanged)

public:
    static constexpr QLatin1StringView sidebarCollapsedKey { "tarn.sidebarCollapsed" };

    // `settings` holds the sidebar preference and must outlive this object.
    explicit TarnNavigation(QSettings *settings, QObject *parent = nullptr);

    [[nodiscard]] TarnDestination destination() const { return m_destination; }
    [[nodiscard]] QString pendingChatDraft() const { return m_pendingChatDraft; }
    [[nodiscard]] QString pendingChatSearch() const { return m_pendingChatSearch; }
    [[nodiscard]] QString pendingAgentDraft() const { return m_pendingAgentDraft; }
    [[nodiscard]] bool piloShowHistory() const { return m_piloShowHistory; }
    [[nodiscard]] int chatGeneration() const { return m_chatGeneration; }
    [[nodiscard]] std::optional<TarnChatCreateRequest> chatCreate() const { return m_chatCreate; }
    [[nodiscard]] bool hasChatCreate() const { return m_chatCreate.has_value(); }
    [[nodiscard]] bool searchOpen() const { return m_searchOpen; }
    [[nodiscard]] bool appearanceOpen() const { return m_appearanceOpen; }
    [[nodiscard]] QString background() const { return m_background; }
    [[nodiscard]] std::optional<TarnOpenRecord> openRecord() const { return m_openRecord; }
    [[nodiscard]] bool hasOpenRecord() const { return m_openRecord.has_value(); }
    [[nodiscard]] bool sidebarCollapsed() const { return m_sidebarCollapsed; }
    [[nodiscard]] bool piloPanelOpen() const { return m_piloPanelOpen; }
    [[nodiscard]] int openCount() const { return m_openCount; }
    [[nodiscard]] std::optional<TarnAccess> access() const { return m_access; }
    [[nodiscard]] bool hasAccess() const { return m_access.has_value(); }

    void setPendingChatDraft(const QString &text);
    void setPendingChatSearch(const QString &text);
    void setPendingAgentDraft(const QString &text);
    void setPiloShowHistory(bool show);
    void setChatCreate(const std::optional<TarnChatCreateRequest> &request);
    void setSearchOpen(bool open);
    void setAppearanceOpen(bool open);
    void setBackground(const QString &background);
    void setOpenRecord(const std::optional<TarnOpenRecord> &record);
    void setSidebarCollapsed(bool collapsed);
    void setPiloPanelOpen(bool open);
    // The person signed in, or their session changed; none refuses everything.
    void setAccess(const std::optional<TarnAccess> &access);

    // Empty while signed out.
    [[nodiscard]] QList<TarnNavGroup> navGroups() const { return m_navGroups; }
    [[nodiscard]] NativeSidebarModel *sidebar() const { return m_sidebar; }
    [[nodiscard]] NativeBoardModel *workBoardModel() const { return m_workBoard; }
    [[nodiscard]] QList<TarnBoardGroup> workBoard() const;
    [[nodiscard]] QList<TarnAdminArea> adminAreas() const;
    [[nodiscard]] QList<TarnShell::Place> places() const;
    [[nodiscard]] QStringList trail() const;
    [[nodiscard]] QString placeName() const { return trail().join(u" \u203a "); }
    [[nodiscard]] std::optional<TarnShell::Active> active() const;
    [[nodiscard]] bool hasActive() const { return active().has_value(); }
    // The line under the trail: the open section's, else the lit item's.
    [[nodiscard]] QString subtitle() const;
    // The page the assistant is told about; empty for chat.
    [[nodiscard]] QString piloPage() const;

    [[nodiscard]] QList<TarnShell::Place> matchingPlaces(const QString &query) const;
    [[nodiscard]] Q_INVOKABLE QList<TarnBoardGroup> sectionBoard(const QString &item) const;
    [[nodiscard]] Q_INVOKABLE QString pageLabel(const QString &label) const { return TarnShell::pageLabel(label); }
    [[nodiscard]] Q_INVOKABLE QString agentStatusLabel(const QString &status) const
    {
        return TarnShell::agentStatusLabel(status);
    }

    // Opens the person's home; false for an account without "Home".
    Q_INVOKABLE bool openHome();
    // Moves to `destination` and counts the move, even to where the window
    // already is (screens watch the count to react to a repeated open).
    // Returns false, changing nothing, when the access does not allow it.
    Q_INVOKABLE bool open(const TarnDestination &destination);
    // The same from QML, by the screen's raw value; an unknown screen is refused.
    Q_INVOKABLE bool openScreen(const QString &screen, const QString &section = QString());
    [[nodiscard]] Q_INVOKABLE bool canOpen(const TarnDestination &destination) const;
    // Makes the chat screen load again.
    Q_INVOKABLE void reloadChat();
    // Opens chat with its room-creation sheet for rooms of kind `mode`.
    Q_INVOKABLE bool requestChatCreate(const QString &mode);
    Q_INVOKABLE void clearChatCreate() { setChatCreate(std::nullopt); }
    Q_INVOKABLE void clearOpenRecord() { setOpenRecord(std::nullopt); }
    // Back to the state before sign-in. The sidebar preference belongs to the
    // computer, not the account, so it stays.
    Q_INVOKABLE void signedOut();

Q_SIGNALS:
    void destinationChanged();
    void pendingChatDraftChanged();
    void pendingChatSearchChanged();
    void pendingAgentDraftChanged();
    void piloShowHistoryChanged();
    void chatGenerationChanged();
    void chatCreateChanged();
    void searchOpenChanged();
    void appearanceOpenChanged();
    void backgroundChanged();
    void openRecordChanged();
    void sidebarCollapsedChanged();
    void piloPanelOpenChanged();
    void openCountChanged();
    void accessChanged();
    // The destination or the access changed: the trail and the lit entry follow.
    void placeChanged();

private:
    [[nodiscard]] TarnChatCreateRequest chatCreateOrNone() const
    {
        return m_chatCreate.value_or(TarnChatCreateRequest());
    }
    [[nodiscard]] TarnOpenRecord openRecordOrNone() const { return m_openRecord.value_or(TarnOpenRecord()); }
    [[nodiscard]] TarnAccess accessOrNone() const;
    [[nodiscard]] TarnShell::Active activeOrNone() const { return active().value_or(TarnShell::Active()); }
    void setDestination(const TarnDestination &destination);

    QSettings *m_settings;
    TarnDestination m_destination;
    QString m_pendingChatDraft;
    QString m_pendingChatSearch;
    QString m_pendingAgentDraft;
    bool m_piloShowHistory = false;
    int m_chatGeneration = 0;
    std::optional<TarnChatCreateRequest> m_chatCreate;
    bool m_searchOpen = false;
    bool m_appearanceOpen = false;
    QString m_background;
    std::optional<TarnOpenRecord> m_openRecord;
    bool m_sidebarCollapsed = false;
    bool m_piloPanelOpen = false;
    int m_openCount = 0;
    std::optional<TarnAccess> m_access;
    // Built once per access: the trail, the lit entry and every search
    // keystroke read it.
    QList<TarnNavGroup> m_navGroups;
    NativeSidebarModel *m_sidebar = nullptr;
    NativeBoardModel *m_workBoard = nullptr;
};
