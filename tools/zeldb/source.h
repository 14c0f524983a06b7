#pragma once

#include "platform/ado/drivers/driver.h"
#include "table_sum.h"

#include <functional>
#include <vector>

namespace zel::tool {

class Progress;

/// Where the content of a catalog comes from: another one, or a backup.
class Source {
public:
    Source() = default;
    virtual ~Source() = default;
    Source(const Source &) = delete;
    Source &operator=(const Source &) = delete;
    [[nodiscard]] virtual const ado::Inventory &inventory() const = 0;
    virtual void readRows(const ado::TableDefinition &table, const std::function<void(ado::Cells)> &told) = 0;
};

/// A catalog as it is at one moment, whatever is written to it meanwhile.
class CatalogSource final : public Source {
public:
    explicit CatalogSource(ado::Driver &driver);
    ~CatalogSource() override { m_driver.rollback(); }
    [[nodiscard]] const ado::Inventory &inventory() const override { return m_inventory; }
    void readRows(const ado::TableDefinition &table, const std::function<void(ado::Cells)> &told) override {
        m_driver.readRows(table, told);
    }

private:
    ado::Driver &m_driver;
    ado::Inventory m_inventory;
};

/// All rows there are, for a progress.
[[nodiscard]] std::int64_t rowsOf(const ado::Inventory &inventory);

/// Writes all of it into an empty catalog, in the transaction that is open there, and reads the rows again: a
/// failure unless they are the same. The sums of the tables, in their order.
std::vector<TableSum> fill(ado::Driver &target, Source &source, Progress &progress);

} // namespace zel::tool
