#include "written_catalog.h"

#include "tests/support/facts.h"
#include <QTest>

using namespace zel::test;

using zel::Sql;

/// The conversions that the front end writes must leave the engine its indexes.

class tst_index_use : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void plans_data() { rowsFrom<QString, QStringList>("platform/tsql/index_use.json"); }

    void plans() {
        const auto [statement, used] = fetched<QString, QStringList>();
        const QString plan = m_catalog.plan(Sql::trusted(statement.toStdString()));
        for (const QString &part : used)
            QVERIFY2(plan.contains(part), qPrintable(plan + "\nwithout " + part));
    }

private:
    WrittenCatalog m_catalog{"platform/tsql/index_use.sql"};
};

QTEST_APPLESS_MAIN(tst_index_use)
#include "tst_index_use.moc"
