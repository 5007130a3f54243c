#include "ApiCommand.h"
#include "BankCSVCommand.h"
#include "MailBlocksCommand.h"
#include "SignOutCommand.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>

#include <functional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct Command {
    QString name;
    QString usage;
    std::function<int(const QStringList &)> run;
};

QList<Command> commands()
{
    return {
        // Each subcommand adds one line here: {u"name"_s, u"usage"_s, runName}.
        { u"api"_s, u"api [--workspace URL] [--workspace-ca FILE] [--token-stdin] METHOD PATH [JSON-BODY]"_s, runApi },
        { u"sign-out"_s, u"sign-out [--workspace URL] [--workspace-ca FILE]"_s, runSignOut },
        { u"mail-blocks"_s, u"mail-blocks [--plain] [--full] FILE"_s, runMailBlocks },
        { u"bank-csv"_s, u"bank-csv FILE"_s, runBankCSV },
    };
}

int usage(const QList<Command> &all)
{
    QTextStream err(stderr);
    err << "usage: tarn COMMAND [ARGS]\n";
    for (const Command &c : all)
        err << "  tarn " << c.usage << '\n';
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(u"pilo-tarn"_s);
    QCoreApplication::setOrganizationDomain(u"halvard.co"_s);

    const QList<Command> all = commands();
    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty())
        return usage(all);
    const QString name = args.takeFirst();
    for (const Command &c : all) {
        if (c.name == name)
            return c.run(args);
    }
    return usage(all);
}
