#include "platform/base/error.h"
#include "platform/base/number_text.h"
#include "platform/base/sql.h"
#include "platform/base/value.h"

#include "tests/support/rows.h"
#include <QTest>

using zel::test::columns;
using zel::test::row;

using namespace zel;

class tst_numbers : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void parses_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("plain"); // "-" for refused
        const auto row = [](const char *name, const char *text, const char *plain) {
            zel::test::row(name, text, plain);
        };
        row("whole", "1250", "1250");
        row("blanks and sign", "  -12.50 ", "-12.5");
        row("point first", ".5", "0.5");
        row("point last", "5.", "5");
        row("fifth decimal rounds up", "1.00005", "1.0001");
        row("sixth decimal does not", "1.000049", "1");
        row("negative rounds away", "-1.00005", "-1.0001");
        row("minus nothing", "-0.00", "0");
        row("point alone", ".", "-");
        row("empty", "", "-");
        row("two points", "1.2.3", "-");
        row("comma", "1,234", "-");
        row("exponent", "1e3", "-");
    }

    void parses() {
        QFETCH(QString, text);
        QFETCH(QString, plain);
        const auto parsed = Decimal::parse(text.toStdString());
        QCOMPARE(parsed ? QString::fromStdString(parsed->toString()) : QStringLiteral("-"), plain);
    }

    void formats_data() {
        columns<QString, QString, QString>("number", "picture", "shown");
        const QString grouped = QStringLiteral("##,###0.00");
        const QString plain = QStringLiteral("###0.00");
        zel::test::row("zero", "0", grouped, "0.00");
        zel::test::row("three digits", "999.5", grouped, "999.50");
        zel::test::row("four digits", "1234.5", grouped, "1,234.50");
        zel::test::row("ten digits", "1234567890.99", grouped, "1,234,567,890.99");
        zel::test::row("negative", "-1234.5", grouped, "-1,234.50");
        zel::test::row("half away from zero", "1.005", plain, "1.01");
        zel::test::row("half away, negative", "-1.005", plain, "-1.01");
        zel::test::row("carries", "999.995", grouped, "1,000.00");
        zel::test::row("rounds to nothing", "-0.001", plain, "0.00");
        zel::test::row("year", "24", "0000", "0024");
    }

    void formats() {
        QFETCH(QString, number);
        QFETCH(QString, picture);
        QFETCH(QString, shown);
        QCOMPARE(format(*Decimal::parse(number.toStdString()), picture), shown);
    }

    void leadingNumbers_data() {
        columns<QString, QString>("text", "plain");
        const auto row = [](const char *name, const char *text, const char *plain) {
            zel::test::row(name, text, plain);
        };
        row("empty", "", "0");
        row("point", ".", "0");
        row("then letters", "12.5AB", "12.5");
        row("grouping ends it", "1,234.50", "1");
        row("second point ends it", "1.2.3", "1.2");
        row("letters first", "A1", "0");
        row("sign", " -3", "-3");
    }

    void leadingNumbers() {
        QFETCH(QString, text);
        QFETCH(QString, plain);
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
