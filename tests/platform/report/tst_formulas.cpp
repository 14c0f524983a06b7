#include "platform/base/error.h"
#include "platform/report/definition/definition.h"
#include "platform/report/formula/amount_in_words.h"
#include "platform/report/formula/evaluate.h"

#include "tests/support/facts.h"
#include <QTest>

using namespace zel;
using namespace zel::report;
using namespace zel::test;

namespace {

constexpr const char *Facts = "platform/report/formulas.json";

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
    void evaluates_data() { rowsFrom<QString, QString>(Facts); }

    void evaluates() {
        QFETCH(QString, formula);
        QTEST(valueOf(formula), "value");
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

    /// Where the lakhs are left out they are told as the thousands.
    void words_data() { rowsFrom<QString, QString>(Facts); }

    void words() {
        const auto [thousands, lakhs] = fetched<QString, QString>();
        const Decimal amount = Decimal::parse(QTest::currentDataTag()).value();
        QCOMPARE(amountInWords(amount, WordScale::Thousands), thousands);
        QCOMPARE(amountInWords(amount, WordScale::Lakhs), lakhs.isEmpty() ? thousands : lakhs);
    }
};

QTEST_APPLESS_MAIN(tst_formulas)
#include "tst_formulas.moc"
