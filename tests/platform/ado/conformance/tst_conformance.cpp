#include "sample_catalog.h"

#include "tests/support/rows.h"
#include <QJsonObject>
#include <QTest>

#include <map>

using namespace zel::test;

using zel::Sql;

namespace {

QString compared(const Answer &answer, const QJsonObject &fact) {
    const QJsonArray measuredNames = fact[u"columns"].toArray();
    if (measuredNames.size() != answer.rows->columnCount())
        return QString::number(answer.rows->columnCount()) + " columns";
    for (int column = 0; column < answer.rows->columnCount(); ++column) {
        // An expression without a name has none on the server, though the measurements name it.
        const QString name = answer.rows->columnName(column);
        const QString measured = measuredNames[column].toString();
        if (!name.isEmpty() && name.compare(measured, Qt::CaseInsensitive) != 0)
            return "a column " + name + " instead of " + measured;
    }
    QStringList rows = lines(*answer.rows);
    QStringList measured = lines(fact[u"rows"].toArray(), *answer.rows);
    if (fact[u"any_order"].toBool()) {
        rows.sort();
        measured.sort();
    }
    return rows == measured ? QString()
                            : "rows\n" + rows.join(u'\n') + "\ninstead of\n" + measured.join(u'\n');
}

} // namespace

/// Statements of the dialect and what a server answers to each of them: whether it is accepted, its rows, and
/// what the tables hold afterwards. Each starts from the same rows.
class tst_conformance : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { m_catalog = std::make_unique<SampleCatalog>(); }
    void statements_data() { cases("statements.json"); }
    void statements() { compare(); }
    void conversions_data() { cases("conversions.json"); }
    void conversions() { compare(); }
    void further_data() { cases("further.json"); }
    void further() { compare(); }

    /// Chains of any length run; what is nested more deeply than the engine takes is refused at its place.
    void bounds_data() {
        QTest::addColumn<QJsonObject>("fact");
        const auto row = [](const char *name, const QString &statement, int x, int error) {
            QJsonObject fact{{"statement", statement}, {"ok", error == 0}};
            if (error == 0) {
                fact.insert("columns", QJsonArray{"x"});
                fact.insert("rows", QJsonArray{QJsonArray{x}});
            } else {
                fact.insert("error", error);
                fact.insert("caret", error == 191);
            }
            zel::test::row(name, fact);
        };
        const auto times = [](int count, const char *part) {
            return QString::fromLatin1(part).repeated(count);
        };
        const QString chosen = "select RowID as x from Accounts where RowID=3";
        row("summands", "select x=RowID" + times(800, "+1") + " from Accounts where RowID=3", 803, 0);
        row("differences of decimals",
            "select x=OpenBal" + times(700, "-0.25") + times(700, "+0.25") + "-249900 " +
                "from Accounts where RowID=4",
            100, 0);
        row("summands with an overflow on the way", "select x=2147483647" + times(10, "+1-1"), 0, 8115);
        row("texts", "select x=len(''" + times(800, "+'ab'") + ")", 1600, 0);
        row("ands", chosen + times(800, " and AcStatus='DD'"), 3, 0);
        row("ors", chosen + times(1600, " or RowID=0"), 3, 0);
        row("ors of ands", chosen + times(5000, " or RowID=0 and Dcode=1"), 3, 0);
        row("a union", "select x=1" + times(499, " union select 1"), 1, 0);
        row("parentheses", "select x=" + times(80, "(") + '1' + times(80, ")"), 1, 0);
        row("nested calls", "select x=" + times(60, "ltrim(") + "'a'" + times(60, ")"), 0, 191);
        row("nested sums", "select x=" + times(60, "(1+") + '1' + times(60, ")"), 0, 191);
        row("nested selects", "select x=" + times(40, "(select ") + '1' + times(40, ")"), 0, 191);
        row("nested tables", "select * from " + times(40, "(select * from ") + "Accounts" + times(40, ") a"),
            0, 191);
        row("nested choices", "select x=" + times(40, "case when 1=1 then ") + '1' + times(40, " end"), 0,
            191);
        row("nested calls in a change",
            "update Accounts set AcName=" + times(60, "ltrim(") + "'a'" + times(60, ")"), 0, 191);
        row("a product", "select x=1" + times(2000, "*1"), 0, 191);
        row("a longer union", "select x=1" + times(500, " union select 1"), 0, 8623);
    }
    void bounds() { compare(); }

    /// Every case that is left out is there, with a reason; how many there are is printed.
    void leftOut() {
        QStringList names;
        QStringList agreeing;
        for (const char *file : {"statements.json", "conversions.json", "further.json"}) {
            for (const QJsonValue &fact : facts(file)) {
                names += fact[u"name"].toString();
                if (!m_reasons.contains(names.last()))
                    continue;
                m_catalog->begin();
                if (disagreement(fact.toObject()).isEmpty())
                    agreeing += names.last();
                m_catalog->undo();
            }
        }
        for (const QJsonValue &left : facts("left_out.json")) {
            QVERIFY(!left[u"reason"].toString().isEmpty());
            const QJsonArray cases = left[u"cases"].toArray();
            for (const QJsonValue &name : cases)
                QVERIFY2(names.contains(name.toString()), qPrintable(name.toString()));
            qInfo("left out %3d: %s", int(cases.size()), qPrintable(left[u"reason"].toString()));
        }
        qInfo("of these, agreeing all the same: %d", int(agreeing.size()));
    }

    void cleanupTestCase() {
        for (const auto &[file, count] : m_compared)
            qInfo("compared %3d: %s", count, qPrintable(file));
    }

private:
    void cases(const char *file) {
        QTest::addColumn<QJsonObject>("fact");
        m_reasons.clear();
        for (const QJsonValue &left : facts("left_out.json")) {
            for (const QJsonValue &name : left[u"cases"].toArray())
                m_reasons[name.toString()] = left[u"reason"].toString();
        }
        for (const QJsonValue &fact : facts(file)) {
            if (!m_reasons.contains(fact[u"name"].toString()))
                row(fact[u"name"].toString().toUtf8(), fact.toObject());
        }
    }

    void compare() {
        QFETCH(QJsonObject, fact);
        ++m_compared[QString::fromLatin1(QTest::currentTestFunction())];
        m_catalog->begin();
        const QString difference = disagreement(fact);
        m_catalog->undo();
        if (!difference.isEmpty())
            QFAIL(qPrintable(fact[u"statement"].toString() + '\n' + difference));
    }

    [[nodiscard]] QString disagreement(const QJsonObject &fact) {
        const Answer answer = m_catalog->run(Sql::trusted(fact[u"statement"].toString().toStdString()));
        const QString failure =
            answer.ok() ? QString() : QString::number(*answer.error) + ' ' + answer.description;
        if (answer.ok() != fact[u"ok"].toBool())
            return answer.ok() ? QStringLiteral("accepted") : "refused: " + failure;
        if (fact.contains(u"error") && answer.error != fact[u"error"].toInt())
            return "refused by another number: " + failure;
        if (fact[u"caret"].toBool() && !answer.description.endsWith(u'^'))
            return "refused at no place: " + failure;
        if (fact.contains(u"rows")) {
            if (!answer.rows)
                return QStringLiteral("no rows at all");
            if (const QString difference = compared(answer, fact); !difference.isEmpty())
                return difference;
        }
        for (const QJsonValue &after : fact[u"after"].toArray()) {
            const Answer state = m_catalog->run(Sql::trusted(after[u"statement"].toString().toStdString()));
            if (!state.rows)
                return "then: " + after[u"statement"].toString() + ": " + state.description;
            if (const QString difference = compared(state, after.toObject()); !difference.isEmpty())
                return "then: " + after[u"statement"].toString() + ": " + difference;
        }
        return {};
    }

    std::unique_ptr<SampleCatalog> m_catalog;
    std::map<QString, int> m_compared;
    std::map<QString, QString> m_reasons; ///< by name of the case
};

QTEST_GUILESS_MAIN(tst_conformance)
#include "tst_conformance.moc"
