#include "shell/entry_screen.h"

#include "platform/controls/combo_box.h"
#include "platform/controls/focus.h"
#include "platform/controls/text_box.h"

#include <utility>

namespace zel::shell {

void ClearAll(QWidget &form, const QString &tag) {
    for (controls::TextField *box : controls::textFields(&form, tag))
        box->setShownText(QString());
}

void saveTagged(const QWidget &form, ado::Recordset &row, const QString &except, const QString &tag) {
    for (controls::TextField *box : controls::textFields(&form, tag)) {
        if (box->widget()->objectName() == except)
            continue;
        const QString text = box->shownText();
        row.Fields(box->DataField()) = text.isEmpty() ? Value(Null()) : Value(text);
    }
}

void loadTagged(QWidget &form, ado::Recordset &row, const QString &except, const QString &tag) {
    for (controls::TextField *box : controls::textFields(&form, tag))
        if (box->widget()->objectName() != except)
            box->setShownText(row.Fields(box->DataField()).text());
}

void limitTagged(QWidget &form, ado::Recordset &columns, const QString &tag) {
    for (controls::TextField *box : controls::textFields(&form, tag))
        box->setMaxTyped(columns.Fields(box->DataField()).DefinedSize());
}

void fillGrid(controls::Grid &grid, const ado::Recordset &rows,
              const QList<controls::Grid::Column> &columns) {
    if (rows.RecordCount() < 1) {
        grid.setDataSource(nullptr);
        grid.Clear();
        grid.setRows(2);
        return;
    }
    grid.setRedraw(false);
    grid.setDataSource(rows.rows());
    grid.setRedraw(true);
    grid.setColumns(columns);
}

void wireSearch(controls::TextBox &value, controls::ComboBox &criterion, controls::Grid &list,
                std::function<void(const QString &criterion)> search) {
    QObject::connect(&value, &controls::TextBox::changed, &list,
                     [&criterion, search = std::move(search)] { search(criterion.Text()); });
    QObject::connect(&value, &controls::TextBox::upOrDown, &list, [&list] { controls::SetFocus(&list); });
}

void wireChoice(controls::Grid &list, std::function<void()> choose) {
    QObject::connect(&list, &controls::Grid::rowDoubleClicked, &list, choose);
    QObject::connect(&list, &controls::Grid::enterPressed, &list, choose);
}

} // namespace zel::shell
