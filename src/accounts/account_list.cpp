#include "accounts/account_list.h"

#include "shell/module1.h"

namespace zel::accounts {

void fillAccountList(controls::Grid &grid, const QList<controls::Grid::Column> &columns) {
    if (shell::gRs.RecordCount() < 1) {
        grid.setDataSource(nullptr);
        grid.Clear();
        grid.setRows(2);
    } else {
        grid.Clear();
        grid.setRedraw(false);
        grid.setDataSource(shell::gRs.rows());
        grid.setRedraw(true);
    }
    grid.setColumns(columns);
}

} // namespace zel::accounts
