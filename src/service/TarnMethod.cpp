#include "service/TarnMethod.h"

#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<TarnMethod, const char *>, 4> verbs { {
    { TarnMethod::Get, "GET" },
    { TarnMethod::Post, "POST" },
    { TarnMethod::Patch, "PATCH" },
    { TarnMethod::Delete, "DELETE" },
} };

} // namespace

QByteArray TarnMethods::verb(TarnMethod method)
{
    for (const auto &[known, name] : verbs) {
        if (known == method)
            return QByteArray(name);
    }
    Q_UNREACHABLE();
    return {};
}

std::optional<TarnMethod> TarnMethods::fromVerb(QStringView verb)
{
    for (const auto &[known, name] : verbs) {
        if (verb.compare(QLatin1StringView(name), Qt::CaseInsensitive) == 0)
            return known;
    }
    return std::nullopt;
}
