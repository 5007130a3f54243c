#include "mail/TarnMailSegment.h"

#include <utility>

TarnMailSegment TarnMailSegment::block(const TarnMailBlock &block)
{
    TarnMailSegment segment;
    segment.m_block = block;
    return segment;
}

TarnMailSegment TarnMailSegment::images(QList<TarnMailImage> images)
{
    TarnMailSegment segment;
    segment.m_kind = Kind::Images;
    segment.m_images = std::move(images);
    return segment;
}
