#include "tests/reports/posted_catalog.h"

#include <QTest>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

/// The slip of a fee receipt as it is handed out.
class tst_slip_document : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// A sheet for each student, with what was settled of the subject by now: on the form, by receipts and
    /// carried forward.
    void sheets() {
        PostedCatalog catalog;
        catalog.execute(
            "insert into Accounts (AcNodes, AcName, AcStatus) values ('9.1', 'HIRA O''NEIL', 'DD'), ('9.2', "
            "'زویا', 'DD')\n"
            "insert into tblSession (SessionId, SessionName) values (1, 'SPRING')\n"
            "insert into tblSubject (SubId, SubName) values (1, 'LAW'), (2, 'TAX')\n"
            "insert into MasJV (VouNo, VouStatus, VouDate, SlipNo, IRStatus, TotalAmount, Login) "
            "values (5, 'FR', '2024-03-14', 'B7', 'BANK', 101050.5, 'AMINA')\n"
            "insert into tblMasApp (AppID, CusCode, RegNo, FatherName) select 1, RowID, 'R-1', 'LIAM' from "
            "Accounts where "
            "AcNodes = '9.1'\n"
            "insert into tblMasApp (AppID, CusCode) select 2, RowID from Accounts where AcNodes = '9.2'\n"
            "insert into tblMasApp (AppID, CusCode) select 3, RowID from Accounts where AcNodes = '9.2'\n"
            "insert into tblDetApp (AppID, SubID, NetAmount, RecAmount) values (1, 1, 5000, 500), (1, 2, "
            "null, null), "
            "(2, 1, 90000, null), (3, 2, 7, 7)");
        catalog.post("2024-03-14 | FR 5 | 1 | 1.1.2 | 9.1 | 1000 | 0 | HALF\n"
                     "2024-03-14 | FR 5 | 1 | 9.1 | 1.1.2 | 0 | 1000 | HALF\n"
                     "2024-03-14 | FR 5 | 2 | 9.1 | 1.1.2 | 0 | 50.50 | -\n"
                     "2024-03-14 | FR 5 | 1 | 9.2 | 1.1.2 | 0 | 100000 | -\n"
                     "2024-03-15 | CF 1 | 1 | 9.1 | 1.1.2 | 0 | 700 | -\n"
                     "2024-03-15 | AR 1 | 1 | 9.1 | 1.1.2 | 0 | 9 | -\n");
        catalog.execute("update DetJV set SessionID = 1, SubID = EntryNo, ChecqNo = 'C9'");
        const auto slip = catalog.open("rptSlip.rpt");
        slip->RecordSelectionFormula = "{MasJV.VouNo}= 5 and {MasJV.VouStatus} = 'FR' and {DetJv.CrAmt} > 0";
        const auto document = slip->document();
        QCOMPARE(document->pageCount(), 2);
        QVERIFY(!wholeText(*document).isEmpty());
        qInfo().noquote() << document->plainText();
        for (const char *line : {"Received from HIRA O'NEIL Receipt no. FR - 5"})
            QVERIFY2(document->page(0).plainText().contains(line), line);
    }
};

QTEST_MAIN(tst_slip_document)
#include "tst_slip_document.moc"
