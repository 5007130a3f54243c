#pragma once

#include "service/Config.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <optional>
#include <variant>

class CommandLine;

// The options every service-talking subcommand shares: `--workspace URL` and
// `--workspace-ca FILE` (else TARN_WORKSPACE_URL and TARN_WORKSPACE_CA).
class WorkspaceOptions {
public:
    explicit WorkspaceOptions(QCommandLineParser &parser);

    // The configuration the options name; nothing, with the reason in
    // `error`, when they are unusable.
    [[nodiscard]] std::optional<Config> config(const QCommandLineParser &parser, QString *error) const;

    // For a command that takes these options and nothing else: parses its
    // command line and answers the configuration, or the exit code when the
    // command ends here (after its help, or a wrong usage).
    [[nodiscard]] static std::variant<Config, int> parseAlone(CommandLine &line);

private:
    QCommandLineOption m_url;
    QCommandLineOption m_ca;
};
