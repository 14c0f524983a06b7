#include "shell/entry_screen.h"

#include "platform/controls/data_combo.h"
#include "platform/controls/text_box.h"
#include "shell/module1.h"

#include <utility>

namespace zel::shell {

namespace {

RowsPtr rowsOf(const Sql &source) {
    ado::Recordset own;
    own.Open(source, gCon, ado::adOpenKeyset, ado::adLockOptimistic, ado::adCmdText);
    return own.rows();
}

} // namespace

void ClearAll(QWidget &form, const QString &tag) {
    for (controls::TextField *box : controls::textFields(&form, tag))
        box->setShownText(QString());
}

void saveTagged(const QWidget &form, ado::Recordset &row, const QStringList &except, const QString &tag) {
    for (controls::TextField *box : controls::textFields(&form, tag)) {
        if (except.contains(box->widget()->objectName()))
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

void limitTagged(QWidget &form, ado::Recordset &columns, TypingLimit limit, const QString &tag) {
    if (limit == TypingLimit::None)
        return;
    for (controls::TextField *box : controls::textFields(&form, tag)) {
        const ado::Field field = columns.Fields(box->DataField());
        box->setMaxTyped(limit == TypingLimit::Precision ? field.Precision() : field.DefinedSize());
    }
}

void fillGrid(controls::Grid &grid, const Sql &statement, const QList<controls::Grid::Column> &columns,
              Headings whenEmpty) {
    grid.showNone();
    OpenRsForList(statement);
    const bool found = !gRs.atEnd();
    if (found) {
        grid.setRedraw(false);
        grid.setDataSource(gRs.rows());
        grid.setRedraw(true);
    }
    if (found || whenEmpty == Headings::Stay)
        grid.setColumns(columns);
}

void bindCombo(controls::DataCombo &combo, const Sql &source, const char *listField, const char *boundColumn,
               Picked picked) {
    combo.setRowSource(rowsOf(source));
    combo.setListField(listField);
    combo.setBoundColumn(boundColumn);
    if (picked != Picked::None)
        combo.setCurrentIndex(picked == Picked::First ? 0 : combo.count() - 1);
}

void refillCombo(controls::DataCombo &combo, const Sql &source) {
    combo.ReFill(rowsOf(source));
}

void FoundAccount::showIn(controls::TextBox &box) const {
    box.setText(name);
    box.setTag(QString::number(rowID));
}

std::optional<FoundAccount> takeFoundAccount() {
    if (gFoundRowID <= 0)
        return std::nullopt;
    return FoundAccount{std::exchange(gFoundRowID, 0), std::exchange(gFoundName, {})};
}

} // namespace zel::shell
