#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

#include <optional>

// One subcommand's command line, and the form of everything it says: its
// help, and errors that start with "tarn COMMAND:" and continue in lower
// case. A wrong usage exits 2, a refused input (a file, an answer of the
// service, the keyring) exits 1.
class CommandLine {
public:
    static constexpr int refusedExit = 1;
    static constexpr int usageExit = 2;

    // `synopsis` is what follows "tarn NAME" in the usage line.
    CommandLine(QString name, QString synopsis, QStringList args);

    // Where the command declares its description, options and arguments.
    [[nodiscard]] QCommandLineParser &parser() { return m_parser; }
    // Parses the arguments: the exit code when the command ends here (after
    // printing its help, or a wrong usage), nothing when it goes on.
    [[nodiscard]] std::optional<int> parse();
    [[nodiscard]] QStringList positional() const { return m_parser.positionalArguments(); }

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] QString usage() const;
    [[nodiscard]] QString help() const;

    // "tarn NAME: message" and the usage line on standard error; usageExit.
    int usageError(const QString &message) const;
    // "tarn NAME: message", or "tarn NAME: FILE: message"; refusedExit.
    int refused(const QString &message, const QString &file = {}) const;

    // A sentence of its own ("The workspace did not answer.") continuing
    // after a prefix: its opening capital lowered, unless it begins an
    // acronym ("HTTP") or a name ("Pilo Tarn", "Google").
    [[nodiscard]] static QString continuing(const QString &sentence);

private:
    QString m_name;
    QString m_synopsis;
    QStringList m_args;
    QCommandLineParser m_parser;
    QCommandLineOption m_help;
};
