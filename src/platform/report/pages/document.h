#pragma once

#include "platform/report/pages/page.h"

#include <memory>
#include <vector>

namespace zel::report {

/// A node of the group tree: a group's title and the page that it begins on (from 0).
struct GroupNode {
    QString title;
    int page = 0;
    std::vector<GroupNode> children;
};

/// A report with its rows read and its page breaks known. A page is laid out each time it is asked for;
/// besides the rows only a few numbers a page are kept. Nothing is read from the database any more.
class Document {
public:
    struct Private;
    explicit Document(std::unique_ptr<Private> content);
    ~Document();
    Document(const Document &) = delete;
    Document &operator=(const Document &) = delete;

    [[nodiscard]] QString title() const;
    /// At least 1.
    [[nodiscard]] int pageCount() const;
    [[nodiscard]] QSizeF pageSize() const; ///< millimetres, the same for all pages
    /// Pages count from 0.
    [[nodiscard]] Page page(int index) const;
    /// All pages' plain texts, a form feed between them.
    [[nodiscard]] QString plainText() const;
    [[nodiscard]] std::vector<GroupNode> groups() const;

private:
    std::unique_ptr<Private> d;
};
using DocumentPtr = std::shared_ptr<const Document>;

} // namespace zel::report
