#include "mail/detail/MailTree.h"

#include <new>

namespace TarnMailHTML::detail {

namespace {

std::size_t sizeFor(Tag tag)
{
    return MailNode::isValued(tag) ? sizeof(MailNode::Valued) : sizeof(MailNode);
}

// Both sizes keep every node aligned when packed one after another.
static_assert(sizeof(MailNode) % alignof(MailNode::Valued) == 0);
static_assert(sizeof(MailNode::Valued) % alignof(MailNode::Valued) == 0);

} // namespace

MailTree::MailTree()
{
    m_root = create(Tag::Root);
}

MailTree::~MailTree()
{
    for (const Chunk &chunk : m_chunks) {
        for (std::size_t at = 0; at < chunk.used;) {
            auto *node = std::launder(reinterpret_cast<MailNode *>(chunk.storage.get() + at));
            at += sizeFor(node->tag);
            if (MailNode::isValued(node->tag))
                static_cast<MailNode::Valued *>(node)->~Valued();
            else
                node->~MailNode();
        }
    }
}

MailNode *MailTree::create(Tag tag)
{
    const std::size_t size = sizeFor(tag);
    if (m_chunks.empty() || m_chunks.back().size - m_chunks.back().used < size) {
        const std::size_t chunkSize
            = m_chunks.size() < smallChunks ? smallChunk : qMin(m_chunks.back().size * 2, largestChunk);
        // operator new[] of std::byte is aligned for any fundamental type, the nodes' included.
        m_chunks.push_back({ std::make_unique_for_overwrite<std::byte[]>(chunkSize), chunkSize, 0 });
    }
    Chunk &chunk = m_chunks.back();
    std::byte *place = chunk.storage.get() + chunk.used;
    chunk.used += size;
    MailNode *node = MailNode::isValued(tag) ? new (place) MailNode::Valued : new (place) MailNode;
    node->tag = tag;
    return node;
}

} // namespace TarnMailHTML::detail
