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

inline constexpr const char *Kinds[] = {"BP", "BR", "CP", "CR", "JV"};

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

/// A line that a kind is usually of.
inline Line lineOf(const QByteArray &kind, const QString &amount = "1") {
    const QString own = kind[0] == 'C' ? "CASH BOX" : kind == "JV" ? "FEES" : "BANK ONE";
    return kind[1] == 'R' ? Line{own, "RENT", amount} : Line{"RENT", own, amount};
}

/// A row of a test for each kind.
inline void kindRows() {
    columns<QByteArray>("kind");
    for (const char *kind : Kinds)
        row(kind, QByteArray(kind));
}

class Desk {
public:
    /// A fresh catalog with the accounts above and what the statements add, a user logged in, and the screen
    /// of a kind open, if one is told.
    explicit Desk(const char *kind = nullptr, const Sql &statements = {}) {
        for (int i = 1; i < int(std::size(Accounts)); ++i) {
            office.execute(
                "insert into Accounts (ParentID, Dcode, AcName, AcStatus, BStatus) values ('1.1', "_sql + i +
                ", '" + QString(Accounts[i]) + "', 'DD', " + (i <= 2 ? Sql("'B'") : Sql("null")) + ")");
        }
        if (!statements.text().empty())
            office.execute(statements);
        shell::setScreens(vouchers::voucherScreens());
        office.logIn();
        if (kind)
            open(kind);
    }

    void open(const char *kind) {
        const vouchers::VoucherKind &wanted = vouchers::voucherKind(kind);
        m_form = openByMenu(wanted.menu, wanted.form);
    }

    /// Works a screen that a test has shown itself.
    void show(QWidget *screen) { m_form = screen; }

    [[nodiscard]] QWidget *screen() const { return m_form; }
    [[nodiscard]] controls::TextBox *box(const char *name) const {
        return control<controls::TextBox>(m_form, name);
    }
    [[nodiscard]] QString text(const char *name) const { return box(name)->text(); }
    [[nodiscard]] controls::Grid *grid(const char *name) const {
        return control<controls::Grid>(m_form, name);
    }
    /// "BANK ONE 1|": the debit and the credit account in their boxes, and which they stand for.
    [[nodiscard]] QString accounts() const {
        return (text("txtDrAc") + ' ' + box("txtDrAc")->Tag()).trimmed() + '|' +
               (text("txtCrAc") + ' ' + box("txtCrAc")->Tag()).trimmed();
    }
    void expect(const QString &facts, const char *file = __builtin_FILE(),
                int line = __builtin_LINE()) const {
        test::expect(m_form, facts, file, line);
    }
    void execute(const Sql &statements) { office.execute(statements); }
    [[nodiscard]] QStringList rows(const Sql &statement) { return office.rows(statement); }
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
        QTRY_VERIFY(text(qstrcmp(button, "cmdSelectDr") == 0 ? "txtDrAc" : "txtCrAc").contains(account));
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
    QStringList add(const Line &line) {
        fill(line);
        return push("cmdAdd");
    }
    /// The texts that come up.
    QStringList push(const char *button, QMessageBox::StandardButton answer = QMessageBox::Ok) {
        return textsOf([&] { click(m_form, button); }, {answer});
    }
    /// A voucher of one line.
    void save(const Line &line) {
        add(line);
        push("cmdSave");
    }
    void date(int year, int month, int day) {
        control<controls::DateBox>(m_form, "DTPicker")->setValue(QDate(year, month, day));
    }
    void toSearch() const { turnTo(m_form, "SSTab1", 1); }
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

inline void compare(const QStringList &actual, const QStringList &expected,
                    const char *file = __builtin_FILE(), int line = __builtin_LINE()) {
    const QString both = "\nis:\n" + actual.join('\n') + "\nshould be:\n" + expected.join('\n');
    QTest::qVerify(actual == expected, "the rows are so", qPrintable(both), file, line);
}

} // namespace zel::test
