#include "platform/base/error.h"
#include "platform/base/number_text.h"
#include "platform/base/sql.h"
#include "platform/base/value.h"

#include "tests/support/facts.h"
#include <QTest>

using namespace zel::test;

namespace {
constexpr const char *Facts = "platform/base/numbers.json";
}

using namespace zel;

class tst_numbers : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// A number as it is kept; "-" where it is refused.
    void parses_data() { rowsFrom<QString, QString>(Facts); }

    void parses() {
        const auto [text, plain] = fetched<QString, QString>();
        const auto parsed = Decimal::parse(text.toStdString());
        QCOMPARE(parsed ? QString::fromStdString(parsed->toString()) : QStringLiteral("-"), plain);
    }

    void formats_data() { rowsFrom<QString, QString, QString>(Facts); }

    void formats() {
        const auto [number, picture, shown] = fetched<QString, QString, QString>();
        QCOMPARE(format(*Decimal::parse(number.toStdString()), picture), shown);
    }

    void leadingNumbers_data() { rowsFrom<QString, QString>(Facts); }

    void leadingNumbers() {
        const auto [text, plain] = fetched<QString, QString>();
        QCOMPARE(Value(text).decimal(), *Decimal::parse(plain.toStdString()));
    }

    void overflowIsAnError() {
        QVERIFY_EXCEPTION_THROWN(Decimal::parse("922337203685478"), Error);
        QVERIFY_EXCEPTION_THROWN((void)(Decimal::fromInteger(922337203685477) + Decimal::fromInteger(1)),
                                 Error);
        QVERIFY_EXCEPTION_THROWN(Decimal::fromDouble(1e300), Error);
        QCOMPARE(Decimal::fromDouble(1.005).toString(), std::string("1.005"));
        QCOMPARE(Decimal::fromDouble(-0.00005).toString(), std::string("-0.0001"));
        QCOMPARE(Decimal::fromDouble(123456789.99995).toString(), std::string("123456790"));
        QCOMPARE(Decimal::fromDouble(-99999999999.9999).toString(), std::string("-99999999999.9999"));
    }

    void sqlRemembersForeignPieces() {
        const Sql sql = "a '"_sql + QStringLiteral("x'") + "' and " + 12 + "";
        QCOMPARE(sql.text(), std::string_view("a 'x'' and 12"));
        QCOMPARE(sql.pieces().size(), std::size_t(2));
        QCOMPARE(sql.pieces()[0].begin, std::size_t(3));
        QCOMPARE(sql.pieces()[0].end, std::size_t(5));
        QCOMPARE(sql.pieces()[1].begin, std::size_t(11));
    }
};

QTEST_APPLESS_MAIN(tst_numbers)
#include "tst_numbers.moc"
