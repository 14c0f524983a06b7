#pragma once

#include "platform/ado/drivers/driver.h"
#include "tools/zeldb/check_rules.h"

#include <functional>
#include <utility>
#include <vector>

namespace zel::tool {

/// What breaks a rule: its keys with their values, and the rule's sentence about it.
struct Finding {
    const Rule *rule;
    std::vector<std::pair<QString, Value>> keys;
    QString text;
};

/// Holds a catalog against all rules, as it stands at one moment, and writes nothing to it. Left out are the
/// rules about a table that is missing, which is a finding itself, and all about the books of a damaged file
/// and of a catalog without any table (zeldb create --bare). `progress` is told before each step, and when
/// all are done.
[[nodiscard]] std::vector<Finding> findings(ado::Driver &driver,
                                            const std::function<void(int done, int all)> &progress = {});

} // namespace zel::tool
