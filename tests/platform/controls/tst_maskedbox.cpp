#include "platform/controls/application.h"
#include "platform/controls/masked_box.h"

#include "tests/support/rows.h"
#include <QClipboard>
#include <QSignalSpy>
#include <QTest>

using zel::test::columns;
using zel::test::row;

using namespace zel::controls;

class tst_maskedbox : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void typing_data() {
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QString>("typed"); // "<" is Backspace
        columns<QString, bool>("text", "full");
        const QString card = "#####-#######-#";
        const QString tax = "##-##-####-###-##";
        row("nothing", card, "", "_____-_______-_", false);
        row("digits step over literals", card, "1234512345671", "12345-1234567-1", true);
        row("typed literals do no harm", card, "12345-1234567-1", "12345-1234567-1", true);
        row("letters are dropped", card, "1a2 3", "123__-_______-_", false);
        row("more than fits", "#######-#", "123456789", "1234567-8", true);
        row("tax number", tax, "1122333344455", "11-22-3333-444-55", true);
        row("one digit short", tax, "112233334445", "11-22-3333-444-5_", false);
        row("backspace leaves a place", "#######-#", "123<", "12_____-_", false);
        row("backspace over a literal", "##-##", "123<<", "1_-__", false);
    }

    void typing() {
        QFETCH(QString, mask);
        QFETCH(QString, typed);
        QFETCH(QString, text);
        QFETCH(bool, full);
        MaskedBox box;
        box.setMask(mask);
        for (const QChar key : typed) {
            if (key == '<')
                QTest::keyClick(&box, Qt::Key_Backspace);
            else
                QTest::keyClick(&box, key.toLatin1());
        }
        QCOMPARE(box.text(), text);
        QCOMPARE(box.isFull(), full);
        if (typed.contains('<'))
            return;
        MaskedBox pasted;
        pasted.setMask(mask);
        QGuiApplication::clipboard()->setText(typed);
        QTest::keyClick(&pasted, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(pasted.text(), text);
    }

    void set_data() {
        columns<QString, QString>("given", "text");
        row("full", "1234567-8", "1234567-8");
        row("with empty places", "12_4567-_", "12_4567-_");
        row("all empty", "_______-_", "_______-_");
        row("nothing", "", "_______-_");
        row("short", "12", "12_____-_");
        row("blanks behind, as a wide column gives them", "1234567-8   ", "1234567-8");
    }

    void set() {
        QFETCH(QString, given);
        QFETCH(QString, text);
        MaskedBox box;
        box.setMask("#######-#");
        box.setText(given);
        QCOMPARE(box.text(), text);
    }

    void resetEmpties() {
        MaskedBox box;
        box.setMask("#######-#");
        QSignalSpy changed(&box, &MaskedBox::changed);
        box.setText("1234567-8");
        QVERIFY(changed.size() > 0);
        box.reset();
        QCOMPARE(box.text(), QStringLiteral("_______-_"));
        QCOMPARE(box.Mask(), QStringLiteral("#######-#"));
        box.setMask(QString());
        box.setText("free text");
        QCOMPARE(box.text(), QStringLiteral("free text"));
    }
};

int main(int argc, char **argv) {
    Application application(argc, argv);
    tst_maskedbox test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_maskedbox.moc"
