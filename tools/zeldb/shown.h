#pragma once

#include "platform/ado/statements.h"
#include "platform/base/error.h"

#include <QByteArray>
#include <QJsonValue>
#include <QString>

namespace zel::tool {

/// NULL as "NULL", a date as YYYY-MM-DD with the time of day behind when there is one.
[[nodiscard]] QString shown(const Value &value);
/// Numbers as numbers, dates as texts, NULL as null.
[[nodiscard]] QJsonValue asJson(const Value &value);

/// An outcome as a table for people: headings, a rule, the rows with numbers to the right; or how many rows
/// were changed.
[[nodiscard]] QString asTable(const ado::Outcome &outcome);

/// {"ok":true,"columns":[...],"rows":[[...]],"rows_affected":n} on one line: numbers as numbers, dates as
/// YYYY-MM-DD (with HH:MM:SS behind when there is a time of day), NULL as null.
[[nodiscard]] QByteArray asJson(const ado::Outcome &outcome);
/// {"ok":false,"number":n,"error":"..."} on one line.
[[nodiscard]] QByteArray asJson(const Error &failure);

} // namespace zel::tool
