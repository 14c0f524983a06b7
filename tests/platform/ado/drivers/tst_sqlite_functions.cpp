#include "platform/ado/drivers/sqlite_functions.h"

#include "tests/support/rows.h"
#include <QTest>

#include <sqlite3.h>

#include <memory>

using zel::test::columns;
using zel::test::row;

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
    void answers_data() {
        columns<QString, QString>("expression", "expected");
        const auto row = [](const char *expression, const char *expected) {
            zel::test::row(expression, QString::fromUtf8(expression), QString::fromUtf8(expected));
        };
        row("zel_fold('ALI Raza  ')", "'ali raza'");
        row("zel_fold('ÉCOLE Ωмега')", "'école ωмега'");
        row("zel_fold('e') = zel_fold('é')", "0");
        row("zel_fold('K') = zel_fold('\u212A')", "0");
        row("zel_fold(X'41FF42')", "'a\xEF\xBF\xBD"
                                   "b'");
        row("zel_fold(NULL)", "NULL");
        row("zel_fold('ß') = zel_fold('ẞ')", "1");
        row("length(zel_upper('straße ŉ'))", "8");
        row("zel_upper('é') || zel_lower('ÉA')", "'Ééa'");
        // like
        row("zel_like('HABIB BANK', '%bank%')", "1");
        row("zel_like('HABIB BANK', '%BANKS%')", "0");
        row("zel_like('École', '%éCO%')", "1");
        row("zel_like('École', '%co%')", "1");
        row("zel_like('', '%%')", "1");
        row("zel_like(NULL, '%%')", "NULL");
        row("zel_like('a  ', 'a')", "1");
        row("zel_like('a', 'a  ')", "0");
        row("zel_like('a   ', 'a  ')", "1");
        row("zel_like('  ', '')", "1");
        row("zel_like('a[b', 'a[b')", "0");
        row("zel_like('a[b', '%[%')", "0");
        row("zel_like('a[b', 'a[[]b')", "1");
        row("zel_like('a]b', 'a]b')", "1");
        row("zel_like('a]b', 'a[]]b')", "0");
        row("zel_like('a%b', 'a[%]b')", "1");
        row("zel_like('axb', 'a[%]b')", "0");
        row("zel_like('abb', '[A-C]B[^c-z]')", "1");
        row("zel_like('abc', '[A-C]B[^c-z]')", "0");
        row("zel_like('axb', 'a[x-]b')", "0");
        row("zel_like('a-b', 'a[-x]b')", "1");
        row("zel_like('a^b', 'a[x^]b')", "1");
        row("zel_like('éa', '_a')", "1");
        row("zel_like('mississippi', '%is%ip%i')", "1");
        row("zel_like('mississippi', '%is%ip%s')", "0");
        row("zel_like('100', '1%0')", "1");
        row("zel_like('2.1.10', '2.1._')", "0");
        // parts of texts
        row("zel_replace('CASH IN HAND', ' ', '')", "'CASHINHAND'");
        row("zel_replace('aXbxA', 'x', '-')", "'a-b-A'");
        row("zel_replace('aab', 'AB', 'c')", "'ac'");
        row("zel_replace('ABC', '', 'x')", "'ABC'");
        row("zel_right('015', 2)", "'15'");
        row("zel_right('é1', 2)", "'é1'");
        row("zel_right('abc', 5)", "'abc'");
        row("zel_right('abc', -1)", "536");
        row("zel_left('éab', 2)", "'éa'");
        row("zel_substring('abcdef', 2, 3)", "'bcd'");
        row("zel_substring('abcdef', 0, 3)", "'ab'");
        row("zel_substring('abcdef', -5, 3)", "''");
        row("zel_substring('abcdef', 5, 99)", "'ef'");
        row("zel_substring('abcdef', 1, -1)", "537");
        row("zel_charindex('B', 'éaba', 1)", "3");
        row("zel_charindex('a', 'éaba', 3)", "4");
        row("zel_charindex('z', 'éaba', 1)", "0");
        row("zel_pad('DD', 4) || '|'", "'DD  |'");
        row("zel_text('ab   ', 3) || '|'", "'ab |'");
        row("zel_text('abcd', 3)", "8152");
        row("zel_text('éèê', 3)", "'éèê'");
        // numbers
        row("zel_int(' 12 ', 32)", "12");
        row("zel_int('', 32)", "0");
        row("zel_int('12.0', 32)", "245");
        row("zel_int('abc', 64)", "8114");
        row("zel_int('3000000000', 32)", "248");
        row("zel_int('-9223372036854775808', 64)", "-9223372036854775808");
        row("zel_int(3000000000, 32)", "8115");
        row("zel_int(-2.9, 32)", "-2");
        row("zel_int(256, 8)", "220");
        row("zel_int('TRUE', 1) + zel_int(7, 1) + zel_int('0', 1)", "2");
        row("zel_num(1.005, 18, 2)", "1.01");
        row("zel_num(-1.005, 18, 2)", "-1.01");
        row("zel_num(75.555e0, 18, 2)", "75.56");
        row("zel_num(2.675, 18, 2)", "2.68");
        row("zel_num(1250.0, 18, 2)", "1250");
        row("zel_num(' 5.675 ', 18, 2)", "5.68");
        row("zel_num('', 18, 2)", "8114");
        row("zel_num('1,000', 18, 2)", "8114");
        row("zel_num('.', 18, 2)", "8114");
        row("zel_num('999.995', 5, 2)", "8115");
        row("zel_num(1000, 5, 2)", "8115");
        row("zel_num('9999999999999999.99', 18, 2)", "8115");
        row("zel_num('922337203685476', 18, 2)", "922337203685476");
        row("zel_num('922337203685476.99', 18, 2)", "8115"); // would come back as 922337203685477
        row("zel_numtext(zel_num('70368744177663.99', 18, 2), 2, 0)", "'70368744177663.99'");
        row("zel_num('90071992547409.91', 18, 2)", "8115");
        row("zel_num('99999999999999.01', 18, 2)", "8115");
        row("zel_num('99999999999999', 18, 2)", "99999999999999");
        row("zel_num(-922337203685477, 18, 0)", "8115");
        row("zel_num(1e300, 18, 2)", "8115");
        row("zel_num(90000000000.335, 18, 2)", "90000000000.34");
        row("zel_money('-$1,234.50')", "-1234.5");
        row("zel_money('')", "0");
        row("zel_money('1e3')", "235");
        row("zel_float('1e3')", "1000.0");
        row("zel_float('1,5')", "8114");
        row("zel_numtext(12.5, 2, 0)", "'12.50'");
        row("zel_numtext(-0.005, 2, 0)", "'-0.01'");
        row("zel_numtext(12345678901, 0, 10)", "8115");
        row("zel_numtext(123456789, 0, -8)", "'*'");
        row("zel_numtext(-1234567, 0, -8)", "'-1234567'");
        row("zel_floattext(1234567.25)", "'1234567.25'");
        row("zel_floattext(12.0)", "'12'");
        // arithmetic
        row("zel_idiv(-7, 2)", "-3");
        row("zel_idiv(1, 0)", "8134");
        row("zel_div(1, 3, 6)", "0.333333");
        row("zel_div(2.01, 2, 2)", "1");
        row("zel_div(2, 3, 20) * 3", "2.0");
        row("zel_div(-2, 3, 6)", "-0.666666");
        row("zel_div(100, 0.00339, 4)", "29498.525");
        row("zel_div(1, 0.0, 2)", "8134");
        row("zel_num(0.1234567, 18, 6)", "0.123457");
        row("zel_num('0.12345678901234567890', 38, 20)", "8115");
        row("zel_num(1, 38, 20)", "1");
        row("zel_cut(0.0002 * 0.5, 4)", "0.0001");
        row("zel_cut(-0.00019, 4)", "-0.0001");
        row("zel_div(1, 4, -1)", "0.25");
        row("zel_mod(-7, 2)", "-1");
        row("zel_mod(0.3, 0.1)", "0");
        row("zel_mod(7, 0)", "8134");
        row("zel_round(2.345, 2)", "2.35");
        row("zel_round(1.00499999999, 2)", "1");
        row("zel_round(150, -2)", "200");
        row("zel_round(-149.9, -2)", "-100");
        // dates
        row("zel_date('2024-3-5', 0)", "'2024-03-05'");
        row("zel_date('2024-03-05 10:20:30.123', 0)", "'2024-03-05 10:20:30.123'");
        row("zel_date('2024-03-05T10:20:30', 0)", "'2024-03-05 10:20:30.000'");
        row("zel_date('2024-03-05 00:00:00.000', 0)", "'2024-03-05'");
        row("zel_date('10:20:30.999', 0)", "'1900-01-01 10:20:31.000'");
        row("zel_date('2024-12-31 23:59:59.999', 0)", "'2025-01-01'");
        row("zel_date('2024-03-05 10:20:30.996', 0)", "'2024-03-05 10:20:30.997'");
        row("zel_date('9999-12-31 23:59:59.999', 0)", "242");
        row("zel_date('1:20 pm', 0)", "'1900-01-01 13:20:00.000'");
        row("zel_date('12:05AM', 0)", "'1900-01-01 00:05:00.000'");
        row("zel_date('', 0)", "'1900-01-01'");
        row("zel_date('5/3/2024', 0)", "'2024-05-03'");
        row("zel_date('05/03/2024', 103)", "'2024-03-05'");
        row("zel_date('31.12.24', 4)", "'2024-12-31'");
        row("zel_date('1/1/49', 0) || zel_date('1-1-50', 0)", "'2049-01-011950-01-01'");
        row("zel_date('5 Mar 2024', 0)", "'2024-03-05'");
        row("zel_date('March 5, 2024 10:20', 0)", "'2024-03-05 10:20:00.000'");
        row("zel_date('20240305', 0)", "'2024-03-05'");
        row("zel_date('2024', 0)", "'2024-01-01'");
        row("zel_date('12', 0)", "241");
        row("zel_date('abc', 0)", "241");
        row("zel_date('2024-03-05x', 0)", "241");
        row("zel_date('2024-03', 0)", "241");
        row("zel_date('31/12/2024', 0)", "242");
        row("zel_date('2024-02-30', 0)", "242");
        row("zel_date('2024-0-0', 0)", "242");
        row("zel_date('1752-12-31', 0)", "242");
        row("zel_date('2024-03-05 25:00', 0)", "242");
        row("zel_date(0, 0)", "'1900-01-01'");
        row("zel_date(45354.5, 0)", "'2024-03-05 12:00:00.000'");
        row("zel_date(1e9, 0)", "8115");
        row("zel_day('1752-12-31', 0)", "'1752-12-31'");
        row("zel_day('2024-03-05 10:20', 0)", "'2024-03-05'");
        row("zel_day('10:20', 0)", "241");
        row("zel_day('', 0)", "241");
        const auto shown = [&](int style, const char *text, const char *ofDate) {
            for (const int dateOnly : {0, 1}) {
                const QString call = QStringLiteral("zel_datetext('2024-03-05 15:04:06.007', %1, %2)");
                zel::test::row(qPrintable(call.arg(style).arg(dateOnly)), call.arg(style).arg(dateOnly),
                               QString::fromLatin1(dateOnly == 0 ? text : ofDate));
            }
        };
        shown(-1, "'Mar  5 2024  3:04PM'", "'2024-03-05'");
        shown(0, "'Mar  5 2024  3:04PM'", "'Mar  5 2024'");
        shown(1, "'03/05/24'", "'03/05/24'");
        shown(4, "'05.03.24'", "'05.03.24'");
        shown(7, "'Mar 05, 24'", "'Mar 05, 24'");
        shown(8, "'15:04:06'", "281");
        shown(9, "'Mar  5 2024  3:04:06:007PM'", "'Mar  5 2024'");
        shown(12, "'240305'", "'240305'");
        shown(14, "'15:04:06:007'", "281");
        shown(15, "281", "281");
        shown(21, "'2024-03-05 15:04:06.007'", "'2024-03-05'");
        shown(100, "'Mar  5 2024  3:04PM'", "'Mar  5 2024'");
        shown(103, "'05/03/2024'", "'05/03/2024'");
        shown(106, "'05 Mar 2024'", "'05 Mar 2024'");
        shown(112, "'20240305'", "'20240305'");
        shown(113, "'05 Mar 2024 15:04:06:007'", "'05 Mar 2024'");
        shown(120, "'2024-03-05 15:04:06'", "'2024-03-05'");
        shown(126, "'2024-03-05T15:04:06.007'", "'2024-03-05'");
        row("zel_datetext('2024-03-05', 126, 0)", "'2024-03-05T00:00:00'");
        row("zel_datetext('2024-03-05', -1, 0)", "'Mar  5 2024 12:00AM'");

        // aggregates
        row("zel_sum2(x) from (select 0.1 as x union all select 0.2 union all select null)", "0.3");
        row("zel_sum2(x) from (select 1 as x where 0)", "NULL");
        row("zel_sum2(x) from (select null as x)", "NULL");
        row("zel_sum2(distinct x) from (select 0.1 as x union all select 0.1 union all select 0.2)", "0.3");
        row("zel_sum2(x) from (select 90000000000000000 as x union all select 90000000000000000 union all"
            " select -90000000000000000 union all select 0.25 union all select -90000000000000000)",
            "0.25");
        row("zel_sum2(x) from (select 9e14 as x union all select 0.25 union all select -9e14)", "0.25");
        row("zel_sum8(x) from (select 123456789012 as x union all select 1e-8 union all select "
            "-123456789012)",
            "1.0e-08");
        row("zel_sum2(x) from (select 9.0e35 as x union all select 9.0e35)", "8115");
        row("zel_sum2(x) from (select 9e14 as x union all select 9e14)", "8115");
        row("zel_sum2(x) from (select 99999999999999 as x union all select 0.01)", "8115");
        row("zel_sum38(x) from (select 1 as x union all select 1)", "8115");
        row("zel_sum20(x) from (select 1 as x union all select 0.5)", "1.5");
        const QByteArray amounts =
            " from (select 1 as x, 0.1 as y, null as z union all select 2, 9.0e35, null)";
        row("zel_sum_at(zel_sums2(x, y, z), 0)" + amounts, "3");
        row("zel_sum_at(zel_sums2(x, z), 1)" + amounts, "NULL");
        row("zel_sum_at(zel_sums2(x, y), 0)" + amounts + " where 0", "NULL");
        row("zel_sum_at(zel_sums2(x, y, z), 1)" + amounts, "8115");
        row("zel_sum_at(zel_sums2(x, y, y), 2)" + amounts + " where x < 2", "0.1");
        row("zel_one(x) from (select 'a' as x)", "'a'");
        row("zel_one(x) from (select 'a' as x where 0)", "NULL");
        row("zel_one(x) from (select null as x union all select null)", "512");
    }

    void answers() {
        QFETCH(QString, expression);
        QFETCH(QString, expected);
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
            QStringLiteral("4115226188477.33"));
    }

    void nowStandsStillWithinAStatement() {
        const Database db = opened();
        QCOMPARE(answer(db.get(),
                        "with recursive n(i) as (select 1 union all select i + 1 from n where i < 200000) "
                        "select count(distinct zel_now()) from n"),
                 QStringLiteral("1"));
        QCOMPARE(
            answer(db.get(),
                   "select zel_date(zel_now(), 0) between datetime('now', 'localtime', '-5 seconds') and "
                   "datetime('now', 'localtime', '+5 seconds')"),
            QStringLiteral("1"));
    }
};

QTEST_APPLESS_MAIN(tst_sqlite_functions)
#include "tst_sqlite_functions.moc"
