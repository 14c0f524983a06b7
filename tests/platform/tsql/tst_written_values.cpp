#include "written_catalog.h"

#include "tests/support/facts.h"
#include <QTest>

using namespace zel::test;

using zel::Sql;
using zel::operator""_sql;

namespace {

constexpr const char *Facts = "platform/tsql/written_values.json";

} // namespace

/// What written statements give on the real engine, where the dialect and the engine differ.

class tst_written_values : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void values_data() { rowsFrom<QString, QStringList>(Facts); }

    void values() {
        const auto [statement, rows] = fetched<QString, QStringList>();
        WrittenCatalog catalog("platform/tsql/written_values.sql");
        QCOMPARE(catalog.run(Sql::trusted(statement.toStdString())), rows);
    }

    void changes_data() { rowsFrom<QString, QString, QStringList>(Facts); }

    void changes() {
        const auto [statement, question, rows] = fetched<QString, QString, QStringList>();
        WrittenCatalog catalog("platform/tsql/written_values.sql");
        const QStringList failure = catalog.run(Sql::trusted(statement.toStdString()));
        if (failure == rows)
            return;
        QCOMPARE(catalog.run(Sql::trusted(question.toStdString())), rows);
    }

    /// Declared types stay as they were written, and nothing of ours stands in the schema.
    void schema() {
        const WrittenCatalog catalog("platform/tsql/written_values.sql");
        QCOMPARE(
            catalog.written(
                "create table W (Id int identity(1,1) not null primary key, a varchar( 50 ) not null, "
                "b numeric(18, 2), c datetime null, d char(2))"_sql),
            "CREATE TABLE \"W\"(\"Id\" INTEGER PRIMARY KEY AUTOINCREMENT,\"a\" varchar(50) COLLATE NOCASE "
            "NOT NULL,"
            "\"b\" numeric(18,2),\"c\" datetime,\"d\" char(2) COLLATE NOCASE)");
        const auto numeric = zel::tsql::parseType("numeric(18,2)");
        QVERIFY(numeric && numeric->kind == zel::tsql::TypeKind::Numeric && numeric->length == 18 &&
                numeric->scale == 2);
        for (const char *wrong :
             {"", "blob", "varchar()", "varchar(0)", "int(4)", "numeric(2,3)", "varchar(9) x"})
            QVERIFY2(!zel::tsql::parseType(wrong), wrong);
    }

    void columns() {
        const WrittenCatalog catalog("platform/tsql/written_values.sql");
        const auto translated = [&](const Sql &text) {
            return zel::tsql::translate(text, catalog, zel::tsql::sqlite()).front();
        };
        const auto rows = translated("select v,Id as Number,*,x=N+1 from t where 0=1"_sql);
        QCOMPARE(rows.baseTable, "T");
        QStringList names;
        for (const auto &column : rows.columns)
            names << QString::fromStdString(column.name + "/" + column.baseColumn);
        QCOMPARE(names.join(u' '), "v/V Number/Id Id/Id V/V C/C N/N D/D I/I x/");
        QCOMPARE(rows.columns[8].type.scale, 2);
        // Not through a join, an aggregate, distinct rows, groups or the first rows only.
        QVERIFY(translated("select a.Id from T a, U"_sql).baseTable.empty());
        QVERIFY(translated("select max(Id) from T"_sql).baseTable.empty());
        QVERIFY(translated("select distinct V from T"_sql).baseTable.empty());
        QVERIFY(translated("select V from T group by V"_sql).baseTable.empty());
        QVERIFY(translated("select top 1 V from T"_sql).baseTable.empty());

        const auto call = translated("sp_password OLD1,'new','Name'"_sql);
        QCOMPARE(call.name, "sp_password");
        QCOMPARE(call.arguments.size(), 3U);
        QCOMPARE(call.arguments[0].value(), "OLD1");
        QVERIFY(!translated("exec Sp_AddSrvroleMember 'x',null"_sql).arguments[1]);
    }

    void batchesOfAScript() {
        const auto found = zel::tsql::batches("go\nselect 1\nGO\n\nGo \r\nselect 'go'\ngone");
        QCOMPARE(found.size(), 2U);
        QCOMPARE(found[0], "select 1\n");
        QCOMPARE(found[1], "select 'go'\ngone");
    }

    /// What is kept of a batch is in proportion to its text, however many statements it has.
    void memoryOfABatch() {
        const WrittenCatalog catalog("platform/tsql/written_values.sql");
        std::string text;
        for (int i = 0; i < 4000; ++i)
            text += "insert into U (K,V) values (" + std::to_string(i) + ",'x') ";
        std::size_t kept = 0;
        for (const auto &statement : zel::tsql::translate(Sql::trusted(text), catalog, zel::tsql::sqlite()))
            kept += statement.sql.capacity();
        QVERIFY2(kept < 3 * text.size(), qPrintable(QString::number(kept)));
    }
};

QTEST_APPLESS_MAIN(tst_written_values)
#include "tst_written_values.moc"
