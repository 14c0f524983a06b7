#include "written_catalog.h"

#include "tests/support/facts.h"
#include <QTest>

using namespace zel::test;

using zel::secret;
using zel::Sql;
using zel::operator""_sql;

namespace {

constexpr const char *Facts = "platform/tsql/refusals.json";

} // namespace

/// What is refused before any engine sees it: the server's number, and the place.

class tst_refusals : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// A ^ in the statement marks the place that the refusal must name.
    void refused_data() { rowsFrom<QString, int>(Facts); }

    void refused() {
        auto [statement, number] = fetched<QString, int>();
        const auto place = statement.indexOf(u'^');
        const QString before = statement.first(place);
        statement.remove(place, 1);
        QString description;
        QCOMPARE(m_catalog.refusal(Sql::trusted(statement.toStdString()), &description), number);
        const QString named = QStringLiteral("\nLine %1, column %2:\n")
                                  .arg(before.count(u'\n') + 1)
                                  .arg(place - before.lastIndexOf(u'\n'));
        QVERIFY2(description.contains(named), qPrintable(description));
    }

    /// Of a long line the part around the place is shown, the caret below its first letter.
    void longLines() {
        const Sql filling = "and AcName <> '"_sql + QString(200, QChar(0xD1)) + "' ";
        QString description;
        QCOMPARE(m_catalog.refusal("select * from Accounts where 1 = 1 "_sql + filling + "and nowhere = 1 " +
                                       filling,
                                   &description),
                 207);
        const QStringList lines = description.split(u'\n');
        const QString &shown = lines.at(lines.size() - 2);
        QCOMPARE(shown.mid(lines.last().indexOf(u'^'), 8), "nowhere ");
        QVERIFY2(shown.size() <= 80, qPrintable(shown));
    }

    /// A failure in a procedure names the place in the procedure's own text.
    void inProcedures() {
        QString description;
        QCOMPARE(m_catalog.refusal("exec Wrong"_sql, &description), 207);
        QVERIFY2(description.contains("Line 3, column 8:\nSELECT nowhere"), qPrintable(description));
        QCOMPARE(m_catalog.refusal("exec Endless"_sql), 217);
    }

    void caret() {
        QString description;
        QCOMPARE(m_catalog.refusal("select 1\nselect 'Ñandú', nosuch from Accounts"_sql, &description), 207);
        QCOMPARE(description, "Invalid column name 'nosuch'.\n"
                              "Line 2, column 17:\n"
                              "select 'Ñandú', nosuch from Accounts\n"
                              "                ^");
    }

    /// What stands between braces is a secret piece. Of the procedures that keep logins all arguments are,
    /// whoever wrote them.
    void secrets_data() { rowsFrom<QString, QString>(Facts); }

    void secrets() {
        const auto [statement, description] = fetched<QString, QString>();
        Sql text = Sql::trusted(statement.section(u'{', 0, 0).toStdString());
        if (statement.contains(u'{')) {
            text += secret(statement.section(u'{', 1).section(u'}', 0, 0));
            text += Sql::trusted(statement.section(u'}', 1).toStdString());
        }
        QString told;
        QVERIFY(m_catalog.refusal(text, &told) != 0);
        QCOMPARE(told, description);
    }

    void deepExpressions() {
        const std::string nested = "select " + std::string(50'000, '(') + '1' + std::string(50'000, ')');
        QCOMPARE(m_catalog.refusal(Sql::trusted(nested)), 191);
        std::string blocks = "create procedure P as ";
        std::string choices;
        for (int i = 0; i < 50'000; ++i) {
            blocks += "begin ";
            choices += "if 1=1 ";
        }
        QCOMPARE(m_catalog.refusal(Sql::trusted(blocks)), 191);
        QCOMPARE(m_catalog.refusal(Sql::trusted(choices)), 191);
    }

private:
    WrittenCatalog m_catalog{"platform/tsql/refusals.sql"};
};

QTEST_APPLESS_MAIN(tst_refusals)
#include "tst_refusals.moc"
