#pragma once

#include "mail/TarnMailBlock.h"
#include "mail/TarnMailImage.h"

#include <QList>

// What the mail views lay out one after another: a block, or a run of
// consecutive images drawn side by side.
class TarnMailSegment {
public:
    enum class Kind : quint8 { Block, Images };

    [[nodiscard]] static TarnMailSegment block(const TarnMailBlock &block);
    [[nodiscard]] static TarnMailSegment images(QList<TarnMailImage> images);

    [[nodiscard]] Kind kind() const { return m_kind; }
    // Block only.
    [[nodiscard]] const TarnMailBlock &block() const { return m_block; }
    // Images only.
    [[nodiscard]] const QList<TarnMailImage> &images() const { return m_images; }

    friend bool operator==(const TarnMailSegment &, const TarnMailSegment &) = default;

private:
    TarnMailSegment() = default;

    Kind m_kind = Kind::Block;
    TarnMailBlock m_block = TarnMailBlock::rule();
    QList<TarnMailImage> m_images;
};
