#include "platform/base/error.h"
#include "platform/report/query/select.h"

#include "tests/support/facts.h"
#include <QTest>

using zel::test::rowsFrom;

using namespace zel;
using namespace zel::report;

/// What a selection formula becomes in the report's statement, and what is none.

namespace {

constexpr const char *Facts = "platform/report/selection.json";

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
    void becomesSql_data() { rowsFrom<QString, QString, QString>(Facts); }

    void becomesSql() {
        QFETCH(QString, formula);
        const Made statements = made(Sql::trusted(formula.toStdString()));
        QTEST(whereOf(statements.rows), "rows");
        QTEST(whereOf(statements.lookup), "lookup");
    }

    void refuses_data() { rowsFrom<QString, int>(Facts); }

    void refuses() {
        QFETCH(QString, formula);
        QTEST(refusal(Sql::trusted(formula.toStdString())), "number");
    }

    /// What is refused where; 0 is taken.
    void foreignPieces_data() { rowsFrom<QString, int, int, int>(Facts); }

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
        QCOMPARE(QString::fromUtf8(statements.rows.text()),
                 "select M.Name as M_Name, A.Code as A_Code, (select sum(Paid.Amt) from L Paid where (Paid.No "
                 "= M.No and Paid.Kind = 17)) as Paid_Amt, M.Kind as M_Kind, L.Amt as L_Amt from M inner join "
                 "L on (L.No = M.No and L.Kind = M.Kind) left join Accounts A on A.Id = L.No where M.No = 5 "
                 "order by cast(rtrim(M.Kind) as bigint) desc, L.No");
        QCOMPARE(QString::fromUtf8(statements.lookup.text()),
                 "select Company.Name as Company_Name from Company");
    }
};

QTEST_APPLESS_MAIN(tst_selection)
#include "tst_selection.moc"
