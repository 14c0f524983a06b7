#include "tests/support/rows.h"
#include "tests/vouchers/voucher_desk.h"

using namespace zel;
using namespace zel::test;

Q_DECLARE_METATYPE(std::vector<Line>)

namespace {

/// Rows of the two tables as text: what an accountant compares.
QStringList posted(Desk &desk, const QString &kind) {
    return desk.office.rows(
        "select EntryNo, Ac=(select AcName from Accounts where RowID=AcCode), Contra=(select AcName from "
        "Accounts "
        "where RowID=CrAc), DrAmt, CrAmt, ChecqNo, Naration, FileNo, BillNo, VouNo, VouStatus, VouDate, "
        "SessionID, SubID from DetJV where VouStatus='"_sql +
        kind + "'");
}

QStringList headers(Desk &desk, const QString &kind) {
    return desk.office.rows(
        "select VouNo, VouStatus, VouDate, PaidReceive, TotalAmount, Login, SlipNo, IRStatus, "
        "ChecqNo from MasJV where VouStatus='"_sql +
        kind + "'");
}

} // namespace

class tst_voucher_posting : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void posts_data() {
        columns<std::vector<Line>, QString, QString>("lines", "header", "rows");

        zel::test::row("BP",
                       std::vector<Line>{{"RENT", "BANK ONE", "1000", "c-1", "Rent of March", "7", "8"},
                                         {"LIGHT", "", "250.5"}},
                       "1 | BP | 05/03/2026 | Landlord | 1250.5 | sa | NULL | NULL | NULL",
                       "1 | RENT     | BANK ONE | 1000  | 0     | c-1 | Rent of March | 7    | 8    | 1 "
                       "| BP | 05/03/2026 | NULL | NULL\n"
                       "1 | BANK ONE | RENT     | 0     | 1000  | c-1 | Rent of March | 7    | 8    | 1 "
                       "| BP | 05/03/2026 | NULL | NULL\n"
                       "2 | LIGHT    | BANK ONE | 250.5 | 0     | ''  | ''            | NULL | NULL | 1 "
                       "| BP | 05/03/2026 | NULL | NULL\n"
                       "2 | BANK ONE | LIGHT    | 0     | 250.5 | ''  | ''            | NULL | NULL | 1 "
                       "| BP | 05/03/2026 | NULL | NULL");
        zel::test::row(
            "BP, two banks and one account twice",
            std::vector<Line>{{"RENT", "BANK ONE", "1", "", "a"}, {"RENT", "BANK TWO", "2", "", "a"}},
            "1 | BP | 05/03/2026 | Landlord | 3 | sa | NULL | NULL | NULL",
            "1 | RENT     | BANK ONE | 1 | 0 | '' | a | NULL | NULL | 1 | BP | 05/03/2026 | NULL | NULL\n"
            "1 | BANK ONE | RENT     | 0 | 1 | '' | a | NULL | NULL | 1 | BP | 05/03/2026 | NULL | NULL\n"
            "2 | RENT     | BANK TWO | 2 | 0 | '' | a | NULL | NULL | 1 | BP | 05/03/2026 | NULL | NULL\n"
            "2 | BANK TWO | RENT     | 0 | 2 | '' | a | NULL | NULL | 1 | BP | 05/03/2026 | NULL | NULL");
        zel::test::row(
            "BR",
            std::vector<Line>{{"BANK ONE", "FEES", "100", "", "", "3", "12"}, {"", "RENT", "50", "9", "n"}},
            "1 | BR | 05/03/2026 | Landlord | 150 | sa | NULL | NULL | NULL",
            "1 | BANK ONE | FEES     | 100 | 0   | '' | '' | 3    | 12   | 1 | BR | 05/03/2026 | NULL | "
            "NULL\n"
            "1 | FEES     | BANK ONE | 0   | 100 | '' | '' | 3    | 12   | 1 | BR | 05/03/2026 | NULL | "
            "NULL\n"
            "2 | BANK ONE | RENT     | 50  | 0   | 9  | n  | NULL | NULL | 1 | BR | 05/03/2026 | NULL | "
            "NULL\n"
            "2 | RENT     | BANK ONE | 0   | 50  | 9  | n  | NULL | NULL | 1 | BR | 05/03/2026 | NULL | "
            "NULL");
        zel::test::row("CP",
                       std::vector<Line>{{"RENT", "CASH BOX", "10", "c", "first", "1", "2"},
                                         {"LIGHT", "", "20.25", "", "second"},
                                         {"FEES", "", "0.755"}},
                       "1 | CP | 05/03/2026 | Landlord | 31.01 | sa | NULL | NULL | NULL",
                       "1 | RENT     | CASH BOX | 10    | 0     | c    | first  | 1    | 2    | 1 | CP | "
                       "05/03/2026 | NULL | NULL\n"
                       "2 | LIGHT    | CASH BOX | 20.25 | 0     | ''   | second | NULL | NULL | 1 | CP | "
                       "05/03/2026 | NULL | NULL\n"
                       "3 | FEES     | CASH BOX | 0.76  | 0     | ''   | ''     | NULL | NULL | 1 | CP | "
                       "05/03/2026 | NULL | NULL\n"
                       "4 | CASH BOX | NULL     | 0     | 31.01 | NULL | first  | NULL | NULL | 1 | CP | "
                       "05/03/2026 | NULL | NULL");
        zel::test::row("CR",
                       std::vector<Line>{{"CASH BOX", "FEES", "10", "", "one", "", ""},
                                         {"", "RENT", "20"},
                                         {"", "LIGHT", "30", "k", "three", "", "5"}},
                       "1 | CR | 05/03/2026 | Landlord | 60 | sa | NULL | NULL | NULL",
                       "1 | FEES     | CASH BOX | 0  | 10 | ''   | one   | NULL | NULL | 1 | CR | "
                       "05/03/2026 | NULL | NULL\n"
                       "2 | RENT     | CASH BOX | 0  | 20 | ''   | ''    | NULL | NULL | 1 | CR | "
                       "05/03/2026 | NULL | NULL\n"
                       "3 | LIGHT    | CASH BOX | 0  | 30 | k    | three | NULL | 5    | 1 | CR | "
                       "05/03/2026 | NULL | NULL\n"
                       "4 | CASH BOX | NULL     | 60 | 0  | NULL | one   | NULL | NULL | 1 | CR | "
                       "05/03/2026 | NULL | NULL");
        zel::test::row("JV, a further line by its amount alone",
                       std::vector<Line>{{"RENT", "FEES", "5", "", "x", "3", "4"}, {"", "", "6"}},
                       "1 | JV | 05/03/2026 | Landlord | 11 | sa | NULL | NULL | NULL",
                       "1 | RENT | FEES | 5 | 0 | '' | x  | 3    | 4    | 1 | JV | 05/03/2026 | NULL | NULL\n"
                       "1 | FEES | RENT | 0 | 5 | '' | x  | 3    | 4    | 1 | JV | 05/03/2026 | NULL | NULL\n"
                       "2 | RENT | FEES | 6 | 0 | '' | '' | NULL | NULL | 1 | JV | 05/03/2026 | NULL | NULL\n"
                       "2 | FEES | RENT | 0 | 6 | '' | '' | NULL | NULL | 1 | JV | 05/03/2026 | NULL | NULL");
    }

    void posts() {
        QFETCH(std::vector<Line>, lines);
        QFETCH(QString, header);
        QFETCH(QString, rows);
        const QByteArray kind = QByteArray(QTest::currentDataTag()).left(2);
        Desk desk;
        desk.open(kind);
        desk.date(2026, 3, 5);
        desk.replace("txtPaidTo", "Landlord");
        for (const Line &line : lines)
            QVERIFY(desk.add(line).empty());
        QVERIFY(desk.push("cmdSave").empty());

        compare(headers(desk, kind), table(header));
        compare(posted(desk, kind), table(rows));
        QCOMPARE(desk.text("txtVoucher"), "2");
        QCOMPARE(desk.grid("MshEntry")->Rows(), 1);
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 0.00");
        QCOMPARE(focused(), "DTPicker");
    }

    void rowUnderEditIsWrittenInPlace() {
        Desk desk;
        desk.open("BP");
        desk.add({"RENT", "BANK ONE", "1234.5", "1", "n", "2", "3"});
        desk.add({"LIGHT", "", "50"});
        desk.grid("MshEntry")->setRow(1);
        desk.grid("MshEntry")->setFocus();
        press(Qt::Key_F2);
        QCOMPARE(desk.text("txtGrdRow"), "1");
        QCOMPARE(desk.text("txtDRCR"), "1234.50");
        QCOMPARE(desk.text("txtDrAc"), "RENT");
        desk.add({"FEES", "", "2000", "9", "m", "8", "7"});
        QCOMPARE(desk.text("txtGrdRow"), "");
        compare(desk.seen("MshEntry"), table("FEES | BANK ONE | 2,000.00 | 9 | m | 8 | 7\n"
                                             "LIGHT | BANK ONE | 50.00 | '' | '' | '' | ''"));
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 2,050.00");
        QCOMPARE(desk.text("txtTotAmount"), "2050.00");

        // A line that is removed while it is under edit is under edit no more: the next one goes to the end.
        desk.doubleClick("MshEntry", 1, 1);
        desk.push("acmRemove");
        desk.add({"RENT", "", "7"});
        compare(desk.seen("MshEntry"), table("LIGHT | BANK ONE | 50.00 | '' | '' | '' | ''\n"
                                             "RENT | BANK ONE | 7.00 | '' | '' | '' | ''"));
    }

    void changedVoucherKeepsItsNumberAndLosesItsOldLines_data() {
        columns<Line, Line, int>("first", "second", "rowsAfter");
        zel::test::row("BP", Line{"RENT", "BANK ONE", "10"}, Line{"LIGHT", "BANK ONE", "20"}, 4);
        zel::test::row("BR", Line{"BANK ONE", "FEES", "10"}, Line{"BANK ONE", "RENT", "20"}, 4);
        zel::test::row("CP", Line{"RENT", "CASH BOX", "10"}, Line{"LIGHT", "CASH BOX", "20"}, 3);
        zel::test::row("CR", Line{"CASH BOX", "FEES", "10"}, Line{"CASH BOX", "RENT", "20"}, 3);
        zel::test::row("JV", Line{"RENT", "FEES", "10"}, Line{"LIGHT", "FEES", "20"}, 4);
    }

    void changedVoucherKeepsItsNumberAndLosesItsOldLines() {
        QFETCH(Line, first);
        QFETCH(Line, second);
        QFETCH(int, rowsAfter);
        const QByteArray kind = QTest::currentDataTag();
        Desk desk("update VouSetting set VouNo = '7'");
        desk.open(kind);
        desk.add(first);
        desk.push("cmdSave");
        desk.add(second);
        desk.push("cmdSave");

        desk.openFromSearch(2);
        QCOMPARE(desk.text("txtVoucher"), "7");
        QVERIFY(desk.enabled("cmdDelete"));
        desk.date(2025, 12, 31);
        desk.replace("txtPaidTo", "Changed");
        desk.add(second);
        desk.push("cmdSave");
        QVERIFY(!desk.enabled("cmdDelete"));
        const QStringList all = headers(desk, kind);
        QCOMPARE(all.size(), 2);
        QCOMPARE(all[0], QString("7|%1|31/12/2025|Changed|30|sa|NULL|NULL|NULL").arg(kind));
        compare(
            desk.office.rows(
                "select count(*), sum(DrAmt), sum(CrAmt) from DetJV where VouNo = 7 and VouStatus = '"_sql +
                QString(kind) + "' and VouDate = '2025-12-31'"),
            {QString("%1|30|30").arg(rowsAfter)});
    }

    void manyLines_data() {
        columns<Line, QString, int, int, int>("line", "again", "rowsPerLine", "summary", "amount");
        zel::test::row("JV", Line{"RENT", "FEES", ""}, "", 2, 0, 3);
        zel::test::row("CP", Line{"RENT", "CASH BOX", ""}, "RENT", 1, 1, 2);
    }

    void manyLines() {
        QFETCH(Line, line);
        QFETCH(QString, again);
        QFETCH(int, rowsPerLine);
        QFETCH(int, summary);
        QFETCH(int, amount);
        constexpr int Lines = 200;
        const QByteArray kind = QTest::currentDataTag();
        Desk desk;
        desk.open(kind);
        QStringList expected;
        for (int i = 1; i <= Lines; ++i) {
            line.amount = QString::number(i) + ".05";
            QVERIFY(desk.add(line).empty());
            line.debit = again;
            line.credit.clear();
            for (int row = 0; row < rowsPerLine; ++row)
                expected << QString("%1|%2").arg(i).arg(row == 0 ? line.amount : "0");
        }
        if (summary)
            expected << "201|0";
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 20,110.00");
        QVERIFY(desk.push("cmdSave").empty());
        compare(desk.office.rows("select EntryNo, DrAmt from DetJV"), expected);
        compare(desk.office.rows("select sum(DrAmt), sum(CrAmt) from DetJV"), {"20110|20110"});

        desk.openFromSearch(1);
        QCOMPARE(desk.grid("MshEntry")->Rows(), Lines + 1);
        QCOMPARE(desk.grid("MshEntry")->TextMatrix(Lines, amount), "200.05");
        settle();
        picture(desk.screen(), QString(desk.screen()->objectName()) + "-200-lines");
        desk.grid("MshEntry")->setRow(Lines);
        desk.push("acmRemove");
        desk.push("cmdSave");
        compare(desk.office.rows("select max(EntryNo), count(*), sum(DrAmt), sum(CrAmt) from DetJV"),
                {QString("%1|%2|19909.95|19909.95").arg(199 + summary).arg(199 * rowsPerLine + summary)});
    }

    void startNumberIsThatOfTheOpening() {
        Desk desk("update VouSetting set VouNo = '40'");
        desk.open("BP");
        desk.add({"RENT", "BANK ONE", "1"});
        desk.push("cmdSave");
        desk.office.execute("update VouSetting set VouNo = '70'");
        desk.openFromSearch(1);
        desk.push("cmdDelete", QMessageBox::Yes);
        QCOMPARE(desk.text("txtVoucher"), "40");
        click(desk.screen(), "cmdExit");
        desk.open("BP");
        QCOMPARE(desk.text("txtVoucher"), "70");
    }

    void numbers() {
        Desk desk("update VouSetting set VouNo = '40' where VouStatus = 'BP'");
        const auto save = [&] {
            desk.add({"RENT", "BANK ONE", "1"});
            desk.push("cmdSave");
            return desk.text("txtVoucher");
        };
        desk.open("BP");
        QCOMPARE(desk.text("txtVoucher"), "40");
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
        QCOMPARE(remove(1), "40"); // none left: the start number again
        desk.open("BR");
        QCOMPARE(desk.text("txtVoucher"), "1");
    }

    void numberIsTakenAfreshAtTheSave() {
        Desk desk;
        desk.open("BP");
        desk.add({"RENT", "BANK ONE", "1"});
        desk.office.execute("insert into MasJV (VouNo, VouStatus) values (9, 'BP')");
        desk.push("cmdSave");
        compare(desk.office.rows("select VouNo from MasJV where TotalAmount = 1"), {"10"});
        compare(desk.office.rows("select VouNo, count(*) from DetJV group by VouNo"), {"10|2"});
    }

    void firstNumberWithoutASettingIsZero() {
        Desk desk("delete from VouSetting where VouStatus = 'JV'");
        desk.open("JV");
        QCOMPARE(desk.text("txtVoucher"), "0");
        desk.add({"RENT", "FEES", "1"});
        desk.push("cmdSave");
        compare(desk.office.rows("select VouNo from MasJV"), {"0"});
        QCOMPARE(desk.text("txtVoucher"), "1");
    }

    void deletes() {
        Desk desk("insert into MasJV (VouNo, VouStatus, TotalAmount) values (5, 'BR', 1) "
                  "insert into DetJV (VouNo, VouStatus, DrAmt) values (5, 'BR', 1) "
                  "update VouSetting set VouNo = '5'");
        desk.open("BP");
        desk.add({"RENT", "BANK ONE", "1"});
        desk.push("cmdSave");
        QVERIFY(!desk.enabled("cmdDelete"));
        desk.openFromSearch(1);
        const std::vector<Box> asked = desk.push("cmdDelete", QMessageBox::No);
        QCOMPARE(asked.size(), 1U);
        QCOMPARE(asked[0].text, "are you sure Delete this Voucher ");
        QCOMPARE(asked[0].icon, QMessageBox::Information);
        QCOMPARE(asked[0].title, "ZEL");
        QVERIFY(asked[0].buttons == (QMessageBox::Yes | QMessageBox::No));
        QVERIFY(desk.enabled("cmdDelete"));
        QCOMPARE(desk.office.rows("select VouNo from MasJV where VouStatus = 'BP'").size(), 1);
        desk.office.execute("insert into MasJV (VouNo, VouStatus) values (99, 'BP')");
        desk.push("cmdDelete", QMessageBox::No);
        QCOMPARE(desk.grid("mshSearch")->TextMatrix(1, 0), "99"); // searched anew all the same
        desk.office.execute("delete from MasJV where VouNo = 99");

        QCOMPARE(said() + '|' + underWay(), "BP 5 saved, 1.00 (F12 prints it)|correcting BP 5");
        desk.push("cmdDelete", QMessageBox::Yes);
        QCOMPARE(said() + '|' + underWay(), "BP 5 deleted|");
        QVERIFY(!desk.enabled("cmdDelete"));
        QCOMPARE(focused(), "DTPicker");
        compare(desk.office.rows("select VouNo, VouStatus from MasJV"), {"5|BR"});
        compare(desk.office.rows("select VouNo, VouStatus from DetJV"), {"5|BR"});
        compare(desk.seen("mshSearch"), table("''|''|''|''|''"));

        // What another clerk has deleted already is deleted all the same.
        desk.add({"RENT", "BANK ONE", "2"});
        desk.push("cmdSave");
        desk.openFromSearch(1);
        desk.office.execute(
            "delete from MasJV where VouStatus = 'BP' delete from DetJV where VouStatus = 'BP'");
        QCOMPARE(desk.push("cmdDelete", QMessageBox::Yes).size(), 1U);
        QCOMPARE(desk.text("txtVoucher"), "5");
        QCOMPARE(desk.grid("MshEntry")->Rows(), 1);
    }

    void emptyGridIsRefused() {
        Desk desk;
        desk.open("CR");
        desk.add({"CASH BOX", "FEES", "1"});
        desk.push("cmdSave");
        desk.openFromSearch(1);
        desk.push("acmRemove");
        QVERIFY(desk.enabled("cmdDelete"));
        QCOMPARE(desk.text("txtTotAmount"), "1.00");
        const std::vector<Box> said = desk.push("cmdSave");
        QCOMPARE(said.size(), 1U);
        QCOMPARE(said[0].text, "Please enter less than one entry in detail");
        QVERIFY(!desk.enabled("cmdDelete"));
        compare(desk.office.rows("select count(*) from DetJV"), {"2"});
    }

    void amountsAreExact() {
        Desk desk;
        desk.open("CP");
        desk.choose("cmdSelectCr", "CASH BOX");
        for (const char *amount : {"0.1", "0.2", "99999999999.99", "1.005", "2.675"})
            desk.add({"RENT", "", amount});
        QCOMPARE(desk.label("lblTotalAmount"), "Total Amount : 100,000,000,003.98");
        desk.push("cmdSave");
        compare(desk.office.rows("select TotalAmount from MasJV"), {"100000000003.98"});
        compare(desk.office.rows("select CrAmt from DetJV where CrAc is null"), {"100000000003.98"});
        compare(desk.office.rows("select DrAmt from DetJV where CrAc is not null"),
                table("0.1\n0.2\n99999999999.99\n1.01\n2.68"));
    }
};

ZEL_TEST_MAIN(tst_voucher_posting)

#include "tst_voucher_posting.moc"
