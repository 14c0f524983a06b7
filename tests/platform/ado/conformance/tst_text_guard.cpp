#include "sample_catalog.h"

#include "platform/base/error.h"
#include "platform/tsql/front_end.h"

#include "tests/support/facts.h"
#include <QRegularExpression>
#include <QTest>

#include <random>
#include <set>

using namespace zel::test;
using zel::Sql;

namespace {

/// A text that somebody types.
struct Hostile {
    QByteArray name;
    QString text;
    int inText;             ///< 0 where it is data between quotes, else the failure
    std::set<int> inNumber; ///< failures allowed in a number's place
    [[nodiscard]] QString data() const { return QString(text).replace("''", "'"); }
};

/// Where a text stands in a statement.
Sql built(const QJsonObject &at, const QString &text) {
    return Sql::trusted(at[u"before"].toString().toStdString()) + text +
           Sql::trusted(at[u"after"].toString().toStdString());
}

bool equalAsText(QString left, QString right) {
    while (left.endsWith(u' '))
        left.chop(1);
    while (right.endsWith(u' '))
        right.chop(1);
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

/// A plain reading of `like`: the texts here hold no set but the open bracket, which matches nothing.
bool isLike(const QString &value, const QString &pattern) {
    if (pattern.isEmpty())
        return value.trimmed().isEmpty();
    if (pattern.contains(u'[') && !pattern.contains(u']'))
        return false;
    if (pattern[0] == u'[') {
        const auto end = pattern.indexOf(u']');
        return !value.isEmpty() && pattern.mid(1, end - 1).contains(value[0], Qt::CaseInsensitive) &&
               isLike(value.mid(1), pattern.mid(end + 1));
    }
    if (pattern[0] == u'%') {
        for (qsizetype skipped = 0; skipped <= value.size(); ++skipped) {
            if (isLike(value.mid(skipped), pattern.mid(1)))
                return true;
        }
        return false;
    }
    return !value.isEmpty() && (pattern[0] == u'_' || pattern[0].toCaseFolded() == value[0].toCaseFolded()) &&
           isLike(value.mid(1), pattern.mid(1));
}

} // namespace

Q_DECLARE_METATYPE(Hostile)

/// Hostile texts in every place where typed or stored text meets a statement: they are data, or they are
/// refused before any engine sees them.
class tst_text_guard : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { m_catalog = std::make_unique<SampleCatalog>(); }

    void searches_data() { everyTextAtEveryPlace(); }

    /// `pairs` gives for all rows that the statement may ever show the value of its column `key` and the text
    /// that is compared.
    void searches() {
        const auto [at, typed] = fetched<QJsonObject, Hostile>();
        const auto compared = [blanksRemoved = at[u"blanksRemoved"].toBool()](QString text) {
            return blanksRemoved ? text.remove(u' ') : text;
        };
        const Sql statement = built(at, compared(typed.text));
        QCOMPARE(refusal(statement), typed.inText);
        if (typed.inText != 0)
            return;

        const QByteArray before = m_catalog->checksum();
        const Answer answer = m_catalog->run(statement);
        QVERIFY2(answer.ok(), qPrintable(answer.description));
        QCOMPARE(m_catalog->checksum(), before);

        const Answer all = m_catalog->run(Sql::trusted(at[u"pairs"].toString().toStdString()));
        QVERIFY2(all.ok(), qPrintable(all.description));
        const QString data = compared(typed.data());
        const bool searched = at[u"after"].toString().startsWith('%');
        QStringList expected;
        for (qsizetype row = 0; row < all.rows->rowCount(); ++row) {
            const QString value = compared(all.rows->text(row, 1));
            if (!all.rows->isNull(row, 1) &&
                (searched ? isLike(value, u'%' + data + u'%') : equalAsText(value, data)))
                expected += all.rows->text(row, 0);
        }
        QStringList shown;
        const int key = answer.rows->columnIndex(at[u"key"].toString());
        QVERIFY(key >= 0);
        for (qsizetype row = 0; row < answer.rows->rowCount(); ++row)
            shown += answer.rows->text(row, key);
        expected.sort();
        shown.sort();
        QCOMPARE(shown, expected);
    }

    void numbers_data() { everyTextAtEveryPlace(); }

    void numbers() {
        const auto [at, typed] = fetched<QJsonObject, Hostile>();
        const int number = refusal(built(at, typed.text));
        QVERIFY2(typed.inNumber.contains(number), qPrintable(QString::number(number)));
    }

    void dates_data() { everyTextAtEveryPlace(); }

    /// A text that is no date fails with 241, whoever finds it out; '' is a date.
    void dates() {
        const auto [at, typed] = fetched<QJsonObject, Hostile>();
        const Sql statement = built(at, typed.text);
        if (typed.inText != 0) {
            QCOMPARE(refusal(statement), typed.inText);
            return;
        }
        const QByteArray before = m_catalog->checksum();
        m_catalog->begin();
        const Answer answer = m_catalog->run(statement);
        m_catalog->undo();
        QCOMPARE(answer.error.value_or(0), typed.text.isEmpty() ? 0 : 241);
        QCOMPARE(m_catalog->checksum(), before);
    }

    void counts_data() { everyTextAtEveryPlace(); }

    /// `texts` gives the texts of all rows that may be counted.
    void counts() {
        const auto [at, typed] = fetched<QJsonObject, Hostile>();
        const Sql statement = built(at, typed.text);
        QCOMPARE(refusal(statement), typed.inText);
        if (typed.inText != 0)
            return;
        const Answer answer = m_catalog->run(statement);
        QVERIFY2(answer.ok(), qPrintable(answer.description));
        const Answer all = m_catalog->run(Sql::trusted(at[u"texts"].toString().toStdString()));
        const bool searched = at[u"after"].toString().startsWith('.');
        int expected = 0;
        for (qsizetype row = 0; row < all.rows->rowCount(); ++row) {
            const QString value = all.rows->text(row, 0);
            expected += searched ? isLike(value, typed.data() + ".%") : equalAsText(value, typed.data());
        }
        QCOMPARE(answer.rows->value(0, 0).integer(), expected);
    }

    void serverCalls_data() { everyTextAtEveryPlace(); }

    /// Names and passwords of logins between quotes: they arrive as they were typed, or nothing is called.
    void serverCalls() {
        const auto [at, typed] = fetched<QJsonObject, Hostile>();
        const Sql call = built(at, typed.text);
        QCOMPARE(refusal(call), typed.inText);
        if (typed.inText == 0)
            QCOMPARE(argument(call, at[u"argument"].toInt()), typed.data());
    }

    void titles_data() { everyTextAtEveryPlace(); }

    /// A title that is written reaches its own row and no other.
    void titles() {
        const auto [at, typed] = fetched<QJsonObject, Hostile>();
        const Sql statement = built(at, typed.text);
        if (typed.inText != 0) {
            QCOMPARE(refusal(statement), typed.inText);
            return;
        }
        const Sql all = Sql::trusted("select RowID,AcName from Accounts order by RowID");
        QStringList expected = lines(*m_catalog->run(all).rows);
        m_catalog->begin();
        const Answer answer = m_catalog->run(statement);
        const QStringList rows = lines(*m_catalog->run(all).rows);
        m_catalog->undo();
        if (typed.data().size() > 100)
            QCOMPARE(answer.error.value_or(0), 8152);
        else
            expected[1] = "2, '" + typed.data() + u'\'';
        QCOMPARE(rows, expected);
    }

    void oldPasswords_data() { everyTextAtEveryPlace(); }

    /// The one place where a word stands for a text: it is that text, whatever it names elsewhere.
    void oldPasswords() {
        const auto [at, typed] = fetched<QJsonObject, Hostile>();
        const Sql statement = built(at, typed.text);
        if (typed.inNumber == std::set{207}) {
            QCOMPARE(argument(statement, 0), typed.text);
        } else {
            const int number = refusal(statement);
            QVERIFY2(std::set({102, 105, 113, 137, 156}).contains(number),
                     qPrintable(QString::number(number)));
        }
    }

    /// What the guard must not refuse.
    void numbersOnTheirPlaces() {
        for (const char *number : {"3", " 3 ", "+3", "03", "3.0", "-3"}) {
            const Answer answer =
                m_catalog->run(Sql::trusted("select * from tblSession where SessionId =") + QString(number));
            QVERIFY2(answer.ok(), number);
            QCOMPARE(answer.rows->rowCount(), *number == '-' ? 0 : 1);
        }
    }

    void anyTextIsDataOrRefused() {
        static const QString Letters = QStringLiteral("--/*[]\";; \t\nA1N0.x=()@#%_\\e+,\u00e9\uff07\u2019");
        static const QRegularExpression Number("^\\s*[+-]?\\s*(\\d+\\.?\\d*|\\.\\d+)\\s*$");
        constexpr int Times = 20'000;
        std::mt19937 random(9);
        const auto any = [&random](qsizetype count) {
            return std::uniform_int_distribution<qsizetype>(0, count - 1)(random);
        };
        int asData = 0;
        for (int i = 0; i < Times; ++i) {
            QString text;
            for (qsizetype length = any(9); length > 0; --length)
                text += Letters[any(Letters.size())];
            const Sql quoted =
                Sql::trusted("select x='") + text + Sql::trusted("', y='it''s' --'\n where 1=1");
            if (refusal(quoted) == 0) {
                ++asData;
                const Answer answer = m_catalog->run(quoted);
                QVERIFY2(answer.ok(), qPrintable(text));
                QCOMPARE(answer.rows->text(0, 0), QString(text).replace("''", "'"));
                QCOMPARE(answer.rows->text(0, 1), "it's");
            } else {
                QVERIFY2(QString(text).remove("''").contains(u'\''), qPrintable(text));
            }
            const Sql bare = Sql::trusted("select RowID from Accounts where RowID = ") + text + " and 1=1";
            if (refusal(bare) == 0)
                QVERIFY2(Number.match(text).hasMatch(), qPrintable(text));
        }
        QVERIFY(asData > Times / 10);
    }

private:
    static void everyTextAtEveryPlace() {
        static const QJsonDocument all = zel::test::facts("platform/ado/conformance/text_guard.json");
        static const std::vector<Hostile> texts = [] {
            std::vector<Hostile> made;
            for (const QJsonValue &text : all[u"hostile"].toArray()) {
                Hostile &one = made.emplace_back();
                one.name = text[u"name"].toString().toUtf8();
                one.text = text[u"text"].toString().repeated(text[u"times"].toInt(1));
                one.inText = text[u"inText"].toInt();
                for (const QJsonValue &number : text[u"inNumber"].toArray())
                    one.inNumber.insert(number.toInt());
            }
            return made;
        }();
        columns<QJsonObject, Hostile>("at", "typed");
        const QJsonArray places = all[QLatin1String(QTest::currentTestFunction())].toArray();
        QVERIFY(!places.isEmpty() || !QTest::currentTestFunction());
        for (const QJsonValue &place : places) {
            for (const Hostile &text : texts) {
                const QByteArray name = place[u"name"].toString().toUtf8() + ": " + text.name;
                row(name, place.toObject(), text);
            }
        }
    }

    /// The number of the failure that the front end alone raises; 0 when the text gets through.
    [[nodiscard]] int refusal(const Sql &text) {
        try {
            m_catalog->driver().refresh();
            (void)zel::tsql::translate(text, m_catalog->driver(), zel::tsql::sqlite());
        } catch (const zel::Error &error) {
            return error.number();
        }
        return 0;
    }

    /// What one call of a procedure of the server's is given.
    [[nodiscard]] QString argument(const Sql &call, int index) {
        const auto statements = zel::tsql::translate(call, m_catalog->driver(), zel::tsql::sqlite());
        if (statements.size() != 1 || statements[0].kind != zel::tsql::StatementKind::ServerCall)
            return "no call";
        return QString::fromStdString(statements[0].arguments.at(std::size_t(index)).value_or(""));
    }

    std::unique_ptr<SampleCatalog> m_catalog;
};

QTEST_GUILESS_MAIN(tst_text_guard)
#include "tst_text_guard.moc"
