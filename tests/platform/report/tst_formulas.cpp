#include "platform/base/error.h"
#include "platform/report/definition/definition.h"
#include "platform/report/formula/amount_in_words.h"
#include "platform/report/formula/evaluate.h"

#include "tests/support/rows.h"
#include <QTest>

using zel::test::row;

using namespace zel;
using namespace zel::report;

namespace {

/// A row: N 12.5, Z Null, W 7, T "Office ", E "", D 2024-03-09.
class RowScene final : public Scene {
public:
    [[nodiscard]] Value column(int, int column) const override {
        static const std::vector<Value> values{
            Decimal::fromTenThousandths(125'000), Value(), 7, "Office ", "", QDate(2024, 3, 9)};
        return values[std::size_t(column)];
    }
    [[nodiscard]] Value formula(int) const override { return {}; }
    [[nodiscard]] Value total(int) const override { return {}; }
    [[nodiscard]] Value parameter(int) const override { return 42; }
    [[nodiscard]] Value fromSubreport(const QString &, const QString &) const override { return {}; }
    [[nodiscard]] std::int64_t rowNumber() const override { return 3; }
    [[nodiscard]] int pageNumber() const override { return 2; }
    [[nodiscard]] int pageCount() const override { return 9; }
    [[nodiscard]] QDateTime printTime() const override { return {QDate(2024, 3, 14), QTime(9, 5)}; }
    [[nodiscard]] bool continued() const override { return false; }
    [[nodiscard]] QString userName() const override { return "AMINA"; }
};

QString valueOf(const QString &formula) {
    const auto definition =
        readDefinition("<report name='r'><table name='R'>N number, Z number, W number, T text, E text, "
                       "D date</table><parameter name='P'/></report>",
                       "r.rpt");
    const ExpressionPtr bound = report::bind(parse(Sql::trusted(formula.toStdString())), *definition);
    const Value value = evaluate(*bound, RowScene());
    return value.isNull() ? "NULL" : value.text();
}

} // namespace

class tst_formulas : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void evaluates_data() {
        QTest::addColumn<QString>("value");
        const auto row = [](const char *formula, const char *value) {
            zel::test::row(formula, QString(value));
        };
        row("1 + 2 * 3", "7");
        row("(1 + 2) * 3", "9");
        row("10 - 4 - 3", "3");
        row("-2 * -3", "6");
        row("0.1 + 0.2", "0.3");
        row("1.005 * 100", "100.5");
        row("0.00005 * 1", "0.0001");
        row("10 / 4", "2.5");
        row("1 / 3", "0.3333");
        row("2 / 3", "0.6667");
        row("-2 / 3", "-0.6667");
        row("1 / 0", "NULL");
        row("99999999.99 * 1000.5", "100049999989.995");
        row("{R.N} + {R.Z}", "12.5");
        row("{R.Z}", "NULL");
        row("{ r.n }", "12.5");
        row("{P} + {R.W}", "49");
        row("'a' & 1.50 & 'b'", "a1.5b");
        row("'a' + 'b'", "ab");
        row("'it''s' & \"\"\"quoted\"\"\"", "it's\"quoted\"");
        row("\"From :  01/02/2024  To :  03/04/2024\"", "From :  01/02/2024  To :  03/04/2024");
        row("{R.T} & {R.Z} & '!'", "Office !");
        row("if 1 < 2 then 'yes' else 'no'", "yes");
        row("if {R.Z} > 0 then 'yes' else 'no'", "no");
        row("if not ({R.Z} > 0) then 'yes' else 'no'", "no");
        row("if 1 = 1 then 5", "5");
        row("if 1 = 2 then 5", "NULL");
        row("if 1 = 2 then 'a' else if 2 = 2 then 'b' else 'c'", "b");
        row("{R.T} = 'OFFICE'", "1");
        row("{R.T} <> 'office'", "0");
        row("'abc' like 'A*C'", "1");
        row("'abc' like 'a?d'", "0");
        row("'a*c' like '*'", "1");
        row("'aXbXc' like '*X?'", "1");
        row("'' like '?*'", "0");
        row("{R.D} in #2024-03-01# to #2024-03-09#", "1");
        row("{R.D} in #2024-03-10# to #2024-03-31#", "0");
        row("{R.W} in 7 to 7", "1");
        row("1 = 1 or {R.Z} = 1", "1");
        row("1 = 2 and {R.Z} = 1", "0");
        row("1 = 1 and {R.Z} = 1", "NULL");
        row("IsNull({R.Z})", "1");
        row("IsBlank({R.E}) and not IsBlank({R.T})", "1");
        row("ToText(1234567.895, '##,###0.00')", "1,234,567.90");
        row("ToText({R.Z}, '##,###0.00')", "");
        row("ToText({R.D}, 'dd-MM-yyyy')", "09-03-2024");
        row("ToText({R.D})", "09/03/2024");
        row("Upper('straße') & Trim('  x ')", "STRASSEx");
        row("Left('abcdef', 3)", "abc");
        row("ToNumber('12.50 and more')", "12.5");
        row("Round(2.345, 2) & ' ' & Abs(-3)", "2.35 3");
        row("Year({R.D}) & Month({R.D}) & Day({R.D})", "202439");
        row("'Page ' & PageNumber & ' of ' & PageCount", "Page 2 of 9");
        row("UserName & ToText(PrintDate, 'yyyyMMdd') & PrintTime & RowNumber", "AMINA2024031409:053");
    }

    void evaluates() {
        QFETCH(QString, value);
        QCOMPARE(valueOf(QString::fromUtf8(QTest::currentDataTag())), value);
    }

    void overflowIsAnError() {
        for (const char *formula :
             {"900000000000000 * 2", "900000000000000 + 900000000000000", "900000000000000 / 0.1"}) {
            try {
                valueOf(formula);
                QFAIL(formula);
            } catch (const Error &error) {
                QCOMPARE(error.number(), 8115);
            }
        }
    }

    void words_data() {
        QTest::addColumn<QString>("thousands");
        QTest::addColumn<QString>("lakhs"); // '' for the same
        const auto row = [](const char *amount, const char *thousands, const char *lakhs = "") {
            zel::test::row(amount, QString(thousands), QString(lakhs));
        };
        row("0", "Zero Only");
        row("0.05", "Zero and 05/100 Only");
        row("7", "Seven Only");
        row("13", "Thirteen Only");
        row("20", "Twenty Only");
        row("99", "Ninety Nine Only");
        row("100", "One Hundred Only");
        row("110.5", "One Hundred Ten and 50/100 Only");
        row("999.999", "One Thousand Only");
        row("0.995", "One Only");
        row("1001", "One Thousand One Only");
        row("54019", "Fifty Four Thousand Nineteen Only");
        row("100000", "One Hundred Thousand Only", "One Lakh Only");
        row("1234567.89",
            "One Million Two Hundred Thirty Four Thousand Five Hundred Sixty Seven and 89/100 Only",
            "Twelve Lakh Thirty Four Thousand Five Hundred Sixty Seven and 89/100 Only");
        row("10000000", "Ten Million Only", "One Crore Only");
        row("1200300004000", "One Trillion Two Hundred Billion Three Hundred Million Four Thousand Only",
            "One Lakh Twenty Thousand Thirty Crore Four Thousand Only");
        row("-15.1", "Minus Fifteen and 10/100 Only");
        row("922337203685477.5807",
            "Nine Hundred Twenty Two Trillion Three Hundred Thirty Seven Billion Two Hundred Three "
            "Million Six Hundred Eighty Five Thousand Four Hundred Seventy Seven and 58/100 Only",
            "Nine Crore Twenty Two Lakh Thirty Three Thousand Seven Hundred Twenty Crore Thirty Six Lakh "
            "Eighty "
            "Five "
            "Thousand Four Hundred Seventy Seven and 58/100 Only");
    }

    void words() {
        QFETCH(QString, thousands);
        QFETCH(QString, lakhs);
        const Decimal amount = Decimal::parse(QTest::currentDataTag()).value();
        QCOMPARE(amountInWords(amount, WordScale::Thousands), thousands);
        QCOMPARE(amountInWords(amount, WordScale::Lakhs), lakhs.isEmpty() ? thousands : lakhs);
    }
};

QTEST_APPLESS_MAIN(tst_formulas)
#include "tst_formulas.moc"
