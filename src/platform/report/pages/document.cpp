#include "platform/report/pages/document_content.h"

#include <algorithm>

namespace zel::report {

Document::Private::Private(const Request &request, Source &source,
                           std::shared_ptr<const TextMetrics> textMetrics)
    : metrics(std::move(textMetrics)), run(request, source) {
    for (int copy = 0; copy < run.copies(); ++copy) {
        passes.push_back(std::make_unique<Pass>(run, std::nullopt, copy));
        firstPages.push_back(static_cast<int>(starts.size()));
        const Paginator paginator(*passes.back(), *metrics);
        for (Cursor &start : paginator.pageStarts())
            starts.push_back({copy, std::move(start)});
    }
    firstPages.push_back(static_cast<int>(starts.size()));
}

Document::Document(std::unique_ptr<Private> content) : d(std::move(content)) {}
Document::~Document() = default;

QString Document::title() const {
    const Definition &definition = d->run.definition();
    return definition.title.isEmpty() ? definition.name : definition.title;
}

int Document::pageCount() const {
    return static_cast<int>(d->starts.size());
}

QSizeF Document::pageSize() const {
    return d->run.definition().pageSize;
}

Page Document::page(int index) const {
    const auto &[copy, start] = d->starts.at(static_cast<std::size_t>(index));
    const auto at = static_cast<std::size_t>(copy);
    const int first = d->firstPages[at];
    const Paginator paginator(*d->passes[at], *d->metrics);
    return paginator.page(start, index - first + 1, d->firstPages[at + 1] - first);
}

QString Document::plainText() const {
    QString text;
    for (int index = 0; index < pageCount(); ++index) {
        if (index > 0)
            text += QLatin1Char('\f');
        text += page(index).plainText();
    }
    return text;
}

/// What stands under a node without a title stands in its place.
static std::vector<GroupNode> titled(std::vector<GroupNode> nodes) {
    std::vector<GroupNode> kept;
    for (GroupNode &node : nodes) {
        node.children = titled(std::move(node.children));
        if (node.title.isEmpty())
            std::ranges::move(node.children, std::back_inserter(kept));
        else
            kept.push_back(std::move(node));
    }
    return kept;
}

std::vector<GroupNode> Document::groups() const {
    std::vector<GroupNode> tree;
    const Definition &definition = d->run.definition();
    std::size_t page = 0;
    for (std::size_t copy = 0; copy < d->passes.size() && !definition.groups.empty(); ++copy) {
        const Pass &pass = *d->passes[copy];
        Cursor cursor;
        cursor.phase = Phase::GroupHeader;
        cursor.instances.assign(definition.groups.size(), -1);
        for (cursor.row = 0; cursor.row < pass.rowCount(); ++cursor.row) {
            for (cursor.level = pass.firstNewGroup(cursor.row); cursor.level < std::ssize(definition.groups);
                 ++cursor.level) {
                ++cursor.instances[static_cast<std::size_t>(cursor.level)];
                while (page + 1 < d->starts.size() && (d->starts[page + 1].copy < static_cast<int>(copy) ||
                                                       (d->starts[page + 1].copy == static_cast<int>(copy) &&
                                                        !isBefore(cursor, d->starts[page + 1].cursor))))
                    ++page;
                const GroupDefinition &group = definition.groups[static_cast<std::size_t>(cursor.level)];
                const ExpressionPtr &title = group.title ? group.title : group.by;
                std::vector<GroupNode> *siblings = &tree;
                for (int level = 0; level < cursor.level; ++level)
                    siblings = &siblings->back().children;
                const Value value = evaluate(*title, PassScene(pass, cursor));
                siblings->push_back({shown(value, title->kind, {}, QStringLiteral("dd/MM/yyyy")),
                                     static_cast<int>(page),
                                     {}});
            }
        }
    }
    return titled(std::move(tree));
}

} // namespace zel::report
