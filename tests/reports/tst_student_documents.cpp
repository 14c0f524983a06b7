#include "tests/reports/posted_catalog.h"
#include "tests/support/facts.h"

#include <QTest>

using namespace zel;
using namespace zel::test;

/// The application form and the list of admissions, under the selections that their screen sets, and all
/// student documents with what is hard to print.
class tst_student_documents : public QObject {
    Q_OBJECT

    static void enroll(PostedCatalog &catalog) {
        catalog.execute("insert into tblSession (SessionId, SessionName) values (1, 'SPRING')");
        catalog.execute("insert into tblCourse (CourseId, CourseName) values (1, 'LAW'), (2, N'اردو ادب')");
        catalog.execute(
            "insert into tblSubject (SubId, CourseId, SubName) values (1, 1, 'CONTRACTS'), "
            "(2, 2, N'غالب کی شاعری'), (3, 1, 'COMPANIES AND THE AUDIT OF THEIR ACCOUNTS, PART 2')");
        const char *const people[] = {"'R-1', 'AMINA O''HARA', 'NOOR', '0300-1', '2026-01-05'",
                                      "'R-2', N'محمد علی خان', N'احمد', '0300-2', '2026-01-05'",
                                      "'R-12', 'A NAME THAT IS AS LONG AS THE COLUMN LETS IT BE, WHICH TAKES "
                                      "IT OVER TWO LINES, OR EVEN THREE', 'A FATHER OF SUCH A NAME', "
                                      "'0300-1234567', '2026-02-01'"};
        for (int id = 1; id <= 3; ++id)
            catalog.execute(
                QString("insert into tblMasApp (AppID, CusCode, SessionID, RegNo, StuName, FatherName, "
                        "CellNo, FixDate, RegFee, User_Name) values (%1, 5, 1, %2, 250, 'AMINA')")
                    .arg(id)
                    .arg(people[id - 1]));
        catalog.execute(
            "insert into tblDetApp (AppID, SubID, SubAmt, Discount, NetAmount, RecAmount, Nerration, "
            "InActive) values (1, 1, 1500, 0, 1500, 500, null, null), "
            "(1, 3, 900.5, 100, 800.5, null, 'HALF', '1'), (2, 2, 700, 0, 700, 700, null, null), "
            "(3, 3, 9999999999.99, 0, 9999999999.99, 100000, 'A NARRATION OF FIFTY LETTERS, NOT ONE "
            "LESS', '1'), (3, 9, 1, 0, 1, 0, null, null)");
    }

private Q_SLOTS:
    void admissions_data() { rowsFrom<QString, QString>("reports/students.json"); }

    void admissions() {
        const auto [selection, ids] = fetched<QString, QString>();
        PostedCatalog catalog;
        enroll(catalog);
        const auto report = catalog.open("rptAdmissionDetail.rpt");
        report->RecordSelectionFormula = Sql::trusted(selection.toStdString());
        static const QRegularExpression Student("^(\\d+) \\d\\d/\\d\\d/2026 ");
        QStringList found;
        for (const QString &line : wholeText(*report->document()).split('\n'))
            if (const auto student = Student.match(line); student.hasMatch())
                found << student.captured(1);
        QCOMPARE(found.join(' '), ids);
    }

    void application() {
        PostedCatalog catalog;
        enroll(catalog);
        const auto report = catalog.open("rptApplication.rpt");
        report->RecordSelectionFormula = "{tblMasApp.AppId} = 1"_sql;
        const QString text = wholeText(*report->document());
        for (const char *const line :
             {"Student's name AMINA O'HARA\nFather's name NOOR\n",
              "LAW COMPANIES AND THE AUDIT 900.50 100.00 800.50\n"
              "OF THEIR ACCOUNTS, PART 2\nHALF (inactive)\nLAW CONTRACTS 1,500.00 1,500.00 500.00\n"
              "Total 2,400.50 100.00 2,300.50 500.00\nRegistration fee 250.00 Balance of the subjects "
              "1,800.50\n"
              "Received in words Five Hundred Only\nAMINA\n"})
            QVERIFY2(text.contains(line), qPrintable(text));
    }

    void nothingIsCut() {
        PostedCatalog catalog;
        enroll(catalog);
        for (const char *const file :
             {"rptApplication", "rptFeeDetail", "rptActStudentWiseDetail", "rptStudentWiseDetail",
              "rptActStudentWiseCourse", "rptStudentWiseSubject"}) {
            catalog.execute("exec CreatStuWiseDet 1,0,0 ");
            const auto report = catalog.open(QString(file) + ".rpt");
            if (QByteArray(file) == "rptFeeDetail")
                report->ParameterFields(1).CurrentValue = Value(1);
            for (const char *const name : {"Course", "Subject"})
                if (QByteArray(file).endsWith(name) ||
                    (name[0] == 'C' && QByteArray(file).endsWith("Subject")))
                    report->FormulaFields(name).Text =
                        "\"COMPANIES AND THE AUDIT OF THEIR ACCOUNTS, PART 2\""_sql;
            QVERIFY(wholeText(*report->document()).contains("9,999,999,999.99"));
        }
    }
};

QTEST_MAIN(tst_student_documents)
#include "tst_student_documents.moc"
