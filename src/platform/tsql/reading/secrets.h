#pragma once

#include "platform/base/error.h"
#include "platform/base/sql.h"

#include <string>
#include <string_view>

namespace zel::tsql {

/// The same error without what nobody may read: of the text's secret pieces, and of whatever is handed to the
/// procedures that keep logins, its line shows three stars each. A name or a value in the message stays only
/// if it stands in the text outside them.
[[nodiscard]] Error withoutSecrets(const Error &error, const Sql &text);

} // namespace zel::tsql
