#include "mail/TarnMailBlock.h"

#include "mail/TarnMailImage.h"
#include "mail/TarnMailTable.h"

#include <utility>

namespace {

template <typename T> const T &emptyValue()
{
    static const T value {};
    return value;
}

} // namespace

TarnMailBlock::TarnMailBlock(Kind kind, Payload payload)
    : m_kind(kind)
    , m_payload(std::move(payload))
{
}

TarnMailBlock TarnMailBlock::paragraph(QList<TarnMailRun> runs)
{
    return { Kind::Paragraph, Runs { 0, std::move(runs) } };
}

TarnMailBlock TarnMailBlock::heading(int level, QList<TarnMailRun> runs)
{
    return { Kind::Heading, Runs { qBound(1, level, 6), std::move(runs) } };
}

TarnMailBlock TarnMailBlock::list(bool ordered, int start, QList<QList<TarnMailBlock>> items)
{
    return { Kind::List, Items { ordered, start, std::move(items) } };
}

TarnMailBlock TarnMailBlock::quote(QList<TarnMailBlock> blocks)
{
    return { Kind::Quote, Children { std::move(blocks) } };
}

TarnMailBlock TarnMailBlock::preformatted(QString text)
{
    return { Kind::Preformatted, std::move(text) };
}

TarnMailBlock TarnMailBlock::table(TarnMailTable table)
{
    return { Kind::Table, std::make_shared<const TarnMailTable>(std::move(table)) };
}

TarnMailBlock TarnMailBlock::image(TarnMailImage image)
{
    return { Kind::Image, std::make_shared<const TarnMailImage>(std::move(image)) };
}

TarnMailBlock TarnMailBlock::signature(QList<TarnMailBlock> blocks)
{
    return { Kind::Signature, Children { std::move(blocks) } };
}

TarnMailBlock TarnMailBlock::rule()
{
    return { Kind::Rule, std::monostate {} };
}

const QList<TarnMailRun> &TarnMailBlock::runs() const
{
    const auto *p = std::get_if<Runs>(&m_payload);
    return p ? p->runs : emptyValue<QList<TarnMailRun>>();
}

int TarnMailBlock::level() const
{
    const auto *p = std::get_if<Runs>(&m_payload);
    return p ? p->level : 0;
}

bool TarnMailBlock::ordered() const
{
    const auto *p = std::get_if<Items>(&m_payload);
    return p && p->ordered;
}

int TarnMailBlock::start() const
{
    const auto *p = std::get_if<Items>(&m_payload);
    return p ? p->start : 1;
}

const QList<QList<TarnMailBlock>> &TarnMailBlock::items() const
{
    const auto *p = std::get_if<Items>(&m_payload);
    return p ? p->items : emptyValue<QList<QList<TarnMailBlock>>>();
}

const QList<TarnMailBlock> &TarnMailBlock::blocks() const
{
    const auto *p = std::get_if<Children>(&m_payload);
    return p ? p->blocks : emptyValue<QList<TarnMailBlock>>();
}

const QString &TarnMailBlock::text() const
{
    const auto *p = std::get_if<QString>(&m_payload);
    return p ? *p : emptyValue<QString>();
}

const TarnMailTable &TarnMailBlock::table() const
{
    const auto *p = std::get_if<std::shared_ptr<const TarnMailTable>>(&m_payload);
    return p ? **p : emptyValue<TarnMailTable>();
}

const TarnMailImage &TarnMailBlock::image() const
{
    const auto *p = std::get_if<std::shared_ptr<const TarnMailImage>>(&m_payload);
    return p ? **p : emptyValue<TarnMailImage>();
}

bool operator==(const TarnMailBlock &a, const TarnMailBlock &b)
{
    if (a.m_kind != b.m_kind)
        return false;
    switch (a.m_kind) {
    case TarnMailBlock::Kind::Paragraph:
    case TarnMailBlock::Kind::Heading:
        return a.level() == b.level() && a.runs() == b.runs();
    case TarnMailBlock::Kind::List:
        return a.ordered() == b.ordered() && a.start() == b.start() && a.items() == b.items();
    case TarnMailBlock::Kind::Quote:
    case TarnMailBlock::Kind::Signature:
        return a.blocks() == b.blocks();
    case TarnMailBlock::Kind::Preformatted:
        return a.text() == b.text();
    case TarnMailBlock::Kind::Table:
        return a.table() == b.table();
    case TarnMailBlock::Kind::Image:
        return a.image() == b.image();
    case TarnMailBlock::Kind::Rule:
        return true;
    }
    return false;
}
