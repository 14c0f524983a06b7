#include "platform/base/error.h"
#include "platform/report/query/select.h"

#include "tests/support/rows.h"
#include <QTest>

using zel::test::columns;
using zel::test::fill;
using zel::test::row;

using namespace zel;
using namespace zel::report;

/// What a selection formula becomes in the report's statement, and what is none.

namespace {

std::shared_ptr<Definition> definition() {
    return readDefinition(
        "<report name='r'>"
        "<parameter name='Session'/>"
        "<table name='M'>No number, Kind text, Day date, Name text</table>"
        "<table name='L' join='inner' on='{L.No} = {M.No} and {L.Kind} = {M.Kind}'>No number, Kind text, Amt "
        "number</table>"
        "<table name='A' source='Accounts' join='left' on='{A.Id} = {L.No}'>Id number, Code text</table>"
        "<table name='Paid' source='L' join='sum' on='{Paid.No} = {M.No} and {Paid.Kind} = {Session}'>No "
        "number, "
        "Kind number, Amt number</table>"
        "<table name='Company'>Name text, comActive text</table>"
        "<formula name='Owed'>{L.Amt} - 10</formula>"
        "<formula name='IsBig'>{L.Amt} > 100</formula>"
        "<group name='G' by='ToNumber({M.Kind})' order='desc'/><sort by='{L.No}'/>"
        "<detail><field>{M.Name} &amp; {A.Code} &amp; {Paid.Amt}</field></detail>"
        "<pageHeader><field>{Company.Name}</field></pageHeader></report>",
        "r.rpt");
}

struct Made {
    Sql rows;
    Sql lookup;
};

Made made(const Sql &formula) {
    const auto scope = definition();
    const Parameters parameters{17};
    const Selection selection = selectionOf(*scope, report::bind(parse(formula), *scope));
    return {rowsSelect(*scope, selection, parameters).text,
            lookupSelect(*scope, 4, selection, parameters).text};
}

QString whereOf(const Sql &statement) {
    return QString::fromUtf8(statement.text())
        .section(" from ", -1)
        .section(" where ", 1)
        .section(" order by ", 0, 0);
}

int refusal(const Sql &formula) {
    try {
        static_cast<void>(made(formula));
    } catch (const Error &error) {
        return error.number();
    }
    return 0;
}

} // namespace

class tst_selection : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void becomesSql_data() {
        columns<QString, QString>("rows", "lookup");
        const auto row = [](const char *formula, const char *rows, const char *lookup = "") {
            zel::test::row(formula, QString(rows), QString(lookup));
        };
        row("{M.No}= 5 and {m.kind} = 'BP' and {Company.comActive} = 'Y'", "M.No = 5 and M.Kind = 'BP'",
            "Company.comActive = 'Y'");
        row("{Company.comActive}='Y'", "", "Company.comActive = 'Y'");
        row("{M.No}  =  -5.50", "M.No = -5.5");
        row("{M.Name} like '*o''x?*'", "M.Name like '%o''x_%'");
        row("{M.Name} like '100%_[a]'", "M.Name like '100[%][_][[]a]'");
        row("{M.Day} in #2024-01-05# to #2024-01-31#", "(M.Day >= '2024-01-05' and M.Day < '2024-02-01')");
        row("{M.Day} < #2024-01-05#", "M.Day < '2024-01-05'");
        row("{M.Day} > #2024-12-31#", "M.Day >= '2025-01-01'");
        row("{M.Day} = #2024-02-29#", "(M.Day >= '2024-02-29' and M.Day < '2024-03-01')");
        row("#2024-01-05# >= {M.Day}", "M.Day < '2024-01-06'");
        row("{M.Day} <= #9999-12-31#", "M.Day <= '9999-12-31'");
        row("{L.Amt} in 1 to 2.5", "(L.Amt >= 1 and L.Amt <= 2.5)");
        row("{L.Amt} > 0 or not ({M.Kind} <> 'x')", "(L.Amt > 0 or not (M.Kind <> 'x'))");
        row("IsNull({M.Name})", "M.Name is null");
        row("not IsNull({M.Name}) and {M.No} = {Session}", "not (M.Name is null) and M.No = 17");
        row("{Owed} > 5", "(isnull(L.Amt, 0) - 10) > 5");
        row("{IsBig}", "L.Amt > 100");
        row("Upper({M.Name}) = 'X'", "upper(M.Name) = 'X'");
        row("(if {L.Amt} > 1 then 'a' else 'b') = 'a'", "case when L.Amt > 1 then 'a' else 'b' end = 'a'");
    }

    void becomesSql() {
        QFETCH(QString, rows);
        QFETCH(QString, lookup);
        const Made statements = made(Sql::trusted(QTest::currentDataTag()));
        QCOMPARE(whereOf(statements.rows), rows);
        QCOMPARE(whereOf(statements.lookup), lookup);
    }

    void refuses_data() {
        QTest::addColumn<int>("number");
        const auto row = [](const char *formula, int number) { zel::test::row(formula, number); };
        row("{M.No} =", 102);
        row("{M.No} = 5 and", 102);
        row("{M.No} = 5)", 102);
        row("{M.No} 5", 102);
        row("{M.No} = 5x", 102);
        row("{M.No} == 5", 102);
        row("{M.No = 5", 105);
        row("{M.Name} = 'x", 105);
        row("{M.Nope} = 5", 207);
        row("{N.No} = 5", 207);
        row("{Nothing} = 5", 207);
        row("nothing = 5", 207);
        row("{M.Day} = #2024-13-01#", 241);
        row("{M.Day} = #01/02/2024#", 241);
        row("{M.No} = 'x'", errors::TypeMismatch);
        row("{M.Name} = 5", errors::TypeMismatch);
        row("{M.No} like '5*'", errors::TypeMismatch);
        row("{M.No} and {M.Name}", errors::TypeMismatch);
        row("{M.Name} = {Company.Name}", errors::InvalidCall);
        row("{M.No} = 1 or {Company.comActive} = 'Y'", errors::InvalidCall);
        row("Sum({L.Amt}) > 1", errors::InvalidCall);
        row("PageNumber = 1", errors::InvalidCall);
        row("{M.Name} like {A.Code}", errors::InvalidCall);
        row("{L.Amt} / 2 = 1", errors::InvalidCall);
    }

    void refuses() {
        QFETCH(int, number);
        QCOMPARE(refusal(Sql::trusted(QTest::currentDataTag())), number);
    }

    void foreignPieces_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("asNumber"); // 0: taken
        columns<int, int>("asText", "asDate");
        const auto row = [](const QString &typed, int asNumber, int asText, int asDate) {
            fill(QTest::addRow("%s", qPrintable(typed)), typed, asNumber, asText, asDate);
        };
        row(QChar(0), 102, 102, 102);
        row("5", 0, 0, 241);
        row(" -5.5 ", 0, 0, 241);
        row(" ", 102, 0, 241);
        row("", 102, 0, 241);
        row("2024-01-05", 102, 0, 0);
        row("abc", 207, 0, 241);
        row("5 6", 102, 0, 241);
        row("5 or 1 = 1", 102, 0, 241);
        row("5)", 102, 0, 241);
        row("{M.No}", 102, 0, 241);
        row("'x'", 102, 102, 241);
        row("O'Neil", 105, 105, 241);
        row("O''Neil", 102, 0, 241);
        row("Neil'", 105, 105, 241);
        row("Neil''", 102, 0, 241);
        row("x' or 'a' = 'a", 102, 102, 241);
        row("2024-01-05# or 1 = 1 or {M.Day} = #2024-01-05", 102, 0, 102);
        row("}", 102, 0, 241);
    }

    void foreignPieces() {
        QFETCH(QString, typed);
        QFETCH(int, asNumber);
        QFETCH(int, asText);
        QFETCH(int, asDate);
        QCOMPARE(refusal("{M.No} = "_sql + typed + " and {M.Kind} = 'BP'"), asNumber);
        QCOMPARE(refusal("{M.Name} like '*"_sql + typed + "*'"), asText);
        QCOMPARE(refusal("{M.Day} = #"_sql + typed + "#"), asDate);
        // What one text leaves open the next one can't close.
        const Sql both = "{M.Kind} = '"_sql + typed + "' and {M.Name} = '" + typed + "'";
        QCOMPARE(refusal(both) == 0, asText == 0);
        QCOMPARE(refusal("{M.Name} = \""_sql + typed + "\""), typed == QChar(0) ? 102 : 0);
    }

    void wholeStatement() {
        const Made statements = made("{M.No} = 5"_sql);
        QCOMPARE(
            QString::fromUtf8(statements.rows.text()),
            QString(
                "select M.Name as M_Name, A.Code as A_Code, (select sum(Paid.Amt) from L Paid where "
                "(Paid.No = M.No and Paid.Kind = 17)) as Paid_Amt, M.Kind as M_Kind, L.Amt as L_Amt from M "
                "inner join L "
                "on "
                "(L.No = M.No and L.Kind = M.Kind) left join Accounts A on A.Id = L.No where M.No = "
                "5 order by "
                "cast(rtrim(M.Kind) as bigint) desc, L.No"));
        QCOMPARE(QString::fromUtf8(statements.lookup.text()),
                 QString("select Company.Name as Company_Name from Company"));
    }
};

QTEST_APPLESS_MAIN(tst_selection)
#include "tst_selection.moc"
