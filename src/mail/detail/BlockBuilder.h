#pragma once

#include "mail/TarnMailBlock.h"
#include "mail/TarnMailDocument.h"
#include "mail/detail/Context.h"
#include "mail/detail/MailNode.h"
#include "mail/detail/Shared.h"

#include <QList>
#include <QStringView>

#include <vector>

namespace TarnMailHTML::detail {

// Turns a MailNode tree into blocks. The root builder walks the document;
// quotes, list items, table cells and signatures get a fresh non-root builder
// over the same Shared, so that limits and counters span the whole parse.
class BlockBuilder {
public:
    // The document of the tree under `root`, read within the limits.
    [[nodiscard]] static TarnMailDocument document(const MailNode &root, int characterLimit, int blockLimit);

    BlockBuilder(Shared &shared, bool isRoot);
    BlockBuilder(const BlockBuilder &) = delete;
    BlockBuilder &operator=(const BlockBuilder &) = delete;

    void visit(const MailNode &node, const Context &context);
    void walk(const MailNode &node, const Context &context);
    void flushParagraph();
    [[nodiscard]] QList<TarnMailBlock> takeBlocks();

private:
    struct Row {
        const MailNode *row = nullptr;
        bool inHead = false;
    };

    void addText(const QString &text, const Context &context);
    // Whitespace runs as one space (none after `afterSpace`), invisible characters removed.
    [[nodiscard]] static QString collapsed(QStringView text, bool afterSpace);
    // Counts `text` against the character limit: past it, cuts it (never
    // inside a surrogate pair) and marks the parse truncated.
    void charge(QString &text);
    void lineBreak(const Context &context);
    void appendRun(const QString &text, const Context &context);
    void emitBlock(TarnMailBlock block);
    [[nodiscard]] bool emittedContent() const;

    void history(const MailNode &node, const Context &context);
    void signature(const MailNode &node, const Context &context);
    void link(const MailNode &node, Context context);
    void image(const MailNode &node, const Context &context);
    void heading(const MailNode &node, const Context &context, int level);
    void list(const MailNode &node, const Context &context);
    void preformatted(const MailNode &node);
    void table(const MailNode &node, const Context &context);
    void dataTable(const MailNode &node, const std::vector<Row> &rows, const Context &context);
    [[nodiscard]] QList<TarnMailRun> cellRuns(const MailNode &cell, const Context &context);

    [[nodiscard]] static std::vector<Row> rows(const MailNode &table);
    [[nodiscard]] static bool isDataTable(const MailNode &table, const std::vector<Row> &rows);

    Shared &m_shared;
    bool m_isRoot;
    QList<TarnMailBlock> m_blocks;
    QList<TarnMailRun> m_runs; // the open paragraph
};

} // namespace TarnMailHTML::detail
