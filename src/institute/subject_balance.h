#pragma once

#include "platform/base/sql.h"

namespace zel::institute {

/// What of a subject's fee was received and what remains, as Received and RemainingAmt: one row for each line
/// that the application has of the subject. Received are what the application form took and all that was
/// credited to the student's account for the subject by receipts (FR) and amounts carried forward (CF), in
/// whichever session. Nothing remains where the line has no net amount; below 0 is what was received too
/// much.
[[nodiscard]] Sql subjectBalance(const QString &account, const QString &subject, int application);

} // namespace zel::institute
