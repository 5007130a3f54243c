#include "ApiCommand.h"

#include "CommandLine.h"
#include "MemorySessionStore.h"
#include "TarnWaitFor.h"
#include "WorkspaceOptions.h"
#include "auth/NativeSessionStore.h"
#include "service/TarnAPI.h"

#include <QJsonDocument>
#include <QSettings>
#include <QTextStream>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// The body exactly as typed on the command line.
struct TypedBody {
    QJsonObject json;
    [[nodiscard]] QJsonObject toJSON() const { return json; }
};

QCoro::Task<QJsonValue> call(TarnAPI &api, TarnPath path, TarnMethod method, std::optional<TypedBody> body)
{
    co_await api.refreshSession();
    if (body)
        co_return co_await api.request<QJsonValue>(std::move(path), method, std::move(*body));
    co_return co_await api.request<QJsonValue>(std::move(path), method);
}

} // namespace

int runApi(CommandLine &line)
{
    QCommandLineParser &parser = line.parser();
    parser.setApplicationDescription(u"Sends one request to the workspace service with the session stored in the "
                                     u"keyring (the app's, or the one `tarn sign-in` stored) and prints the JSON "
                                     u"answer."_s);
    const WorkspaceOptions workspace(parser);
    const QCommandLineOption tokenStdin(u"token-stdin"_s, u"Read the session token from standard input instead."_s);
    parser.addOption(tokenStdin);
    parser.addPositionalArgument(u"METHOD"_s, u"GET, POST, PATCH or DELETE."_s);
    parser.addPositionalArgument(u"PATH"_s, u"For example /api/session."_s);
    parser.addPositionalArgument(u"JSON-BODY"_s, u"A JSON object to send (optional)."_s, u"[JSON-BODY]"_s);
    if (const std::optional<int> done = line.parse())
        return *done;

    const QStringList positional = line.positional();
    if (positional.size() < 2 || positional.size() > 3)
        return line.usageError(u"give a METHOD and a PATH, and perhaps a JSON body"_s);
    const std::optional<TarnMethod> method = TarnMethods::fromVerb(positional.at(0));
    if (!method)
        return line.usageError(u"unknown method "_s + positional.at(0) + u"; use GET, POST, PATCH or DELETE"_s);
    QString error;
    const std::optional<Config> config = workspace.config(parser, &error);
    if (!config)
        return line.usageError(error);

    std::optional<TypedBody> body;
    if (positional.size() == 3) {
        const QJsonDocument document = QJsonDocument::fromJson(positional.at(2).toUtf8());
        if (!document.isObject())
            return line.usageError(u"the body must be a JSON object"_s);
        body = TypedBody { document.object() };
    }

    std::unique_ptr<TarnSessionStore> store;
    if (parser.isSet(tokenStdin)) {
        const QString token = QTextStream(stdin).readLine().trimmed();
        if (token.isEmpty())
            return line.refused(u"no token on standard input"_s);
        store = std::make_unique<MemorySessionStore>(token);
    } else {
        store = std::make_unique<NativeSessionStore>();
    }

    QSettings preferences;
    TarnAPI api(*config, *store, &preferences);
    const TarnPath path(positional.at(1));
    try {
        const QJsonValue answer = tarnWaitFor(call(api, path, *method, body));
        QTextStream out(stdout);
        if (answer.isObject())
            out << QJsonDocument(answer.toObject()).toJson(QJsonDocument::Indented);
        else if (answer.isArray())
            out << QJsonDocument(answer.toArray()).toJson(QJsonDocument::Indented);
        return 0;
    } catch (const std::exception &failure) {
        return line.refused(QString::fromUtf8(failure.what()));
    }
}
