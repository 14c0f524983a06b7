#pragma once

#include "platform/report/formula/expression.h"

#include <span>
#include <string_view>

namespace zel::report {

class Scene;

/// A function of the formula language.
struct Function {
    std::string_view name; ///< lower case
    int minimum;           ///< arguments
    int maximum;
    Kind arguments[2]; ///< Null: any kind
    Kind result;
    Stage stage;
    Value (*evaluate)(std::span<const Value> arguments, const Scene &scene);
    Literal sql = ""; ///< in a statement: $ is the argument; empty: can't stand in one
};

/// -1 when there is none of that name.
[[nodiscard]] int functionIndex(std::string_view name);
[[nodiscard]] const Function &function(int index);

} // namespace zel::report
