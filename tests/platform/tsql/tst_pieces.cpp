#include "platform/base/error.h"
#include "platform/tsql/reading/guard.h"

#include "tests/support/facts.h"
#include <QTest>

using namespace zel::test;

using zel::Sql;
using zel::operator""_sql;

namespace {

enum Kind { Text, Number, Password };

/// Where a screen puts what somebody typed.
const struct {
    Kind kind;
    Sql before;
    Sql behind;
} Places[] = {
    {Text, "Select * From Accounts Where AcName = '"_sql, "' and AcStatus = 'DD'"_sql},
    {Text, "Select * From Accounts Where AcName Like '%"_sql, "%' order by AcName"_sql},
    {Text, "update T set a='"_sql, "', b='' where c=''"_sql},
    {Number, "Select * From MasJV Where VouNo = "_sql, " And VouStatus = 'BP' "_sql},
    {Number, "Delete Accounts where rowid = "_sql, ""_sql},
    {Number, "exec CreatStuWiseDet "_sql, ",0,0 "_sql},
    {Password, "sp_password "_sql, ",'NEW','NAME'"_sql},
};

int refusal(const Sql &text) {
    try {
        zel::tsql::checkPieces(text);
    } catch (const zel::Error &error) {
        return error.number();
    }
    return 0;
}

} // namespace

/// The text guard by itself, as it stands before every engine.

class tst_pieces : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// Typed text, and what it is refused with: within a text, in a number's place, as the bare password.
    /// -1: by any number.
    void pieces_data() { rowsFrom<QString, int, int, int, int>("platform/tsql/pieces.json"); }

    void pieces() {
        const auto [typed, inText, asNumber, asPassword, times] = fetched<QString, int, int, int, int>();
        for (const auto &[kind, before, behind] : Places) {
            const Sql text = before + typed.repeated(std::max(times, 1)) + behind;
            const int expected = kind == Text ? inText : kind == Number ? asNumber : asPassword;
            const int refused = refusal(text);
            QVERIFY2(expected < 0 ? refused != 0 : refused == expected,
                     qPrintable(QString("%1 by %2").arg(refused).arg(QString::fromUtf8(before.text()))));
        }
    }

    void twoPieces_data() { rowsFrom<QString, QString, bool>("platform/tsql/pieces.json"); }

    /// Two texts in one statement: what one leaves open the other must not close.
    void twoPieces() {
        const auto [first, second, accepted] = fetched<QString, QString, bool>();
        const Sql text = "update T set a='"_sql + first + "' where b='" + second + "'";
        QCOMPARE(refusal(text) == 0, accepted);
        const Sql joined = "update T set a='"_sql + first + second + "'";
        QCOMPARE(refusal(joined) == 0, accepted);
    }

    /// A piece must not grow together with the program's own words.
    void between() {
        QCOMPARE(refusal("select VouNo"_sql + QString("1") + " from MasJV"), 102);
        QCOMPARE(refusal("select 5 -"_sql + QString("-5") + "\n from MasJV"), 102);
        QCOMPARE(refusal("select [a"_sql + QString("b") + "] from MasJV"), 102);
        QCOMPARE(refusal("select /* "_sql + QString("b") + " */ 1"), 102);
        QCOMPARE(refusal("select 1"_sql + QString("2") + "3"), 0);
        QCOMPARE(refusal("select "_sql + QString("a") + ",'sp_password'"), 207);
        QCOMPARE(refusal("sp_password A,"_sql + QString("NEW") + ",'NAME'"), 207);
        QCOMPARE(refusal("select sp_password "_sql + QString("AB") + ",'NAME'"), 207);
        QCOMPARE(refusal("select 1 from T where a = "_sql + std::int64_t(-5)), 0);
    }
};

QTEST_APPLESS_MAIN(tst_pieces)
#include "tst_pieces.moc"
