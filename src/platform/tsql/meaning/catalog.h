#pragma once

#include "platform/tsql/text/type.h"

#include <string>
#include <string_view>
#include <vector>

namespace zel::tsql {

struct Column {
    std::string name;
    Type type;
    bool nullable = true;
    bool identity = false;
};

struct Table {
    std::string name; ///< as created; looked up without regard to case
    std::vector<Column> columns;
};

/// What the front end asks of the database it writes for. Pointers stay valid until the catalog changes.
class Catalog {
public:
    virtual ~Catalog() = default;
    [[nodiscard]] virtual const Table *table(std::string_view name) const = 0;
    /// Whether an index of all the table's rows begins with these two columns, in this order.
    [[nodiscard]] virtual bool indexed(const Table & /*table*/, std::string_view /*first*/,
                                       std::string_view /*second*/) const {
        return false;
    }
    /// Text of "create procedure NAME ..." as stored; nullptr when there is none.
    [[nodiscard]] virtual const std::string *procedure(std::string_view name) const = 0;
};

} // namespace zel::tsql
