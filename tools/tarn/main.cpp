#include "ApiCommand.h"
#include "BankCSVCommand.h"
#include "CommandLine.h"
#include "MailBlocksCommand.h"
#include "SignInCommand.h"
#include "SignOutCommand.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

struct Command {
    QString name;
    QString synopsis;
    QString summary;
    int (*run)(CommandLine &);
};

const QList<Command> &commands()
{
    // Each subcommand adds one row here; its own --help says the rest.
    static const QList<Command> all {
        { u"sign-in"_s, u"[--workspace URL] [--workspace-ca FILE]"_s,
            u"Sign in through the browser and keep the session in the keyring, as the app does."_s, runSignIn },
        { u"sign-out"_s, u"[--workspace URL] [--workspace-ca FILE]"_s,
            u"End the stored session and remove it from this computer."_s, runSignOut },
        { u"api"_s, u"[--workspace URL] [--workspace-ca FILE] [--token-stdin] METHOD PATH [JSON-BODY]"_s,
            u"Send one request to the workspace service and print the JSON answer."_s, runApi },
        { u"mail-blocks"_s, u"[--plain] [--full] FILE"_s, u"Print a mail body as the app's native blocks, in JSON."_s,
            runMailBlocks },
        { u"bank-csv"_s, u"FILE"_s, u"Check a bank statement as the import does, before importing it."_s, runBankCSV },
    };
    return all;
}

const Command *find(const QString &name)
{
    for (const Command &command : commands()) {
        if (command.name == name)
            return &command;
    }
    return nullptr;
}

QString overview()
{
    QString text = u"usage: tarn COMMAND [ARGS]\n\n"
                   "The command-line companion of Pilo Tarn: it talks to the same workspace with the same stored "
                   "session. The workspace is https://tarn.halvard.co/ unless --workspace or TARN_WORKSPACE_URL "
                   "(and TARN_WORKSPACE_CA) name another.\n\nCommands:\n"_s;
    for (const Command &command : commands())
        text += u"  tarn "_s + command.name + u' ' + command.synopsis + u"\n      "_s + command.summary + u'\n';
    return text + u"\n\"tarn help COMMAND\" (or \"tarn COMMAND --help\") describes one command.\n"_s;
}

int usageError(const QString &message)
{
    QTextStream(stderr) << "tarn: " << message << "\nusage: tarn COMMAND [ARGS]; \"tarn --help\" lists the commands.\n";
    return CommandLine::usageExit;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(u"pilo-tarn"_s);
    QCoreApplication::setOrganizationDomain(u"halvard.co"_s);

    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty())
        return usageError(u"name a command"_s);
    QString name = args.takeFirst();
    if (name == "--help"_L1 || name == "-h"_L1 || (name == "help"_L1 && args.isEmpty())) {
        QTextStream(stdout) << overview();
        return 0;
    }
    if (name == "help"_L1) {
        if (args.size() != 1 || !find(args.first()))
            return CommandLine(u"help"_s, u"COMMAND"_s, {}).usageError(u"no command "_s + args.join(u' '));
        name = args.first();
        args = QStringList { u"--help"_s };
    }
    const Command *command = find(name);
    if (!command)
        return usageError(u"no command "_s + name);
    CommandLine line(command->name, command->synopsis, args);
    return command->run(line);
}
