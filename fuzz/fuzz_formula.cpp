// Formulas of reports, with foreign pieces between backquotes: evaluated on a row, and as a selection.

#include "fuzzing.h"

#include "platform/report/definition/statement_writer.h"
#include "platform/report/formula/evaluate.h"
#include "platform/report/formula/lexer.h"
#include "platform/tsql/reading/guard.h"

using namespace zel;
using namespace zel::report;

namespace {

class RowScene final : public Scene {
public:
    [[nodiscard]] Value column(int, int column) const override {
        static const std::vector<Value> values{Decimal::fromTenThousandths(125'000), Value(), "Office ", "",
                                               QDate(2024, 3, 9)};
        return values.at(std::size_t(column) % values.size());
    }
    [[nodiscard]] Value formula(int) const override { return {}; }
    [[nodiscard]] Value total(int) const override { return 7; }
    [[nodiscard]] Value parameter(int) const override { return 42; }
    [[nodiscard]] Value fromSubreport(const QString &, const QString &) const override { return {}; }
    [[nodiscard]] bool continued() const override { return true; }
    [[nodiscard]] std::int64_t rowNumber() const override { return 3; }
    [[nodiscard]] int pageNumber() const override { return 2; }
    [[nodiscard]] int pageCount() const override { return 9; }
    [[nodiscard]] QDateTime printTime() const override { return {QDate(2024, 3, 14), QTime(9, 5)}; }
    [[nodiscard]] QString userName() const override { return QStringLiteral("AMINA"); }
};

std::string shape(const Sql &formula) {
    std::string kinds;
    for (const Token &token : tokens(formula))
        kinds += char('a' + int(token.kind));
    return kinds;
}

const Definition &definition() {
    static const auto read =
        readDefinition("<report name='r'><table name='R'>N number, Z number, T text, E text, D date</table>"
                       "<table name='Company'>Name text, comActive text</table><parameter name='P'/>"
                       "<formula name='F'>{R.N} - 10</formula><detail><field>{R.T}</field></detail></report>",
                       QStringLiteral("r.rpt"));
    return *read;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const Sql text = fuzz::withPieces(fuzz::textOf(data, size));
    std::shared_ptr<Expression> parsed;
    if (!fuzz::accepted([&] { parsed = parse(text); }))
        return 0;
    if (!text.pieces().empty()) {
        const Sql harmless = fuzz::withHarmlessPieces(text);
        if (!fuzz::accepted([&] { (void)tokens(harmless); }) || shape(text) != shape(harmless))
            fuzz::broken("a foreign piece adds nothing to a formula", text.text());
    }
    Definition scope = definition();
    ExpressionPtr bound;
    if (!fuzz::accepted([&] { bound = report::bind(parsed, scope); }))
        return 0;
    (void)fuzz::accepted([&] { (void)evaluate(*bound, RowScene()); });
    Sql statement;
    const Parameters parameters{17};
    if (fuzz::accepted([&] {
            statement = "select 1 from R where "_sql + StatementWriter(scope, parameters).condition(*bound);
        }) &&
        !fuzz::accepted([&] { tsql::checkPieces(statement); }))
        fuzz::broken("what a selection says passes the guard of statements", statement.text());
    return 0;
}
