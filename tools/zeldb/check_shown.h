#pragma once

#include "tools/zeldb/check.h"

#include <QByteArray>

#include <span>

namespace zel::tool {

/// What was found, for people: by rule, with what it means and what to do, and a line that sums it up.
[[nodiscard]] QString asReport(std::span<const Finding> found);

/// {"keys":{...},"rule":"...","severity":"...","table":"...","text":"..."} on one line.
[[nodiscard]] QByteArray asJson(const Finding &finding);

/// The rule and the keys, such as "voucher-total VouStatus=JV VouNo=7".
[[nodiscard]] QString nameOf(const Finding &finding);

/// Each rule's name, severity and title.
[[nodiscard]] QString ruleList();

/// Whether nothing was found but notes.
[[nodiscard]] bool isSound(std::span<const Finding> found);

} // namespace zel::tool
