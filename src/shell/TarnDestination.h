#pragma once

#include "shell/TarnScreen.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <optional>

// Where the window is: a screen and, optionally, the sub-page inside it,
// named by its label.
struct TarnDestination {
    Q_GADGET
    Q_PROPERTY(QString screenName READ screenName)
    Q_PROPERTY(QString section READ sectionText)
    Q_PROPERTY(QString resolvedSection READ resolvedSection)

public:
    TarnScreen screen = TarnScreen::chat;
    std::optional<QString> section;

    // The section the screen really shows: documents aliases applied, and a
    // missing or empty section replaced by the screen's default.
    [[nodiscard]] QString resolvedSection() const;

    // Two destinations that show the same page, such as documents with no
    // section and documents at "Templates".
    [[nodiscard]] bool samePlace(const TarnDestination &other) const;

    [[nodiscard]] QString screenName() const { return TarnScreens::rawValue(screen); }
    [[nodiscard]] QString sectionText() const { return section.value_or(QString()); }

    [[nodiscard]] static QString defaultSection(TarnScreen screen);
    // Old section names of the documents screen, kept so that stored links
    // and assistant answers that still use them land on the right page.
    [[nodiscard]] static const QHash<QString, QString> &documentsAliases();

    friend bool operator==(const TarnDestination &, const TarnDestination &) = default;
};
