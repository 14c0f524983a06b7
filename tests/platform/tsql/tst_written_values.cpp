#include "written_catalog.h"

#include "tests/support/rows.h"
#include <QTest>

using zel::test::row;

using zel::Sql;
using zel::operator""_sql;

namespace {

constexpr const char *Schema = R"(
CREATE TABLE T (Id int IDENTITY(1,1) NOT NULL PRIMARY KEY, V varchar(20) NULL, C char(3) NULL, N numeric(18,2) NULL,
    D datetime NULL, I int NULL)
CREATE TABLE U (K int NOT NULL, V varchar(20) NULL, N numeric(18,2) NULL)
GO
CREATE PROCEDURE Both @a varchar(3), @n numeric(6,2) = 1.005, @d datetime = '2024-1-2' AS
BEGIN
    DECLARE @sum int, @text varchar(10)
    SET @sum = @n
    SET @text = rtrim(@sum) + '!'
    SELECT a = @a, n = @n, d = @d, s = @sum, t = @text
END
GO
CREATE PROCEDURE Outer1 @x int AS exec Both @x, @n = @x
GO
INSERT INTO T (V,C,N,D,I) VALUES ('Ñandú','ab',0.1,'2024-3-5',1),('ñANDÚ  ','AB ',0.2,'20240305 10:20',2),
    ('Nandu','abc',-1.005,'5 Mar 2024',3),('','',NULL,NULL,NULL),(NULL,NULL,3,'1/2/24',4)
INSERT INTO U (K,V,N) SELECT I,V,N FROM T WHERE I IS NOT NULL
)";

} // namespace

/// What written statements give on the real engine, where the dialect and the engine differ.

class tst_written_values : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void values_data() {
        zel::test::columns<QString, QStringList>("statement", "rows");
        const auto row = [](const char *statement, const QStringList &rows) {
            zel::test::row(statement, statement, rows);
        };
        // Case, accents, blanks.
        row("select Id from T where V = 'ÑANDÚ'", {"1", "2"});
        row("select Id from T where V <> 'nandu '", {"1", "2", "4"});
        row("select Id from T where V in ('NANDU','ñandú')", {"1", "2", "3"});
        row("select Id from T where V in (select V from U where K = 1)", {"1", "2"});
        row("select Id from T where V not in ('nandu')", {"1", "2", "4"});
        row("select Id from T where V = ''", {"4"});
        row("select a.Id,b.K from T a join U b on a.V = b.V where a.Id = 1", {"1|1", "1|2"});
        row("select a.Id,b.Id from T a join T b on b.V = a.V where a.Id < b.Id", {"1|2"});
        row("select a.Id,b.Id from T a join T b on b.C = a.V+'' where a.Id < 5", {"4|4"});
        row("select Id,(select count(*) from U where U.V = T.V) from T where Id < 4", {"1|2", "2|2", "3|1"});
        row("select Id from T where V like '%ÑAN%'", {"1", "2"});
        row("select Id from T where V like 'nand_'", {"3"});
        row("select Id from T where C = 'AB'", {"1", "2"});
        row("select Id from T where C like 'ab %'", {"1", "2"});
        row("select count(distinct V) from T", {"3"});
        row("select distinct C from T where C > '' order by C", {"ab ", "abc"});
        row("select distinct 'x' from T", {"x"});
        row("select distinct count(*) from T group by C", {"1", "2"});
        row("select -(N+0.1) from T where -(N+0.1) = -0.3", {"-0.3"});
        row("select count(*) from T where V is not null group by V order by 1", {"1", "1", "2"});
        row("select V from T where V > 'Z' order by V desc", {"Ñandú", "ñANDÚ  "});
        row("select Id from T where rtrim(V) = 'nandu'", {"3"});
        row("select case V when 'NANDU' then 'yes' end from T where Id = 3", {"yes"});
        // Padding of char columns.
        row("select '['+C+']',len(C),datalength(C) from T where Id in (1,3)", {"[ab ]|2|3", "[abc]|3|3"});
        row("select C,isnull(C,'x') from T where Id = 5", {"NULL|x  "});
        // Numbers.
        row("select sum(N) from T where Id < 3", {"0.3"});
        row("select sum(distinct N),avg(distinct N),sum(distinct I) from T where Id < 3 or Id = 4",
            {"0.3|0.15|3"});
        row("select N from T where Id = 3", {"-1.01"});
        row("select Id from T where N + 0.1 = 0.3", {"2"});
        row("select N*3,N-0.3 from T where Id = 1", {"0.3|-0.2"});
        row("select 7/2,-7/2,7%3,7/2.0,1.0/3", {"3|-3|1|3.5|0.333333"});
        row("select 2147483647+Id from T", {"8115"});
        row("select I+1,count(*) from T where I < 3 group by I+1", {"2|1", "3|1"});
        row("select 5 - -3, -(-2)", {"8|2"});
        row("select avg(I),avg(N) from T where Id < 3", {"1|0.15"});
        row("select '5'+1,'5'+'1',rtrim(7)+'!'", {"6|51|7!"});
        row("select cast(2.5 as int),cast('2.5' as numeric(5,1)),convert(varchar(10),2.50),cast(1.995 as "
            "numeric(5,2))",
            {"2|2.5|2.50|2.0"});
        row("select I from T where I like '[1-2]'", {"1", "2"});
        row("select N from T where N like '%.10'", {"0.1"});
        row("select 1/(I-1) from T where Id = 1", {"8134"});
        row("select isnull(max(I),0)+1 from T where 0=1", {"1"});
        // Dates.
        row("select Id,D from T where D < '2024-03-06' and D >= '3/5/2024'",
            {"1|2024-03-05", "2|2024-03-05 10:20:00.000", "3|2024-03-05"});
        row("select right('0' + rtrim(day(D)),2) + '-' + rtrim(month(D)) + '-' + rtrim(year(D)) from T where "
            "Id "
            "in (4,5)",
            {"NULL", "02-1-2024"});
        row("select convert(varchar(10),D,103),convert(varchar(30),D,120) from T where Id = 2",
            {"05/03/2024|2024-03-05 10:20:00"});
        row("select Id from T where D = V", {"241"});
        row("select Id from T where D between '2024-01-01' and '2024-02-30 '", {"242"});
        row("select convert(datetime,'31/12/2024',103)", {"2024-12-31"});
        // NULL and choices.
        row("select V + null, isnull(null,0), coalesce(null,I,9), nullif(I,1) from T where Id = 1",
            {"NULL|0|1|NULL"});
        row("select Id from T where not V is null and not I is null", {"1", "2", "3"});
        row("select case when I > 1 then I else 0.5 end from T where Id < 3", {"0.5", "2"});
        // Queries.
        row("select x=(select V from U where K > 1)", {"512"});
        row("select x=(select top 1 K from U order by K desc)", {"4"});
        row("select x=(select distinct K from U where K = 2)", {"2"});
        row("select Id from T where Id = (select K from U)", {"512"});
        row("select Id from T where exists (select * from U where K = T.I and N > 0.15)", {"2", "5"});
        row("select top 2 Id from T order by Id desc", {"5", "4"});
        row("select V as Id,Id as V from T where Id = 3 order by Id", {"Nandu|3"});
        row("select 2 as a union all select 1 order by a", {"1", "2"});
        row("select t.s from (select sum(N) as s,V from U group by V) t where t.s > 1", {"3"});
        row("select a.Id,b.K from T a left join U b on b.K = a.I and b.K > 3",
            {"1|NULL", "2|NULL", "3|NULL", "4|NULL", "5|4"});
        row("select C,sum(N) from T group by C having count(*) > 1", {"ab |0.3"});
        row("select \"Id\" from ZEL.dbo.[T] where [id] = 2", {"2"});
        // Procedures.
        row("exec Both abcd", {"abc|1.01|2024-01-02|1|1!"});
        row("Both 'O''N',@d='3/4/2024'", {"O'N|1.01|2024-03-04|1|1!"});
        row("exec Both 12,default,null", {"12|1.01|NULL|1|1!"});
        row("exec Outer1 7", {"7|7.0|2024-01-02|7|7!"});
        row("declare @v varchar(9), @i int set @v = 'ÑANDÚ' set @i = '4' select Id from T where V = @v or I "
            "= @i",
            {"1", "2", "5"});
    }

    void values() {
        QFETCH(QString, statement);
        QFETCH(QStringList, rows);
        WrittenCatalog catalog(Schema);
        QCOMPARE(catalog.run(Sql::trusted(statement.toStdString())), rows);
    }

    void changes_data() {
        zel::test::columns<QString, QString, QStringList>("statement", "question", "rows");
        const auto row = [](const char *statement, const char *question, const QStringList &rows) {
            zel::test::row(statement, statement, question, rows);
        };
        row("insert into T (V,C,N,I) values ('x  ','y  ',1.005,'12')",
            "select '['+V+']','['+C+']',N,I from T where Id = 6", {"[x  ]|[y  ]|1.01|12"});
        row("insert into T (V,C) values ('twenty characters   more   ','x')", "select count(*) from T",
            {"8152"});
        row("insert into T (V) values ('twenty characters...   ') select 1",
            "select len(V),datalength(V) from T where Id = 6", {"20|20"});
        row("update T set V = V + V + V where Id = 1", "select V from T where Id = 1", {"ÑandúÑandúÑandú"});
        row("update T set V = V + V + V + V + V where Id = 1", "select V from T where Id = 1", {"8152"});
        row("update T set V = N where Id = 1", "select V from T where Id = 1", {"0.10"});
        row("update T set I = V where Id = 3", "select I from T where Id = 3", {"245"});
        row("update T set I = V where Id = 4", "select I from T where Id = 4", {"0"});
        row("update T set N = N * 1000000000 * 1000000000 where Id = 5", "select N from T where Id = 5",
            {"8115"});
        row("update T set D = D, C = null where V = 'ÑANDÚ '", "select count(*) from T where C is null",
            {"3"});
        row("delete T where V = 'ÑANDÚ'", "select Id from T", {"3", "4", "5"});
        row("delete from T insert into T (V) values ('new')", "select Id from T", {"6"});
        row("create table W (a int, b char(2) null) insert into W values (1,'x') insert into W select K,'y' "
            "from "
            "U where K > 3",
            "select a,b from W", {"1|x ", "4|y "});
        row("update U set K = null", "select 1", {"515"});
    }

    void changes() {
        QFETCH(QString, statement);
        QFETCH(QString, question);
        QFETCH(QStringList, rows);
        WrittenCatalog catalog(Schema);
        const QStringList failure = catalog.run(Sql::trusted(statement.toStdString()));
        if (failure == rows)
            return;
        QCOMPARE(catalog.run(Sql::trusted(question.toStdString())), rows);
    }

    /// Declared types stay as they were written, and nothing of ours stands in the schema.
    void schema() {
        const WrittenCatalog catalog(Schema);
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
        const WrittenCatalog catalog(Schema);
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
        const WrittenCatalog catalog(Schema);
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
