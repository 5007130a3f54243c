#include "screens/documents/TarnDocumentCalls.h"

#include "service/TarnAPI.h"

using namespace Qt::StringLiterals;

namespace TarnDocumentCalls {

QCoro::Task<QList<TarnDocument>> legacyDocuments(TarnAPI &api, const QString &kind)
{
    const std::optional<QString> filter = kind.isEmpty() ? std::nullopt : std::optional(kind);
    return api.request<QList<TarnDocument>>(TarnPath(u"/api/documents"_s).query("kind"_L1, filter));
}

QCoro::Task<TarnEnvelope> envelope(TarnAPI &api, const QString &id)
{
    return api.request<TarnEnvelope>(TarnPath(u"/api/envelopes"_s).id(id));
}

QCoro::Task<TarnEnvelope> googleSignatureDoc(TarnAPI &api, const TarnEnvelopeDraft &draft)
{
    return api.request<TarnEnvelope>(TarnPath(u"/api/envelopes"_s), TarnMethod::Post, draft);
}

QCoro::Task<TarnEnvelope> sendEnvelope(TarnAPI &api, const QString &id)
{
    return api.request<TarnEnvelope>(TarnPath(u"/api/envelopes"_s).id(id).segment("send"_L1), TarnMethod::Post);
}

QCoro::Task<QByteArray> documentPdf(TarnAPI &api, const QString &id)
{
    constexpr qint64 largestPdf = 20 * 1024 * 1024;
    return api.downloadFile(TarnPath(u"/api/documents"_s).id(id).segment("pdf"_L1), largestPdf);
}

} // namespace TarnDocumentCalls
