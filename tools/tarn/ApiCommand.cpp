#include "ApiCommand.h"

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

int runApi(const QStringList &args)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Sends one request to the workspace service and prints the answer."_s);
    const WorkspaceOptions workspace(parser);
    const QCommandLineOption tokenStdin(u"token-stdin"_s, u"Read the session token from standard input."_s);
    parser.addOption(tokenStdin);
    parser.addPositionalArgument(u"METHOD"_s, u"GET, POST, PATCH or DELETE"_s);
    parser.addPositionalArgument(u"PATH"_s, u"For example /api/session"_s);
    parser.addPositionalArgument(u"JSON-BODY"_s, u"A JSON object (optional)"_s);
    parser.process(QStringList { u"tarn api"_s } + args);

    QTextStream err(stderr);
    const QStringList positional = parser.positionalArguments();
    const std::optional<TarnMethod> method = TarnMethods::fromVerb(positional.value(0));
    if (positional.size() < 2 || positional.size() > 3 || !method) {
        err << parser.helpText();
        return 2;
    }
    const std::optional<Config> config = workspace.config(parser);
    if (!config)
        return 2;

    std::optional<TypedBody> body;
    if (positional.size() == 3) {
        const QJsonDocument document = QJsonDocument::fromJson(positional.at(2).toUtf8());
        if (!document.isObject()) {
            err << "The body must be a JSON object.\n";
            return 2;
        }
        body = TypedBody { document.object() };
    }

    std::unique_ptr<TarnSessionStore> store;
    if (parser.isSet(tokenStdin)) {
        const QString token = QTextStream(stdin).readLine().trimmed();
        if (token.isEmpty()) {
            err << "No token on standard input.\n";
            return 2;
        }
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
    } catch (const std::exception &error) {
        err << QString::fromUtf8(error.what()) << '\n';
        return 1;
    }
}
