#pragma once

#include "platform/controls/date_box.h"
#include "platform/controls/grid.h"
#include "platform/controls/memo_box.h"
#include "platform/controls/text_box.h"
#include "tests/support/driver.h"
#include "tests/support/office.h"
#include "tests/support/rows.h"
#include "tests/support/test_program.h"
#include "vouchers/voucher.h"

#include <QApplication>
#include <QTest>

/// A clerk at a voucher screen: the real screen on a real catalog, worked by keys.
namespace zel::test {

/// The accounts of these tests; RowID is the place in the list.
inline const char *const Accounts[] = {"", "BANK ONE", "BANK TWO", "CASH BOX", "RENT", "LIGHT", "FEES"};

inline int accountId(const QString &name) {
    for (int i = 1; i < int(std::size(Accounts)); ++i)
        if (name == Accounts[i])
            return i;
    return 0;
}

/// One line as it is typed. An empty account is left as the screen has it.
struct Line {
    QString debit;
    QString credit;
    QString amount;
    QString cheque{};
    QString naration{};
    QString file{};
    QString bill{};
};

class Desk {
public:
    /// A fresh catalog with the accounts above and a user logged in.
    explicit Desk(const Sql &rows = {}) {
        for (int i = 1; i < int(std::size(Accounts)); ++i) {
            office.execute(
                "insert into Accounts (ParentID, Dcode, AcName, AcStatus, BStatus) values ('1.1', "_sql + i +
                ", '" + QString(Accounts[i]) + "', 'DD', " + (i <= 2 ? Sql("'B'") : Sql("null")) + ")");
        }
        if (!rows.text().empty())
            office.execute(rows);
        shell::setScreens(vouchers::voucherScreens());
        office.logIn();
    }

    void open(const char *kind) {
        m_kind = &vouchers::voucherKind(kind);
        m_form = openByMenu(m_kind->menu, m_kind->form);
    }

    /// Works a screen that a test has shown itself.
    void show(QWidget *screen) { m_form = screen; }

    [[nodiscard]] QWidget *screen() const { return m_form; }
    [[nodiscard]] controls::TextBox *box(const char *name) const {
        return control<controls::TextBox>(m_form, name);
    }
    [[nodiscard]] QString text(const char *name) const { return box(name)->text(); }
    [[nodiscard]] QString tag(const char *name) const { return box(name)->Tag(); }
    [[nodiscard]] controls::Grid *grid(const char *name) const {
        return control<controls::Grid>(m_form, name);
    }
    [[nodiscard]] bool enabled(const char *name) const { return control(m_form, name)->isEnabled(); }
    [[nodiscard]] QString label(const char *name) const {
        return control(m_form, name)->property("text").toString();
    }
    /// The cells of a grid below the heading, the columns that can be seen.
    [[nodiscard]] QStringList seen(const char *name) const {
        QStringList rows;
        const controls::Grid *cells = grid(name);
        for (int row = 1; row < cells->Rows(); ++row) {
            QStringList texts;
            for (int col = 0; col < cells->Cols(); ++col)
                if (!cells->isColumnHidden(col))
                    texts << cells->TextMatrix(row, col);
            rows << texts.join('|');
        }
        return rows;
    }

    /// Picks an account in the finder by keys.
    void choose(const char *button, const QString &account) {
        click(m_form, button);
        QWidget *finder = form("frmFindAC");
        QVERIFY(finder);
        typeInto(finder, "txtFindAC", account);
        press(Qt::Key_Down);
        press(Qt::Key_Return);
        QTRY_VERIFY(!form("frmFindAC"));
        QTRY_COMPARE(
            tag(qstrcmp(button, "cmdSelectDr") == 0 ? "txtDrAc" : "txtCrAc"),
            office.rows("select RowID from Accounts where AcName like '%"_sql + account + "%'").at(0));
    }

    /// Fills the line's boxes.
    void fill(const Line &line) {
        if (!line.debit.isEmpty())
            choose("cmdSelectDr", line.debit);
        if (!line.credit.isEmpty())
            choose("cmdSelectCr", line.credit);
        replace("txtDRCR", line.amount);
        replace("txtChecque", line.cheque);
        replace("txtNaration", line.naration);
        replace("txtFile", line.file);
        replace("txtBill", line.bill);
    }
    /// Types over what a box holds.
    void replace(const char *name, const QString &text) {
        if (auto *memo = qobject_cast<controls::MemoBox *>(control(m_form, name)))
            memo->selectAll();
        typeInto(m_form, name, text);
    }
    std::vector<Box> add(const Line &line) {
        fill(line);
        return push("cmdAdd");
    }
    std::vector<Box> push(const char *button, QMessageBox::StandardButton answer = QMessageBox::Ok) {
        return boxes([&] { click(m_form, button); }, answer);
    }
    /// What an action says. The window comes back to the front behind a box, which not every platform of
    /// tests does by itself.
    static std::vector<Box> boxes(const std::function<void()> &action,
                                  QMessageBox::StandardButton answer = QMessageBox::Ok) {
        std::vector<Box> shown = boxesOf(action, {answer});
        if (!QApplication::activeWindow())
            form("MDIForm1")->activateWindow();
        settle();
        return shown;
    }
    void date(int year, int month, int day) {
        control<controls::DateBox>(m_form, "DTPicker")->setValue(QDate(year, month, day));
    }
    /// Opens the voucher in that row of the search list, 1 the newest.
    void openFromSearch(int row) {
        grid("mshSearch")->setRow(row);
        grid("mshSearch")->setFocus();
        press(Qt::Key_F2);
    }

    /// The mouse on a cell that can be seen, twice.
    void doubleClick(const char *name, int row, int col) const {
        const controls::Grid *cells = grid(name);
        settle();
        const QPoint place = cells->visualRect(cells->model()->index(row - 1, col)).center();
        QTest::mouseClick(cells->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(cells->viewport(), Qt::LeftButton, {}, place);
        settle();
    }

    Office office;

private:
    const vouchers::VoucherKind *m_kind = nullptr;
    QWidget *m_form = nullptr;
};

/// Rows written as lines of cells parted by "|", with blanks around them for the eye, as Office::rows gives
/// them; "''" is an empty text.
inline QStringList table(const QString &text) {
    QStringList rows;
    for (const QString &line : text.split('\n', Qt::SkipEmptyParts)) {
        QStringList cells;
        for (const QString &cell : line.split('|'))
            cells << (cell.trimmed() == "''" ? QString() : cell.trimmed());
        rows << cells.join('|');
    }
    return rows;
}

inline void compare(const QStringList &actual, const QStringList &expected) {
    QVERIFY2(actual == expected,
             qPrintable("\nis:\n" + actual.join('\n') + "\nshould be:\n" + expected.join('\n')));
}

} // namespace zel::test
