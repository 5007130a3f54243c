#include "WorkspaceOptions.h"

#include "CommandLine.h"

using namespace Qt::StringLiterals;

WorkspaceOptions::WorkspaceOptions(QCommandLineParser &parser)
    : m_url(u"workspace"_s, u"The workspace service's https address."_s, u"URL"_s)
    , m_ca(u"workspace-ca"_s, u"One extra certificate to trust for it (PEM)."_s, u"FILE"_s)
{
    parser.addOption(m_url);
    parser.addOption(m_ca);
}

std::optional<Config> WorkspaceOptions::config(const QCommandLineParser &parser, QString *error) const
{
    return Config::fromOptions(parser.value(m_url), parser.value(m_ca), error);
}

std::variant<Config, int> WorkspaceOptions::parseAlone(CommandLine &line)
{
    const WorkspaceOptions workspace(line.parser());
    if (const std::optional<int> done = line.parse())
        return *done;
    if (!line.positional().isEmpty())
        return line.usageError(u"takes no arguments"_s);
    QString error;
    std::optional<Config> config = workspace.config(line.parser(), &error);
    if (!config)
        return line.usageError(error);
    return std::move(*config);
}
