#include "sample_catalog.h"

#include "tests/support/rows.h"
#include <QRegularExpression>
#include <QTest>

#include <random>

using namespace zel::test;

using zel::Sql;

/// Statements with one thing wrong: whatever is not refused by a number of the server's runs on the engine;
/// nothing that the front end has not understood ever reaches it.

namespace {

QStringList words(const QString &statement) {
    static const QRegularExpression word("'[^']*'|\\w+|\\s+|.");
    QStringList result;
    for (auto found = word.globalMatch(statement); found.hasNext();)
        result += found.next().captured();
    return result;
}

QString mutated(const QString &statement, std::mt19937 &random) {
    static const QStringList Foreign = {"'",    "''",  "(",   ")",     ",",  "select", "from", "where",
                                        "null", "1",   "-1",  "*",     "=",  "AppID",  "like", "'%'",
                                        "--",   "/*",  "[",   ";",     ".",  "@a",     "in",   "and",
                                        "not",  "'x'", "0.5", "order", "by", "exec"};
    QStringList all = words(statement);
    const auto any = [&random](qsizetype count) {
        return qsizetype(std::uniform_int_distribution<qsizetype>(0, count - 1)(random));
    };
    const qsizetype at = any(all.size());
    switch (any(6)) {
    case 0:
        all.removeAt(at);
        break;
    case 1:
        all.insert(at, all[any(all.size())]);
        break;
    case 2:
        all.swapItemsAt(at, any(all.size()));
        break;
    case 3:
        all[at] = Foreign[any(Foreign.size())];
        break;
    case 4:
        all.insert(at, Foreign[any(Foreign.size())]);
        break;
    default:
        all = all.mid(0, at);
        break;
    }
    return all.join(QString());
}

} // namespace

class tst_mutations : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void refusedOrRun_data() {
        QTest::addColumn<QString>("statement");
        for (const char *file : {"statements.json", "conversions.json", "further.json"}) {
            for (const QJsonValue &fact : facts(file)) {
                if (const QString statement = fact[u"statement"].toString();
                    !statement.isEmpty() && !statement.contains("sp_"))
                    row(fact[u"name"].toString().toUtf8(), statement);
            }
        }
    }

    void refusedOrRun() {
        static SampleCatalog catalog;
        constexpr int Times = 40;
        constexpr int EngineRefused = 50000;
        QFETCH(QString, statement);
        std::mt19937 random(20240305);
        for (int i = 0; i < Times; ++i) {
            const QString text = mutated(statement, random);
            catalog.begin();
            const Answer answer = catalog.run(Sql::trusted(text.toStdString()));
            catalog.undo();
            if (answer.error == EngineRefused || answer.error == 0)
                QFAIL(qPrintable(text + '\n' + answer.description));
        }
    }
};

QTEST_GUILESS_MAIN(tst_mutations)
#include "tst_mutations.moc"
