#include "platform/base/error.h"
#include "platform/tsql/reading/guard.h"

#include "tests/support/rows.h"
#include <QTest>

using zel::test::columns;
using zel::test::fill;
using zel::test::row;

using zel::Sql;
using zel::operator""_sql;

namespace {

/// Where a screen puts what somebody typed.
struct Place {
    const char *name;
    Sql before;
    Sql behind;
};

const Place &place(int index) {
    static const Place places[] = {
        {"text", "Select * From Accounts Where AcName = '"_sql, "' and AcStatus = 'DD'"_sql},
        {"pattern", "Select * From Accounts Where AcName Like '%"_sql, "%' order by AcName"_sql},
        {"empty text follows", "update T set a='"_sql, "', b='' where c=''"_sql},
        {"number", "Select * From MasJV Where VouNo = "_sql, " And VouStatus = 'BP' "_sql},
        {"number at the end", "Delete Accounts where rowid = "_sql, ""_sql},
        {"number, tight", "exec CreatStuWiseDet "_sql, ",0,0 "_sql},
        {"password", "sp_password "_sql, ",'NEW','NAME'"_sql},
    };
    return places[index];
}
constexpr int Texts = 3;
constexpr int Numbers = 3;
constexpr int Password = Texts + Numbers;

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
    void pieces_data() {
        columns<int, QString, int>("where", "typed", "number");
        // Typed text, and what it is refused with: within a text, in a number's place, as the bare password.
        // -1: by any number.
        const auto row = [](const char *name, const QString &typed, int inText, int asNumber,
                            int asPassword) {
            for (int i = 0; i <= Password; ++i) {
                const int expected = i < Texts ? inText : i < Password ? asNumber : asPassword;
                fill(QTest::addRow("%s: %s", place(i).name, name), i, typed, expected);
            }
        };
        row("nothing", "", 0, -1, 102);
        row("blanks", "  ", 0, -1, 102);
        row("digits", "12", 0, 0, 0);
        row("blanks around digits", " 12 ", 0, 0, 0);
        row("negative", "-12", 0, 0, 0);
        row("sign apart", "+ 12", 0, 0, 0);
        row("point", "12.5", 0, 0, 0);
        row("point first", ".5", 0, 0, 0);
        row("two points", "1.2.3", 0, 102, 102);
        row("two signs", "--12", 0, -1, 102);
        row("sign only", "-", 0, 102, 102);
        row("exponent", "1e5", 0, 102, 102);
        row("word", "AppID", 0, 207, 0);
        row("word of letters beyond ASCII", QString::fromUtf8("ÑANDÚ"), 0, 207, 0);
        row("reserved word", "order", 0, 156, 156);
        row("null", "null", 0, 156, 156);
        row("two words", "AB CD", 0, 102, 102);
        row("digit-led word", "1AB", 0, 102, 102);
        row("dashed word", "A-B", 0, 102, 102);
        row("variable", "@@version", 0, 102, 102);
        row("call", "f()", 0, 102, 102);
        row("quoted name", "[AppID]", 0, 102, 102);
        row("whole text", "'x'", 102, 102, 102);
        row("alternative", "1 or 1=1", 0, 102, 102);
        row("second statement", "1; delete from Accounts", 0, 102, 102);
        row("second statement without a sign", "1 delete from Accounts", 0, 102, 102);
        row("comment", "1--", 0, 102, 102);
        row("comment alone", "--", 0, -1, 102);
        row("inner comment", "1/**/", 0, 102, 102);
        row("open comment", "/*", 0, 113, 113);
        row("closed apostrophe", "O''BRIEN", 0, 102, 102);
        row("apostrophe", "O'BRIEN", 105, 105, 105);
        row("apostrophe alone", "'", -1, -1, -1);
        row("two apostrophes", "''", 0, 102, 102);
        row("three apostrophes", "'''", -1, -1, -1);
        row("closed and commented", "'; delete from Accounts --", 102, 105, 105);
        row("closed and reopened", "' or ''='", 102, 102, 102);
        row("closed and reopened with a text", "' or 'a'='a", 102, -1, -1);
        row("list", "1,2", 0, 102, 102);
        row("line break", "1\n2", 0, 102, 102);
        row("long", QString(100'000, u'x'), 0, 207, 0);
        row("long digits", QString(100'000, u'7'), 0, 0, 0);
        row("long of apostrophes", QString(100'000, u'\''), 0, -1, -1);
    }

    void pieces() {
        QFETCH(int, where);
        QFETCH(QString, typed);
        QFETCH(int, number);
        const Place &here = place(where);
        const int refused = refusal(here.before + typed + here.behind);
        if (number < 0)
            QVERIFY2(refused != 0, "accepted");
        else
            QCOMPARE(refused, number);
    }

    void twoPieces_data() {
        columns<QString, QString, bool>("first", "second", "accepted");
        zel::test::row("plain", "a", "b", true);
        zel::test::row("both empty", "", "", true);
        zel::test::row("paired apostrophes", "''", "''''", true);
        zel::test::row("first takes the closing quote", "'", " or 1=1 --", false);
        zel::test::row("second takes the closing quote", "a", "'", false);
        zel::test::row("each one apostrophe", "'", "'", false);
        zel::test::row("backslash", "\\", " or 1=1 --", true);
    }

    /// Two texts in one statement: what one leaves open the other must not close.
    void twoPieces() {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(bool, accepted);
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
