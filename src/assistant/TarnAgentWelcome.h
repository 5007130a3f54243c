#pragma once

#include <QList>
#include <QString>

// The texts of the empty assistant panel: the greeting and the starter prompts.
namespace TarnAgentWelcome {

// A starter prompt; `symbol` names a glyph in the design system's table.
struct Suggestion {
    QString label;
    QString symbol;
    QString prompt;
};

// "Good morning, Ada" for ("Ada Lindqvist", 11). The first name is the
// first word even when it is an initial; a name made only of initials is
// those letters run together ("A B" gives "AB").
[[nodiscard]] QString greeting(const QString &name, int hour);

// What the empty panel offers: things the agent can answer from the
// workspace's own data.
[[nodiscard]] const QList<Suggestion> &suggestions();

} // namespace TarnAgentWelcome
