#include "tests/reports/posted_catalog.h"

#include <QTest>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

namespace {

DocumentPtr slip(PostedCatalog &catalog) {
    const auto report = catalog.open("rptSlip.rpt");
    report->RecordSelectionFormula = "{MasJV.VouNo}= 5 and {MasJV.VouStatus} = 'FR' and {DetJv.CrAmt} > 0";
    return report->document();
}

} // namespace

/// The slip of a fee receipt as it is handed out.
class tst_slip_document : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// A sheet for each student, with what is settled of the subject by now: on the form, by receipts and
    /// carried forward. The second student has two applications with the subject; TAX is deleted.
    void sheets() {
        PostedCatalog catalog;
        catalog.execute("insert into Accounts (AcNodes, AcName, AcStatus) values ('9.1', 'HIRA O''NEIL', "
                        "'DD'), ('9.2', N'زویا', 'DD')\n"
                        "insert into tblSession (SessionId, SessionName) values (1, 'SPRING')\n"
                        "insert into tblSubject (SubId, SubName) values (1, 'LAW')\n"
                        "insert into MasJV (VouNo, VouStatus, VouDate, SlipNo, IRStatus, Login) "
                        "values (5, 'FR', '2024-03-14', 'B7', 'BANK', 'AMINA')\n"
                        "insert into tblDetApp (AppID, SubID, NetAmount, RecAmount) values (1, 1, 5000, "
                        "500), (1, 2, null, null), "
                        "(2, 1, 90000, null), (3, 1, 7, 7)");
        for (const char *application : {"1, RowID, 'R-1', 'LIAM' from Accounts where AcNodes = '9.1'",
                                        "2, RowID, null, null from Accounts where AcNodes = '9.2'",
                                        "3, RowID, null, null from Accounts where AcNodes = '9.2'"})
            catalog.execute(QString("insert into tblMasApp (AppID, CusCode, RegNo, FatherName) select ") +
                            application);
        catalog.post("2024-03-14 | FR 5 | 1 | 1.1.2 | 9.1 | 1000 | 0 | HALF\n"
                     "2024-03-14 | FR 5 | 1 | 9.1 | 1.1.2 | 0 | 1000 | HALF\n"
                     "2024-03-14 | FR 5 | 2 | 9.1 | 1.1.2 | 0 | 50.50 | -\n"
                     "2024-03-14 | FR 5 | 1 | 9.2 | 1.1.2 | 0 | 100000 | -\n"
                     "2024-03-15 | CF 1 | 1 | 9.1 | 1.1.2 | 0 | 700 | -\n"
                     "2024-03-15 | AR 1 | 1 | 9.1 | 1.1.2 | 0 | 9 | -\n");
        catalog.execute("update DetJV set SessionID = 1, SubID = EntryNo, ChecqNo = 'C9'");
        const auto document = slip(catalog);
        const QString head = "NORTHFIELD INSTITUTE\nFEE RECEIPT\nReceived from %1 Receipt no. FR - 5\n"
                             "%2Date 14/03/2024\nSession Subject This payment Received so far Remaining\n";
        const QString foot =
            "\nPart of receipt FR - 5, which is of 101,050.50\nReceived by AMINA Signature and stamp\n"
            "Printed by sa on 01/04/2024 at 09:05 Sheet %1 of 2\n";
        const QString mode = "Received Rs. At the bank, book no. B7\n";
        QCOMPARE(wholeText(*document),
                 head.arg("HIRA O'NEIL", "Reg. no.  R-1      Father  LIAM ") +
                     "SPRING LAW 1,000.00 2,200.00 2,800.00\nCheque no. C9   HALF\n"
                     "SPRING Deleted subject no. 2 50.50 50.50 0.00\nCheque no. C9\n" +
                     mode + "1,050.50\nAmount in words One Thousand Fifty and 50/100 Only" + foot.arg(1) +
                     head.arg("زویا", "") + "SPRING LAW 100,000.00 100,000.00 -10,000.00\nCheque no. C9\n" +
                     mode + "100,000.00\nAmount in words One Hundred Thousand Only\n(One Lakh Only)" +
                     foot.arg(2));
    }

    /// The longest texts and amounts stand whole, over as many sheets as it takes.
    void bigAndLong() {
        PostedCatalog catalog;
        const QString name = QString("WESTMORELAND AND WARWICKSHIRE MASONRY WORKS ").repeated(3).left(100);
        catalog.execute(
            QString("update Accounts set AcName = '%1' where AcNodes = '4.1.1'\n"
                    "insert into tblSubject (SubId, SubName) values (1, '%2')\n"
                    "insert into tblSession (SessionId, SessionName) values (1, '%2')\n"
                    "insert into tblDetApp (AppID, SubID, NetAmount) values (1, 1, -9999999999.99)\n"
                    "insert into tblMasApp (AppID, CusCode, RegNo, FatherName) select 1, RowID, 'CAF-10234', "
                    "'%2' "
                    "from Accounts where AcNodes = '4.1.1'\n"
                    "insert into MasJV (VouNo, VouStatus, Login) values (5, 'FR', '%2')")
                .arg(name, name.left(50)));
        catalog.post(
            QString("2024-03-14 | FR 5 | 1 | 4.1.1 | 1.1.2 | 0 | 999999999.99 | " + name + name + "\n")
                .repeated(12));
        catalog.execute("update DetJV set SessionID = 1, SubID = 1");
        QVERIFY(wholeText(*slip(catalog)).contains("-21,999,999,999.87"));
    }
};

QTEST_MAIN(tst_slip_document)
#include "tst_slip_document.moc"
