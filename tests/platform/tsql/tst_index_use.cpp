#include "written_catalog.h"

#include "tests/support/rows.h"
#include <QTest>

using zel::test::columns;
using zel::test::row;

using zel::Sql;

namespace {

constexpr const char *Schema = R"(
CREATE TABLE Accounts (RowID int IDENTITY(1,1) NOT NULL PRIMARY KEY, AcNodes varchar(60) NULL, AcName varchar(100) NULL,
    AcStatus char(2) NULL)
CREATE TABLE VouSetting (VouStatus char(2) NULL, AcCode varchar(20) NULL)
CREATE TABLE MasJV (VouNo int NOT NULL, VouStatus char(2) NOT NULL, VouDate datetime NULL, TotalAmount numeric(18,2) NULL)
CREATE TABLE DetJV (VouNo int NOT NULL, VouStatus char(2) NOT NULL, VouDate datetime NULL, EntryNo smallint NULL,
    AcCode int NULL, SubID int NULL, CrAc int NULL, DrAmt numeric(18,2) NULL, CrAmt numeric(18,2) NULL, Naration varchar(200) NULL)
CREATE INDEX iNodes ON Accounts (AcNodes)
CREATE INDEX iMasVoucher ON MasJV (VouStatus, VouNo)
CREATE INDEX iVoucher ON DetJV (VouStatus, VouNo, DrAmt)
CREATE INDEX iAccount ON DetJV (AcCode, VouDate, DrAmt, CrAmt)
CREATE INDEX iContra ON DetJV (CrAc, VouDate)
CREATE INDEX iSubject ON DetJV (AcCode, SubID, VouStatus, CrAmt) WHERE SubID IS NOT NULL
)";

} // namespace

/// The conversions that the front end writes must leave the engine its indexes.

class tst_index_use : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void plans_data() {
        columns<QString, QStringList>("statement", "used");
        const auto row = [](const char *name, const char *statement, const QStringList &used) {
            zel::test::row(name, statement, used);
        };
        row("voucher", "Select * From MasJV Where VouNo = 1 And VouStatus = 'BP' ",
            {"iMasVoucher (VouStatus=? AND VouNo=?)"});
        row("voucher, lower case and blanks", "Select * From MasJV Where VouNo = '1' And VouStatus = 'bp ' ",
            {"iMasVoucher (VouStatus=? AND VouNo=?)"});
        row("lines of a voucher", "Delete From DetJV Where VouNo = 1 And VouStatus = 'BP' ",
            {"iVoucher (VouStatus=? AND VouNo=?)"});
        row("next number", "select isnull(max(VouNo),0)+1 as VouNo from MasJV Where Voustatus = 'BP'",
            {"COVERING INDEX iMasVoucher (VouStatus=?)"});
        row("correlated count",
            "Select VouNo,Multi=case When (select count(vouno) from detjv where voustatus='BP' and "
            "vouno=a.vouno "
            "and DrAmt>0) > 1 "
            "then 'M' end From MasJv a Where VouStatus='BP' order by VouNo desc",
            {"iMasVoucher (VouStatus=?)", "COVERING INDEX iVoucher (VouStatus=? AND VouNo=? AND DrAmt>?)"});
        row("ledger",
            "select VouDate,DrAmt,CrAmt from DetJV where AcCode = 7 and VouDate between '2024-1-1' and "
            "'2024-12-31'",
            {"iAccount (AcCode=? AND VouDate>? AND VouDate<?)"});
        row("opening",
            "select isnull(sum(DrAmt - CrAmt),0) from DetJV where AcCode = '7' and VouDate < '01/01/2024'",
            {"COVERING INDEX iAccount (AcCode=? AND VouDate<?)"});
        row("book",
            "select DetJV.VouNo, Accounts.AcName from DetJV left join Accounts on Accounts.RowID = "
            "DetJV.AcCode "
            "where DetJV.CrAc = 7 and (DetJV.VouDate >= '2024-03-01' and DetJV.VouDate < '2024-04-01') "
            "order by DetJV.VouDate, DetJV.VouStatus, DetJV.VouNo",
            {"iContra (CrAc=? AND VouDate>? AND VouDate<?)", "INTEGER PRIMARY KEY (rowid=?)"});
        row("other account of a summary",
            "select isnull(d.CrAc, (select case when min(o.AcCode) = max(o.AcCode) then min(o.AcCode) end "
            "from DetJV o where o.VouStatus = d.VouStatus and o.VouNo = d.VouNo and o.CrAc = d.AcCode)) "
            "from DetJV d where d.AcCode = 7 and d.VouDate >= '2024-01-01' and d.VouDate <= '2024-12-31'",
            {"iAccount (AcCode=? AND VouDate>? AND VouDate<?)", "iVoucher (VouStatus=? AND VouNo=?)"});
        row("code by a text", "select acname from accounts where acnodes='1.1'",
            {"iNodes (AcNodes>? AND AcNodes<?)"});
        row("children", "select count(acname) from accounts where acnodes like '1.1.%'",
            {"iNodes (AcNodes>? AND AcNodes<?)"});
        row("account of a setting",
            "Select AcTitle=(Select AcName From Accounts Where rowid=AcCode) From VouSetting",
            {"INTEGER PRIMARY KEY (rowid=?)"});
        row("code of another table",
            "select (select min(AcName) from Accounts a where a.AcNodes = VouSetting.AcCode) from VouSetting",
            {"iNodes (AcNodes>? AND AcNodes<?)"});
        row("join over codes", "select a.AcName from VouSetting v join Accounts a on v.AcCode = a.AcNodes",
            {"iNodes (AcNodes>? AND AcNodes<?)"});
        row("letters beyond ASCII", "select AcName from Accounts where AcNodes = 'Ñ 1'",
            {"iNodes (AcNodes>? AND AcNodes<?)"});
        row("kinds",
            "select VouNo from DetJV where AcCode = 7 and VouStatus in ('FR','CF') and VouDate >= "
            "'2024-01-01'",
            {"iAccount (AcCode=? AND VouDate>?)"});
        // The index holds only the lines that have a subject.
        row("received of a subject",
            "select isnull(sum(CrAmt),0) from DetJv Where  Voustatus = 'FR' And AcCode = 7  And SubID = 3 or "
            "Voustatus = 'CF'  And AcCode = 7 And SubID = 3",
            {"COVERING INDEX iSubject (AcCode=? AND SubID=?"});
        row("received of a subject, its account told twice",
            "select isnull(sum(CrAmt),0) From DetJv Where  AcCode = 7 And SubID = 3 And Voustatus = 'FR' And "
            "AcCode = 7 And SubID = 3 or Voustatus = 'CF' And AcCode = 7 And SubID = 3",
            {"COVERING INDEX iSubject (AcCode=? AND SubID=?"});
        row("received of all accounts",
            "select (select sum(CrAmt) from DetJV where AcCode = a.RowID and SubID = a.RowID and VouStatus "
            "in "
            "('FR', 'CF')) from Accounts a",
            {"COVERING INDEX iSubject (AcCode=? AND SubID=? AND VouStatus=?)"});
        row("join of vouchers and lines",
            "select m.VouNo,d.DrAmt from MasJV m join DetJV d on d.VouStatus = m.VouStatus and d.VouNo = "
            "m.VouNo",
            {"iVoucher (VouStatus=? AND VouNo=?)"});
    }

    void plans() {
        QFETCH(QString, statement);
        QFETCH(QStringList, used);
        const QString plan = m_catalog.plan(Sql::trusted(statement.toStdString()));
        for (const QString &part : used)
            QVERIFY2(plan.contains(part), qPrintable(plan + "\nwithout " + part));
    }

private:
    WrittenCatalog m_catalog{Schema};
};

QTEST_APPLESS_MAIN(tst_index_use)
#include "tst_index_use.moc"
