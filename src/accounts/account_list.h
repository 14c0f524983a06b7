#pragma once

#include "platform/controls/grid.h"

#include <QList>

namespace zel::accounts {

/// Shows the rows of gRs in a list of accounts under these headings; further columns of the query are cut
/// off. Without a row the list is unbound and left with one blank row under its headings.
void fillAccountList(controls::Grid &grid, const QList<controls::Grid::Column> &columns);

} // namespace zel::accounts
