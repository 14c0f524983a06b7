#include "tests/support/facts.h"
#include "tests/vouchers/voucher_desk.h"

#include "platform/controls/combo_box.h"

#include <QFile>
#include <QLineEdit>

using namespace zel;
using namespace zel::test;

namespace {

constexpr const char *Facts = "vouchers/search.json";

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

void chooseDay(Desk &desk, QDate day) {
    choose(desk, "Date");
    control<controls::DateBox>(desk.screen(), "DTPSearch")->setValue(day);
}

/// A screen of bank payments on the vouchers above, on its page of the search.
struct Search : Desk {
    Search() : Desk("BP", someVouchers()) { toSearch(); }
    [[nodiscard]] QString numbers() const { return columnOf(screen(), "mshSearch", 0).join(' '); }
};

void quoteInTheSearch(const char *criterion) {
    Search desk;
    choose(desk, criterion);
    typeInto(desk.screen(), "txtSearch", "o'");
}

void printWithoutReport() {
    Desk desk("JV");
    click(desk.screen(), "cmdPrint");
}

} // namespace

class tst_voucher_search : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void finds_data() { rowsFrom<QString, QString, QString>(Facts); }

    void finds() {
        const auto [criterion, typed, numbers] = fetched<QString, QString, QString>();
        Search desk;
        compare(desk.seen("mshSearch"),
                {"112|15-03-2026|City light|10|", "20|05-11-2025||7|", "12|05-03-2026|Landlord|1234.5|"});
        if (criterion == "Date") {
            chooseDay(desk, QDate::fromString(typed, Qt::ISODate));
        } else {
            choose(desk, criterion);
            typeInto(desk.screen(), "txtSearch", typed);
        }
        desk.expect(QString("lblSearch=%1; DTPSearch.visible=%2")
                        .arg(criterion, QVariant(criterion == "Date").toString()));
        QCOMPARE(desk.numbers(), numbers);
        if (criterion != "Date") {
            typeInto(desk.screen(), "txtSearch", "");
            QCOMPARE(desk.seen("mshSearch").size(), criterion == "Paid To" ? 2 : 3);
        }
    }

    /// A number is searched in eight characters: one that needs more is listed, and no digits find it.
    void numbersOfNineDigits() {
        Search desk;
        desk.execute("delete from MasJV insert into MasJV (VouNo, VouStatus) values (99999999, 'BP') "
                     "insert into MasJV (VouNo, VouStatus) values (100000000, 'BP')");
        for (const auto &[typed, numbers] :
             {std::pair("0", ""), {"9", "99999999"}, {"", "100000000 99999999"}}) {
            typeInto(desk.screen(), "txtSearch", typed);
            QCOMPARE(desk.numbers(), numbers);
        }
        desk.openFromSearch(1);
        desk.expect("txtVoucher=100000000");
    }

    void theCriterionAloneSearchesNothing() {
        Search desk;
        choose(desk, "Date");
        QCOMPARE(desk.numbers(), "112 20 12");
        chooseDay(desk, QDate(2026, 3, 5));
        QCOMPARE(desk.numbers(), "12");
        typeInto(desk.screen(), "txtSearch", "'; delete from MasJV --"); // nothing to a date
        QCOMPARE(desk.numbers(), "12");
        choose(desk, "Paid To");
        desk.expect("DTPSearch.visible=false");
        QCOMPARE(desk.numbers(), "12");
        typeInto(desk.screen(), "txtSearch", "c");
        QCOMPARE(desk.numbers(), "112");
    }

    void severalLinesAreMarked_data() { kindRows(); }

    void severalLinesAreMarked() {
        QFETCH(QByteArray, kind);
        const QString after = kind == "CR" ? "" : "M";
        const Line line = lineOf(kind);
        Desk desk(kind);
        const auto mark = [&desk](bool anew) {
            if (anew) {
                desk.toSearch();
                typeInto(desk.screen(), "txtSearch", "1");
                typeInto(desk.screen(), "txtSearch", "");
            }
            return desk.grid("mshSearch")->TextMatrix(1, 4);
        };
        desk.add(line);
        desk.save(line);
        QCOMPARE(mark(false), ""); // the list was filled before the lines were there
        QCOMPARE(mark(true), after);
        desk.openFromSearch(1);
        desk.push("acmRemove");
        desk.push("cmdSave");
        QCOMPARE(mark(false), after);
        QCOMPARE(mark(true), "");
    }

    /// As they were typed: the bank or cash first on the receiving kinds.
    void opens_data() { rowsFrom<QString, QString>(Facts); }

    void opens() {
        const auto [accounts, rows] = fetched<QString, QString>();
        const QByteArray kind = QTest::currentDataTag();
        Desk desk(kind);
        desk.date(2026, 2, 3);
        desk.replace("txtPaidTo", "Somebody");
        Line lines[] = {{"RENT", "BANK ONE", "100", "c", "n", "1", "2"}, {"LIGHT", "BANK TWO", "1050"}};
        for (Line &line : lines) {
            if (kind.startsWith('C'))
                line.credit = "CASH BOX";
            if (kind.endsWith('R'))
                std::swap(line.debit, line.credit);
            desk.add(line);
        }
        desk.push("cmdSave");
        desk.date(2020, 1, 1);
        desk.toSearch();
        desk.openFromSearch(1);

        compare(desk.seen("MshEntry"), table(rows));
        QCOMPARE(desk.accounts(), accounts);
        desk.expect("SSTab1.currentIndex=0; txtVoucher=1; txtPaidTo=Somebody; DTPicker=03/02/2026; "
                    "lblTotalAmount=Total Amount : 1,150.00; cmdDelete.enabled=true; focus=DTPicker");

        // What is saved unchanged is what was there.
        const Sql all =
            "select EntryNo, AcCode, CrAc, DrAmt, CrAmt, ChecqNo, Naration, FileNo, BillNo from DetJV";
        const QStringList before = desk.rows(all);
        desk.push("cmdSave");
        compare(desk.rows(all), before);
        QCOMPARE(desk.rows("select VouNo from MasJV").size(), 1);
    }

    void enterInTheListOpensNothing() {
        Search desk;
        typeInto(desk.screen(), "txtSearch", "12");
        press(Qt::Key_Down);
        QCOMPARE(focused(), "mshSearch");
        press(Qt::Key_Return);
        desk.expect("SSTab1.currentIndex=1");
        press(Qt::Key_F2);
        desk.expect("SSTab1.currentIndex=0; txtVoucher=112; cmdDelete.enabled=false"); // it has no lines
    }

    void voucherThatIsGone() {
        Search desk;
        desk.execute("delete from MasJV where VouNo = 112");
        QCOMPARE(textsOf([&] { desk.openFromSearch(1); }), QStringList("Voucher not found!"));
        desk.expect("txtVoucher=21");
    }

    void failures() {
        expectEnd("Voucher #", "Error 105:");
        expectEnd("Paid To", "Error 105:");
        expectEnd("printWithoutReport", "Error 53:");
    }

    void theDateBoxSearchesAnew() {
        Desk desk("BP");
        desk.toSearch();
        choose(desk, "Date");
        const auto first = [&] { return desk.grid("mshSearch")->TextMatrix(1, 0); };
        const auto addOneToday = [&](int number) {
            desk.execute("insert into MasJV (VouNo, VouStatus, VouDate) values ("_sql + number + ", 'BP', '" +
                         QDate::currentDate().toString("yyyy-MM-dd") + "')");
        };
        addOneToday(1);
        QCOMPARE(first(), "");
        QTest::mouseClick(control(desk.screen(), "DTPSearch")->findChild<QLineEdit *>(), Qt::LeftButton);
        QCOMPARE(first(), "1");
        addOneToday(2);
        press(Qt::Key_Left);
        QCOMPARE(first(), "1");
        press(Qt::Key_Backspace);
        QCOMPARE(first(), "2");
    }

    void rowsThatOpen_data() {
        columns<QString, QString>("typed", "shown");
        row("a voucher", "112", "SSTab1.currentIndex=0; txtPaidTo=City light; txtVoucher=112");
        row("the blank row", "999", "SSTab1.currentIndex=1; txtPaidTo=kept; txtVoucher=113");
    }

    void rowsThatOpen() {
        const auto [typed, shown] = fetched<QString, QString>();
        Search desk;
        turnTo(desk.screen(), "SSTab1", 0);
        desk.replace("txtPaidTo", "kept");
        desk.toSearch();
        typeInto(desk.screen(), "txtSearch", typed);
        desk.doubleClick("mshSearch", 1, 2);
        desk.expect(shown);
    }

    void searchesTheGridKeepsWhileOthersQuery() {
        Search desk;
        const QStringList before = desk.seen("mshSearch");
        desk.open("JV");
        compare(desk.seen("mshSearch"), table("12|05-03-2026|Landlord|99|''"));
        desk.open("BP");
        compare(desk.seen("mshSearch"), before);
    }

    void printsWhatIsSaved_data() { kindRows(); }

    void printsWhatIsSaved() {
        QFETCH(QByteArray, kind);
        const Line line = lineOf(kind, "1234.5");
        Desk desk(kind);
        desk.office.addReports(ZEL_SOURCE_DIR "/rpt");
        desk.replace("txtPaidTo", "Landlord");
        desk.save(line);
        const auto printed = [&] {
            click(desk.screen(), "cmdPrint");
            const QString pages = control(form("frmVeiwer"), "CRViewer91")->property("plainText").toString();
            desk.open(QTest::currentDataTag());
            return pages;
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
        desk.execute("update Company set comActive = null");
        QVERIFY(!printed().contains("Landlord"));
    }
};

ZEL_TEST_MAIN(tst_voucher_search, {{"Voucher #", [] { quoteInTheSearch("Voucher #"); }},
                                   {"Paid To", [] { quoteInTheSearch("Paid To"); }},
                                   {"printWithoutReport", printWithoutReport}})

#include "tst_voucher_search.moc"
