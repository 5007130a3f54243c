#include "mail/TarnMailDocument.h"

#include "mail/TarnMailHTML.h"
#include "mail/TarnMailImage.h"

QStringList TarnMailDocument::cidReferences() const
{
    QStringList ids;
    for (const QList<TarnMailBlock> *part : { &blocks, &quoted }) {
        for (const TarnMailImage &image : TarnMailHTML::images(*part)) {
            if (image.source.kind() == TarnMailImageSource::Kind::Cid)
                ids.append(image.source.contentID());
        }
    }
    return ids;
}

QList<QUrl> TarnMailDocument::remoteImageURLs() const
{
    QList<QUrl> urls;
    for (const QList<TarnMailBlock> *part : { &blocks, &quoted }) {
        for (const TarnMailImage &image : TarnMailHTML::images(*part)) {
            if (image.source.kind() == TarnMailImageSource::Kind::Remote)
                urls.append(image.source.url());
        }
    }
    return urls;
}
