#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>

class TarnMailBlock;
struct TarnMailDocument;
struct TarnMailRun;

// The mail document as JSON, in the one shape every tool reads:
//   {"blocks":[B…],"quoted":[B…],"blockedTrackers":N,"truncated":bool,
//    "cidReferences":[…],"remoteImageURLs":[…]}
// with runs {"text","style" (the raw bit set),"link" (string or null)} and
// blocks tagged by "type".
namespace TarnMailJSON {

[[nodiscard]] QJsonObject document(const TarnMailDocument &document);
[[nodiscard]] QJsonArray blocks(const QList<TarnMailBlock> &blocks);
[[nodiscard]] QJsonObject block(const TarnMailBlock &block);
[[nodiscard]] QJsonObject run(const TarnMailRun &run);
// The document as one line of compact JSON.
[[nodiscard]] QByteArray encode(const TarnMailDocument &document);

} // namespace TarnMailJSON
