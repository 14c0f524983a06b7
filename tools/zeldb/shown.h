#pragma once

#include "platform/ado/statements.h"
#include "platform/base/error.h"

#include <QByteArray>
#include <QString>

namespace zel::tool {

/// An outcome as a table for people: headings, a rule, the rows with numbers to the right; or how many rows
/// were changed.
[[nodiscard]] QString asTable(const ado::Outcome &outcome);

/// {"ok":true,"columns":[...],"rows":[[...]],"rows_affected":n} on one line: numbers as numbers, dates as
/// YYYY-MM-DD (with HH:MM:SS behind when there is a time of day), NULL as null.
[[nodiscard]] QByteArray asJson(const ado::Outcome &outcome);
/// {"ok":false,"number":n,"error":"..."} on one line.
[[nodiscard]] QByteArray asJson(const Error &failure);

} // namespace zel::tool
