#include "memory_source.h"

#include "platform/report/paint.h"
#include "platform/report/report.h"

#include <QTest>

using namespace zel;
using namespace zel::report;

class tst_documents : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void voucher();
    void chart();
};

namespace {
QString rptPath(const char *name) {
    return QStringLiteral(ZEL_SOURCE_DIR "/rpt/") + QString::fromLatin1(name);
}
} // namespace

void tst_documents::voucher() {
    auto source = std::make_shared<MemorySource>();
    source->add(QStringLiteral("Company"),
                QStringLiteral(
                    "Company_Company | Company_comAddr | Company_comTel | Company_comFax | Company_comEmail\n"
                    "NORTHFIELD INSTITUTE OF ACCOUNTANCY | 14 Station Road, First Floor | 042-111 222 333 | "
                    "- | office@northfield.example\n"));
    QString lines = QStringLiteral(
        "MasJV_VouNo|MasJV_VouStatus|MasJV_VouDate|MasJV_PaidReceive|MasJV_Login|Accounts_AcNodes|Accounts_"
        "AcName|"
        "Bank_AcNodes|Bank_AcName|DetJV_DrAmt|DetJV_ChecqNo|DetJV_BillNo|DetJV_FileNo|DetJV_Naration\n"
        "5|BP|2024-03-14|CITY PROPERTIES LIMITED|ADMIN|5.1.3|OFFICE RENT|1.2.1|FIRST CITY BANK, MAIN "
        "BRANCH|125000|00451872|77|F-9|"
        "Rent of the first floor for March 2024\n"
        "5|BP|2024-03-14|CITY PROPERTIES LIMITED|ADMIN|5.1.10|ELECTRICITY AND WATER OF THE FIRST AND SECOND "
        "FLOOR|1.2.1|FIRST CITY BANK, MAIN BRANCH|18450.75|00451873|-|-|"
        "-\n"
        "5|BP|2024-03-14|CITY PROPERTIES LIMITED|ADMIN|5.2.1|OFFICE REPAIRS|1.2.1|FIRST CITY BANK, MAIN "
        "BRANCH|2300.5|00451874|1180|F-12|"
        "Repairs of the front office door, of two window frames and of the lock of the cash office, as "
        "agreed with the landlord on 2 March, to be set against the deposit\n");
    source->add(QStringLiteral("MasJV"), lines);
    auto opened = Application().OpenReport(rptPath("rptBP.rpt"));
    opened->Database().Tables().Item(1).ConnectionProperties(QStringLiteral("User ID")).Value =
        QStringLiteral("ADMIN");
    opened->RecordSelectionFormula = "{MasJV.VouNo}= "_sql + QStringLiteral("5") +
                                     " and {MasJV.VouStatus} = 'BP' and {Company.comActive} = 'Y'";
    opened->setSource(source);
    const auto document = opened->document();
    qInfo().noquote() << source->statements.join(QLatin1Char('\n'));
    qInfo().noquote() << document->plainText();
    exportPdf(*document, QStringLiteral(ZEL_BINARY_DIR "/rptBP.pdf"));
}

void tst_documents::chart() {
    auto source = std::make_shared<MemorySource>();
    source->add(QStringLiteral("Company"),
                QStringLiteral(
                    "Company_Company | Company_comAddr | Company_comTel | Company_comFax | Company_comEmail\n"
                    "NORTHFIELD INSTITUTE OF ACCOUNTANCY | 14 Station Road, First Floor | 042-111 222 333 | "
                    "- | office@northfield.example\n"));
    QString lines = QStringLiteral(
        "Head_ParentID|Head_AcNodes|Head_AcName|Sub_RowID|Sub_Dcode|Sub_AcNodes|Sub_AcName|Account_RowID|"
        "Account_Dcode|Account_AcNodes|Account_AcName|Account_BStatus|Account_OpenBal|Account_openDate\n");
    for (int head = 1; head <= 4; ++head) {
        for (int sub = 1; sub <= 3; ++sub) {
            for (int account = 1; account <= 10; ++account)
                lines += QStringLiteral("%1|%1|CONTROL %1|%2|%2|%1.%2|SUB CONTROL "
                                        "%1.%2|%3|%3|%1.%2.%3|ACCOUNT NUMBER %3 OF THIS|%4|%5|2023-07-01\n")
                             .arg(head)
                             .arg(sub)
                             .arg(account)
                             .arg(QLatin1String(account == 1   ? "B"
                                                : account == 2 ? "S"
                                                               : "-"))
                             .arg(account * 1250.25 * head - (sub == 2 ? 40000 : 0), 0, 'f', 2);
        }
    }
    lines += QStringLiteral("5|5|EMPTY CONTROL|-|-|-|-|-|-|-|-|-|-|-\n");
    source->add(QStringLiteral("Head"), lines);
    auto opened = Application().OpenReport(rptPath("rptChartAC.rpt"));
    opened->setSource(source);
    const auto document = opened->document();
    qInfo().noquote() << source->statements.join(QLatin1Char('\n'));
    qInfo().noquote() << document->plainText();
    exportPdf(*document, QStringLiteral(ZEL_BINARY_DIR "/rptChartAC.pdf"));
    for (const auto &node : document->groups())
        qInfo() << node.title << node.page << node.children.size();
}

QTEST_MAIN(tst_documents)
#include "tst_documents.moc"
