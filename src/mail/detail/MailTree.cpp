#include "mail/detail/MailTree.h"

#include <memory>
#include <new>

namespace TarnMailHTML::detail {

MailTree::MailTree()
{
    m_root = create(Tag::Root);
}

MailTree::~MailTree()
{
    for (size_t i = 0; i < m_chunks.size(); ++i) {
        auto *nodes = reinterpret_cast<MailNode *>(m_chunks[i].storage.get());
        const size_t used = i + 1 == m_chunks.size() ? m_used : m_chunks[i].size;
        std::destroy_n(nodes, used);
    }
}

MailNode *MailTree::create(Tag tag)
{
    if (m_used == m_chunkSize) {
        m_chunkSize = m_chunkSize == 0 ? firstChunk : qMin(m_chunkSize * 2, largestChunk);
        // operator new[] of std::byte is aligned for any fundamental type, MailNode's included.
        m_chunks.push_back({std::make_unique_for_overwrite<std::byte[]>(m_chunkSize * sizeof(MailNode)), m_chunkSize});
        m_used = 0;
    }
    auto *node = new (m_chunks.back().storage.get() + m_used++ * sizeof(MailNode)) MailNode;
    node->tag = tag;
    return node;
}

} // namespace TarnMailHTML::detail
