#include "platform/ado/drivers/sqlite_functions.h"

#include "tests/support/facts.h"
#include <QTest>

#include <sqlite3.h>

#include <memory>

using namespace zel::test;

using Database = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

namespace {

Database opened() {
    sqlite3 *db = nullptr;
    sqlite3_open(":memory:", &db);
    zel::ado::registerFunctions(db);
    return {db, &sqlite3_close};
}

/// The first value of the first row as SQLite shows it: NULL, 'text', whole, or a real with its point; a
/// failure as the number in front of its text.
QString answer(sqlite3 *db, const QByteArray &statement) {
    sqlite3_stmt *prepared = nullptr;
    if (sqlite3_prepare_v2(db, statement.constData(), int(statement.size()), &prepared, nullptr) != SQLITE_OK)
        return QStringLiteral("unprepared: ") + QString::fromUtf8(sqlite3_errmsg(db));
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owner(prepared, &sqlite3_finalize);
    if (sqlite3_step(prepared) == SQLITE_ERROR)
        return QString::fromUtf8(sqlite3_errmsg(db)).section(u'|', 0, 0);
    switch (sqlite3_column_type(prepared, 0)) {
    case SQLITE_NULL:
        return QStringLiteral("NULL");
    case SQLITE_TEXT:
        return u'\'' + QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(prepared, 0))) +
               u'\'';
    default:
        return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(prepared, 0)));
    }
}

} // namespace

class tst_sqlite_functions : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void answers_data() { rowsFrom<QString, QString>("platform/ado/drivers/functions.json"); }

    void answers() {
        const auto [expression, expected] = fetched<QString, QString>();
        const Database db = opened();
        QCOMPARE(answer(db.get(), "select " + expression.toUtf8()), expected);
    }

    void sumsTenMillionRowsExactly() {
        const Database db = opened();
        QCOMPARE(
            answer(
                db.get(),
                "with recursive n(i) as (select 1 union all select i + 1 from n where i < 10000000) "
                "select zel_sum2(case i % 3 when 0 then 1234567.89 when 1 then -0.01 else 0.1 end) from n"),
            "4115226188477.33");
    }

    void nowStandsStillWithinAStatement() {
        const Database db = opened();
        QCOMPARE(answer(db.get(),
                        "with recursive n(i) as (select 1 union all select i + 1 from n where i < 200000) "
                        "select count(distinct zel_now()) from n"),
                 "1");
        QCOMPARE(
            answer(db.get(),
                   "select zel_date(zel_now(), 0) between datetime('now', 'localtime', '-5 seconds') and "
                   "datetime('now', 'localtime', '+5 seconds')"),
            "1");
    }
};

QTEST_APPLESS_MAIN(tst_sqlite_functions)
#include "tst_sqlite_functions.moc"
