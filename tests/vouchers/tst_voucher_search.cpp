#include "tests/support/rows.h"
#include "tests/vouchers/voucher_desk.h"

#include "platform/controls/combo_box.h"

#include <QFile>
#include <QLineEdit>

using namespace zel;
using namespace zel::test;

namespace {

/// Three bank payments and one journal with the number of one of them.
Sql someVouchers() {
    Sql all;
    for (const char *values :
         {"12, 'BP', '2026-03-05', 'Landlord', 1234.5", "112, 'BP', '2026-03-15', 'City light', 10",
          "20, 'BP', '2025-11-05', null, 7", "12, 'JV', '2026-03-05', 'Landlord', 99"})
        all = all + "insert into MasJV (VouNo, VouStatus, VouDate, PaidReceive, TotalAmount) values (" +
              Sql::trusted(values) + ") ";
    return all;
}

void choose(Desk &desk, const QString &criterion) {
    auto *combo = control<controls::ComboBox>(desk.screen(), "cboSearch");
    combo->setFocus();
    while (combo->Text() != criterion)
        press(combo->findText(criterion) > combo->currentIndex() ? Qt::Key_Down : Qt::Key_Up);
}

void toSearch(Desk &desk) {
    turnTo(desk.screen(), "SSTab1", 1);
}

} // namespace

void quoteInTheSearch(const char *criterion) {
    Desk desk(someVouchers());
    desk.open("BP");
    toSearch(desk);
    choose(desk, criterion);
    typeInto(desk.screen(), "txtSearch", "o'");
}

void printWithoutReport() {
    Desk desk;
    desk.open("JV");
    click(desk.screen(), "cmdPrint");
}

class tst_voucher_search : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void finds_data() {
        columns<QString, QString, QString>("criterion", "typed", "numbers");
        row("part of a number", "Voucher #", "12", "112 12");
        row("a number", "Voucher #", "20", "20");
        row("no such number", "Voucher #", "3", "");
        row("a date", "Date", "2026-03-05", "12");
        row("a date of one more digit", "Date", "2025-11-05", "20");
        row("a day without vouchers", "Date", "2026-03-06", "");
        row("part of a name, case ignored", "Paid To", "l", "112 12");
        row("no such name", "Paid To", "xyz", "");
    }

    void finds() {
        QFETCH(QString, criterion);
        QFETCH(QString, typed);
        QFETCH(QString, numbers);
        const QMap<QString, QString> rows{{"112", "112|15-03-2026|City light|10|"},
                                          {"20", "20|05-11-2025||7|"},
                                          {"12", "12|05-03-2026|Landlord|1234.5|"},
                                          {"", "||||"}};
        Desk desk(someVouchers());
        desk.open("BP");
        compare(desk.seen("mshSearch"), {rows["112"], rows["20"], rows["12"]});
        toSearch(desk);
        choose(desk, criterion);
        QCOMPARE(desk.label("lblSearch"), criterion);
        QCOMPARE(control(desk.screen(), "DTPSearch")->isVisible(), criterion == "Date");
        if (criterion == "Date")
            control<controls::DateBox>(desk.screen(), "DTPSearch")
                ->setValue(QDate::fromString(typed, Qt::ISODate));
        else
            typeInto(desk.screen(), "txtSearch", typed);
        QStringList found;
        for (const QString &number : numbers.split(' '))
            found << rows[number];
        compare(desk.seen("mshSearch"), found);
        settle();
        picture(desk.screen(), QString("frmBP-search, ") + QTest::currentDataTag());
        if (criterion != "Date") {
            typeInto(desk.screen(), "txtSearch", "");
            QCOMPARE(desk.seen("mshSearch").size(), criterion == "Paid To" ? 2 : 3);
        }
    }

    /// A number is searched in eight characters: one that needs more is listed, and no digits find it.
    void numbersOfNineDigits() {
        Desk desk("update VouSetting set VouNo = '99999999'");
        desk.open("JV");
        for (int i = 0; i < 2; ++i) {
            desk.add({"RENT", "FEES", "1"});
            desk.push("cmdSave");
        }
        const auto numbers = [&] {
            return desk.grid("mshSearch")->TextMatrix(1, 0) + ' ' +
                   (desk.grid("mshSearch")->Rows() > 2 ? desk.grid("mshSearch")->TextMatrix(2, 0)
                                                       : QString());
        };
        QCOMPARE(numbers(), "100000000 99999999");
        toSearch(desk);
        typeInto(desk.screen(), "txtSearch", "0");
        QCOMPARE(numbers(), " ");
        typeInto(desk.screen(), "txtSearch", "9");
        QCOMPARE(numbers(), "99999999 ");
        typeInto(desk.screen(), "txtSearch", "");
        desk.openFromSearch(1);
        QCOMPARE(desk.text("txtVoucher"), "100000000");
    }

    void theCriterionAloneSearchesNothing() {
        Desk desk(someVouchers());
        desk.open("BP");
        toSearch(desk);
        choose(desk, "Date");
        const QStringList all = desk.seen("mshSearch");
        QCOMPARE(all.size(), 3);
        control<controls::DateBox>(desk.screen(), "DTPSearch")->setValue(QDate(2026, 3, 5));
        const QStringList found = desk.seen("mshSearch");
        QCOMPARE(found.size(), 1);
        choose(desk, "Paid To");
        QVERIFY(!control(desk.screen(), "DTPSearch")->isVisible());
        compare(desk.seen("mshSearch"), found);
        typeInto(desk.screen(), "txtSearch", "c");
        QCOMPARE(desk.seen("mshSearch").value(0).section('|', 0, 0), "112");
    }

    void severalLinesAreMarked_data() {
        columns<Line, QString>("line", "after");
        row("BP", Line{"RENT", "BANK ONE", "1"}, "M");
        row("BR", Line{"BANK ONE", "RENT", "1"}, "M");
        row("CP", Line{"RENT", "CASH BOX", "1"}, "M");
        row("CR", Line{"CASH BOX", "RENT", "1"}, "");
        row("JV", Line{"RENT", "FEES", "1"}, "M");
    }

    void severalLinesAreMarked() {
        QFETCH(Line, line);
        QFETCH(QString, after);
        Desk desk;
        desk.open(QTest::currentDataTag());
        const auto mark = [&] { return desk.grid("mshSearch")->TextMatrix(1, 4); };
        const auto searchAnew = [&] {
            typeInto(desk.screen(), "txtSearch", "1");
            typeInto(desk.screen(), "txtSearch", "");
        };
        desk.add(line);
        desk.add(line);
        desk.push("cmdSave");
        QCOMPARE(mark(), ""); // the list was filled before the lines were there
        toSearch(desk);
        searchAnew();
        QCOMPARE(mark(), after);
        desk.openFromSearch(1);
        desk.push("acmRemove");
        desk.push("cmdSave");
        QCOMPARE(mark(), after);
        toSearch(desk);
        searchAnew();
        QCOMPARE(mark(), "");
    }

    void opens_data() {
        columns<QString, QString, QString>("debit", "credit", "rows");
        // As they were typed: the bank or cash first on the receiving kinds.
        const QString paid = "RENT|BANK ONE|100.00|c|n|1|2\nLIGHT|BANK TWO|1,050.00|''|''|''|''";
        const QString got = "BANK ONE|RENT|100.00|c|n|1|2\nBANK TWO|LIGHT|1,050.00|''|''|''|''";
        const QString cash = "RENT|100.00|c|n|1|2\nLIGHT|1,050.00|''|''|''|''";
        row("BP", "", "BANK ONE", paid);
        row("BR", "BANK ONE", "", got);
        row("CP", "", "CASH BOX", cash);
        row("CR", "CASH BOX", "", cash);
        row("JV", "", "", paid);
    }

    void opens() {
        QFETCH(QString, debit);
        QFETCH(QString, credit);
        QFETCH(QString, rows);
        const QByteArray kind = QTest::currentDataTag();
        const bool receives = kind.endsWith('R');
        const bool cash = kind.startsWith('C');
        Desk desk;
        desk.open(kind);
        desk.date(2026, 2, 3);
        desk.replace("txtPaidTo", "Somebody");
        for (const auto &[account, bank, amount, rest] :
             {std::tuple("RENT", "BANK ONE", "100", true), std::tuple("LIGHT", "BANK TWO", "1050", false)}) {
            const QString other = cash ? "CASH BOX" : bank;
            Line line{receives ? other : account, receives ? QString(account) : other, amount};
            if (rest) {
                line.cheque = "c";
                line.naration = "n";
                line.file = "1";
                line.bill = "2";
            }
            desk.add(line);
        }
        desk.push("cmdSave");
        desk.date(2020, 1, 1);
        toSearch(desk);
        desk.openFromSearch(1);

        QCOMPARE(control<QTabWidget>(desk.screen(), "SSTab1")->currentIndex(), 0);
        QCOMPARE(desk.text("txtVoucher"), "1");
        QCOMPARE(desk.text("txtPaidTo"), "Somebody");
        QCOMPARE(control<controls::DateBox>(desk.screen(), "DTPicker")->Value(), QDate(2026, 2, 3));
        compare(desk.seen("MshEntry"), table(rows));
        QCOMPARE(desk.text("txtDrAc"), debit);
        QCOMPARE(desk.tag("txtDrAc"), debit.isEmpty() ? "" : QString::number(accountId(debit)));
        QCOMPARE(desk.text("txtCrAc"), credit);
        QCOMPARE(desk.tag("txtCrAc"), credit.isEmpty() ? "" : QString::number(accountId(credit)));
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 1,150.00");
        QVERIFY(desk.enabled("cmdDelete"));
        QCOMPARE(focused(), "DTPicker");
        picture(desk.screen(), QString(desk.screen()->objectName()) + "-entry");

        // What is saved unchanged is what was there.
        const Sql lines =
            "select EntryNo, AcCode, CrAc, DrAmt, CrAmt, ChecqNo, Naration, FileNo, BillNo from DetJV";
        const QStringList before = desk.office.rows(lines);
        desk.push("cmdSave");
        compare(desk.office.rows(lines), before);
        QCOMPARE(desk.office.rows("select VouNo from MasJV").size(), 1);
    }

    void enterInTheListOpensNothing() {
        Desk desk(someVouchers());
        desk.open("BP");
        toSearch(desk);
        typeInto(desk.screen(), "txtSearch", "12");
        press(Qt::Key_Down);
        QCOMPARE(focused(), "mshSearch");
        press(Qt::Key_Return);
        QCOMPARE(control<QTabWidget>(desk.screen(), "SSTab1")->currentIndex(), 1);
        press(Qt::Key_F2);
        QCOMPARE(control<QTabWidget>(desk.screen(), "SSTab1")->currentIndex(), 0);
        QCOMPARE(desk.text("txtVoucher"), "112");
        QVERIFY(!desk.enabled("cmdDelete")); // it has no lines
    }

    void voucherThatIsGone() {
        Desk desk(someVouchers());
        desk.open("BP");
        toSearch(desk);
        desk.office.execute("delete from MasJV where VouNo = 112");
        const std::vector<Box> said = Desk::boxes([&] { desk.openFromSearch(1); });
        QCOMPARE(said.size(), 1U);
        QCOMPARE(said[0].text, "Voucher not found!");
        QCOMPARE(desk.text("txtVoucher"), "21");
    }

    void nullsOfOthers() {
        Desk desk(
            "insert into MasJV (VouNo, VouStatus, ChecqNo) values (3, 'BR', 'old cheque') "
            "insert into DetJV (VouNo, VouStatus, EntryNo, AcCode, CrAc, DrAmt, CrAmt) values (3, 'BR', 1, "
            "99, 1, "
            "0, 5)");
        desk.open("BR");
        desk.openFromSearch(1);
        compare(desk.seen("MshEntry"), table("BANK ONE|''|5.00|''|''|''|''"));
        QCOMPARE(desk.text("txtChecque"), "old cheque");
        QCOMPARE(desk.text("txtPaidTo"), "");
        QCOMPARE(desk.text("txtDrAc"), "BANK ONE");
    }

    void quoteEndsTheProgram_data() {
        QTest::addColumn<QString>("criterion");
        for (const char *criterion : {"Voucher #", "Paid To"})
            row(criterion, criterion);
    }

    void quoteEndsTheProgram() {
        QFETCH(QString, criterion);
        const Ended ended = play(criterion);
        QCOMPARE(ended.status, 1);
        QVERIFY2(ended.box.contains("105"), qPrintable(ended.box + ended.errorStream));
    }

    void quoteIsNothingToADate() {
        Desk desk(someVouchers());
        desk.open("BP");
        toSearch(desk);
        choose(desk, "Date");
        control<controls::DateBox>(desk.screen(), "DTPSearch")->setValue(QDate(2026, 3, 5));
        typeInto(desk.screen(), "txtSearch", "'; delete from MasJV --");
        QCOMPARE(desk.seen("mshSearch").size(), 1);
    }

    void theDateBoxSearchesAnew() {
        Desk desk;
        desk.open("BP");
        toSearch(desk);
        choose(desk, "Date");
        auto *date = control<controls::DateBox>(desk.screen(), "DTPSearch");
        const auto addOneToday = [&](int number) {
            desk.office.execute("insert into MasJV (VouNo, VouStatus, VouDate) values ("_sql + number +
                                ", 'BP', '" + QDate::currentDate().toString("yyyy-MM-dd") + "')");
        };
        addOneToday(1);
        QCOMPARE(desk.grid("mshSearch")->TextMatrix(1, 0), "");
        QTest::mouseClick(date->findChild<QLineEdit *>(), Qt::LeftButton);
        QCOMPARE(desk.grid("mshSearch")->TextMatrix(1, 0), "1");
        addOneToday(2);
        press(Qt::Key_Left);
        QCOMPARE(desk.grid("mshSearch")->TextMatrix(1, 0), "1");
        press(Qt::Key_Backspace);
        QCOMPARE(desk.grid("mshSearch")->TextMatrix(1, 0), "2");
    }

    void rowsThatOpen_data() {
        columns<QString, bool>("typed", "opens");
        row("a voucher", "112", true);
        row("the blank row", "999", false);
    }

    void rowsThatOpen() {
        QFETCH(QString, typed);
        QFETCH(bool, opens);
        Desk desk(someVouchers());
        desk.open("BP");
        desk.replace("txtPaidTo", "kept");
        toSearch(desk);
        typeInto(desk.screen(), "txtSearch", typed);
        desk.doubleClick("mshSearch", 1, 2);
        QCOMPARE(control<QTabWidget>(desk.screen(), "SSTab1")->currentIndex(), opens ? 0 : 1);
        QCOMPARE(desk.text("txtPaidTo"), opens ? "City light" : "kept");
        QCOMPARE(desk.text("txtVoucher"), opens ? "112" : "113");
    }

    void searchesTheGridKeepsWhileOthersQuery() {
        Desk desk(someVouchers());
        desk.open("BP");
        const QStringList before = desk.seen("mshSearch");
        desk.open("JV");
        compare(desk.seen("mshSearch"), table("12|05-03-2026|Landlord|99|''"));
        desk.open("BP");
        compare(desk.seen("mshSearch"), before);
    }

    void printsWhatIsSaved_data() {
        QTest::addColumn<Line>("line");
        row("BP", Line{"RENT", "BANK ONE", "1234.5"});
        row("BR", Line{"BANK ONE", "RENT", "1234.5"});
        row("CP", Line{"RENT", "CASH BOX", "1234.5"});
        row("CR", Line{"CASH BOX", "RENT", "1234.5"});
        row("JV", Line{"RENT", "FEES", "1234.5"});
    }

    void printsWhatIsSaved() {
        QFETCH(Line, line);
        Desk desk;
        desk.open(QTest::currentDataTag());
        desk.office.addReports(ZEL_SOURCE_DIR "/rpt");
        desk.replace("txtPaidTo", "Landlord");
        desk.add(line);
        desk.push("cmdSave");
        const auto printed = [&] {
            click(desk.screen(), "cmdPrint");
            settle();
            picture(form("frmVeiwer"), QString("frmVeiwer-") + QTest::currentDataTag());
            const QString text = control(form("frmVeiwer"), "CRViewer91")->property("plainText").toString();
            desk.open(QTest::currentDataTag());
            return text;
        };
        desk.openFromSearch(1);
        desk.replace("txtPaidTo", "Not saved");
        const QString text = printed();
        for (const QString &word : {desk.screen()->windowTitle().replace("Receive", "Receipt"),
                                    QString("Landlord"), line.debit, line.credit, QString("1,234.50")})
            QVERIFY2(text.contains(word, Qt::CaseInsensitive), qPrintable(word + " is not in\n" + text));
        QVERIFY(!text.contains("Not saved"));
        desk.push("cmdCancel");
        // The next number has no voucher yet.
        QVERIFY2(!printed().contains("Landlord"), "the print is of a voucher that is not shown");
        desk.openFromSearch(1);
        desk.office.execute("update Company set comActive = null");
        QVERIFY(!printed().contains("Landlord"));
    }

    void missingReportEndsTheProgram() {
        const Ended ended = play("printWithoutReport");
        QCOMPARE(ended.status, 1);
        QVERIFY2(ended.box.contains("53"), qPrintable(ended.box + ended.errorStream));
    }
};

int main(int argc, char **argv) {
    tst_voucher_search tests;
    return test::run(argc, argv, tests,
                     {{"Voucher #", [] { quoteInTheSearch("Voucher #"); }},
                      {"Paid To", [] { quoteInTheSearch("Paid To"); }},
                      {"printWithoutReport", printWithoutReport}});
}

#include "tst_voucher_search.moc"
