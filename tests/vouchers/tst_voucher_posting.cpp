#include "tests/support/facts.h"
#include "tests/vouchers/voucher_desk.h"

using namespace zel;
using namespace zel::test;

namespace {

/// Rows of the two tables as text: what an accountant compares. The number, the kind and the date follow
/// where they are not those of the first voucher on 5 March 2026, the columns of fees where they are used.
QStringList posted(Desk &desk, const QString &kind) {
    QStringList rows = desk.rows(
        "select EntryNo, Ac=(select AcName from Accounts where RowID=AcCode), Contra=(select AcName from "
        "Accounts "
        "where RowID=CrAc), DrAmt, CrAmt, ChecqNo, Naration, FileNo, BillNo, VouNo, VouStatus, VouDate, "
        "SessionID, SubID from DetJV where VouStatus='"_sql +
        kind + "'");
    return rows.replaceInStrings("|1|" + kind + "|05/03/2026|NULL|NULL", "");
}

QStringList headers(Desk &desk, const QString &kind) {
    return desk.rows("select VouNo, VouStatus, VouDate, PaidReceive, TotalAmount, Login, SlipNo, IRStatus, "
                     "ChecqNo from MasJV where VouStatus='"_sql +
                     kind + "'");
}

} // namespace

class tst_voucher_posting : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// What is typed into each line, in the order of its boxes; an account left out is as the screen has it.
    void posts_data() { rowsFrom<QVariantList, QString, QString>("vouchers/posting.json"); }

    void posts() {
        const auto [lines, total, rows] = fetched<QVariantList, QString, QString>();
        const QByteArray kind = QByteArray(QTest::currentDataTag()).left(2);
        Desk desk(kind);
        desk.date(2026, 3, 5);
        desk.replace("txtPaidTo", "Landlord");
        for (const QVariant &typed : lines) {
            const QStringList parts = typed.toStringList() + QStringList(4);
            QVERIFY(desk.add({parts[0], parts[1], parts[2], parts[3], parts[4], parts[5], parts[6]}).empty());
        }
        QVERIFY(desk.push("cmdSave").empty());
        compare(headers(desk, kind), {"1|" + kind + "|05/03/2026|Landlord|" + total + "|sa|NULL|NULL|NULL"});
        compare(posted(desk, kind), table(rows));
        desk.expect("txtVoucher=2; MshEntry=1; lblTotalAmount=Total Amount : 0.00; focus=DTPicker");
    }

    void rowUnderEditIsWrittenInPlace() {
        Desk desk("BP");
        desk.add({"RENT", "BANK ONE", "1234.5", "1", "n", "2", "3"});
        desk.add({"LIGHT", "", "50"});
        desk.grid("MshEntry")->setRow(1);
        desk.grid("MshEntry")->setFocus();
        press(Qt::Key_F2);
        desk.expect("txtGrdRow=1; txtDRCR=1234.50; txtDrAc=RENT");
        desk.add({"FEES", "", "2000", "9", "m", "8", "7"});
        const QString light = "LIGHT | BANK ONE | 50.00 | '' | '' | '' | ''\n";
        compare(desk.seen("MshEntry"), table("FEES | BANK ONE | 2,000.00 | 9 | m | 8 | 7\n" + light));
        desk.expect("txtGrdRow=; lblTotalAmount=Total Amount : 2,050.00; txtTotAmount=2050.00");

        // A line that is removed while it is under edit is under edit no more: the next one goes to the end.
        desk.doubleClick("MshEntry", 1, 1);
        desk.push("acmRemove");
        desk.add({"RENT", "", "7"});
        compare(desk.seen("MshEntry"), table(light + "RENT | BANK ONE | 7.00 | '' | '' | '' | ''"));
    }

    void changedVoucherKeepsItsNumberAndLosesItsOldLines_data() { kindRows(); }

    void changedVoucherKeepsItsNumberAndLosesItsOldLines() {
        QFETCH(QByteArray, kind);
        const Line second = lineOf(kind, "20");
        Desk desk(kind, "update VouSetting set VouNo = '7'");
        desk.save(lineOf(kind, "10"));
        desk.save(second);
        desk.openFromSearch(2);
        desk.expect("txtVoucher=7; cmdDelete.enabled=true");
        desk.date(2025, 12, 31);
        desk.replace("txtPaidTo", "Changed");
        desk.save(second);
        desk.expect("cmdDelete.enabled=false");
        const QStringList all = headers(desk, kind);
        QCOMPARE(all.size(), 2);
        QCOMPARE(all[0], QString("7|%1|31/12/2025|Changed|30|sa|NULL|NULL|NULL").arg(kind));
        compare(desk.rows("select count(*), sum(DrAmt), sum(CrAmt) from DetJV where VouNo = 7 and "
                          "VouStatus = '"_sql +
                          QString(kind) + "' and VouDate = '2025-12-31'"),
                {kind[0] == 'C' ? "3|30|30" : "4|30|30"});
    }

    void manyLines() {
        constexpr int Lines = 120;
        Desk desk("CP");
        QStringList expected;
        for (int i = 1; i <= Lines; ++i) {
            const QString amount = QString::number(i) + ".05";
            QVERIFY(desk.add({"RENT", i == 1 ? "CASH BOX" : "", amount}).empty());
            expected << QString("%1|%2").arg(i).arg(amount);
        }
        desk.expect("lblTotalAmount=Total Amount : 7,266.00");
        QVERIFY(desk.push("cmdSave").empty());
        compare(desk.rows("select EntryNo, DrAmt from DetJV"), expected + QStringList("121|0"));
        compare(desk.rows("select sum(DrAmt), sum(CrAmt) from DetJV"), {"7266|7266"});

        desk.openFromSearch(1);
        QCOMPARE(desk.seen("MshEntry").size(), Lines);
        QVERIFY(desk.seen("MshEntry").last().contains("|120.05|"));
        desk.grid("MshEntry")->setRow(Lines);
        desk.push("acmRemove");
        desk.push("cmdSave");
        compare(desk.rows("select max(EntryNo), count(*), sum(DrAmt), sum(CrAmt) from DetJV"),
                {"120|120|7145.95|7145.95"});
    }

    void numbers() {
        Desk desk(nullptr, "update VouSetting set VouNo = '40' where VouStatus = 'BP' "
                           "delete from VouSetting where VouStatus = 'JV'");
        const auto save = [&] {
            desk.save({"RENT", "BANK ONE", "1"});
            return desk.text("txtVoucher");
        };
        desk.open("BP");
        desk.expect("txtVoucher=40");
        QCOMPARE(save(), "41");
        QCOMPARE(save(), "42");
        QCOMPARE(save(), "43");
        const auto remove = [&](int row) {
            desk.openFromSearch(row);
            desk.push("cmdDelete", QMessageBox::Yes);
            return desk.text("txtVoucher");
        };
        QCOMPARE(remove(2), "43"); // 41 goes: a gap for good
        QCOMPARE(remove(1), "41"); // 42 was the highest: its place is taken from 40 on
        QCOMPARE(save(), "42");
        desk.push("cmdCancel");
        remove(1);
        desk.execute("update VouSetting set VouNo = '70'");
        QCOMPARE(remove(1), "40"); // none left: the start number again, that of the opening
        desk.execute("insert into MasJV (VouNo, VouStatus) values (49, 'BP')");
        QCOMPARE(save(), "51"); // the number is taken afresh at the save
        compare(desk.rows("select VouNo, count(*) from DetJV group by VouNo"), {"50|2"});
        compare(desk.rows("select VouNo from MasJV where TotalAmount = 1"), {"50"});
        desk.execute("delete from MasJV");
        click(desk.screen(), "cmdExit");
        desk.open("BP");
        desk.expect("txtVoucher=70");

        desk.open("JV"); // without a setting the first is 0
        desk.expect("txtVoucher=0");
        QCOMPARE(save(), "1");
        compare(desk.rows("select VouNo from MasJV"), {"0"});
        desk.open("BR");
        desk.expect("txtVoucher=70");
    }

    void deletes() {
        Desk desk("BP", "insert into MasJV (VouNo, VouStatus, TotalAmount) values (5, 'BR', 1) "
                        "insert into DetJV (VouNo, VouStatus, DrAmt) values (5, 'BR', 1) "
                        "update VouSetting set VouNo = '5'");
        desk.save({"RENT", "BANK ONE", "1"});
        desk.expect("cmdDelete.enabled=false");
        desk.openFromSearch(1);
        const auto remove = [&] { click(desk.screen(), "cmdDelete"); };
        const std::vector<Box> asked = boxesOf(remove, {QMessageBox::No});
        QCOMPARE(asked.size(), 1U);
        QCOMPARE(asked[0].text, "are you sure Delete this Voucher ");
        QCOMPARE(asked[0].icon, QMessageBox::Information);
        QCOMPARE(asked[0].title, "ZEL");
        QVERIFY(asked[0].buttons == (QMessageBox::Yes | QMessageBox::No));
        desk.expect("cmdDelete.enabled=true");
        QCOMPARE(desk.rows("select VouNo from MasJV where VouStatus = 'BP'").size(), 1);
        desk.execute("insert into MasJV (VouNo, VouStatus) values (99, 'BP')");
        desk.push("cmdDelete", QMessageBox::No);
        QCOMPARE(desk.grid("mshSearch")->TextMatrix(1, 0), "99"); // searched anew all the same
        desk.execute("delete from MasJV where VouNo = 99");

        desk.expect("said=BP 5 saved, 1.00 (F12 prints it); underWay=correcting BP 5");
        desk.push("cmdDelete", QMessageBox::Yes);
        desk.expect("said=BP 5 deleted; underWay=; cmdDelete.enabled=false; focus=DTPicker");
        compare(desk.rows("select VouNo, VouStatus from MasJV"), {"5|BR"});
        compare(desk.rows("select VouNo, VouStatus from DetJV"), {"5|BR"});
        compare(desk.seen("mshSearch"), table("''|''|''|''|''"));

        // What another clerk has deleted already is deleted all the same.
        desk.save({"RENT", "BANK ONE", "2"});
        desk.openFromSearch(1);
        desk.execute("delete from MasJV where VouStatus = 'BP' delete from DetJV where VouStatus = 'BP'");
        QCOMPARE(desk.push("cmdDelete", QMessageBox::Yes).size(), 1);
        desk.expect("txtVoucher=5; MshEntry=1");
    }

    void emptyGridIsRefused() {
        Desk desk("CR");
        desk.save({"CASH BOX", "FEES", "1"});
        desk.openFromSearch(1);
        desk.push("acmRemove");
        desk.expect("cmdDelete.enabled=true; txtTotAmount=1.00");
        QCOMPARE(desk.push("cmdSave"), QStringList("Please enter less than one entry in detail"));
        desk.expect("cmdDelete.enabled=false");
        compare(desk.rows("select count(*) from DetJV"), {"2"});
    }

    void amountsAreExact() {
        Desk desk("CP");
        desk.choose("cmdSelectCr", "CASH BOX");
        for (const char *amount : {"0.1", "0.2", "99999999999.99", "1.005", "2.675"})
            desk.add({"RENT", "", amount});
        desk.expect("lblTotalAmount=Total Amount : 100,000,000,003.98");
        desk.push("cmdSave");
        compare(desk.rows("select TotalAmount from MasJV"), {"100000000003.98"});
        compare(desk.rows("select CrAmt from DetJV where CrAc is null"), {"100000000003.98"});
        compare(desk.rows("select DrAmt from DetJV where CrAc is not null"),
                table("0.1\n0.2\n99999999999.99\n1.01\n2.68"));
    }
};

ZEL_TEST_MAIN(tst_voucher_posting)

#include "tst_voucher_posting.moc"
