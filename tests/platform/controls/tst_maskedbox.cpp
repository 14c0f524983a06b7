#include "on_screen.h"
#include "platform/controls/masked_box.h"

#include "tests/support/facts.h"
#include <QClipboard>
#include <QSignalSpy>
#include <QTest>

using namespace zel::controls;
using namespace zel::test;

class tst_maskedbox : public QObject {
    Q_OBJECT
private Q_SLOTS:
    /// "<" is Backspace.
    void typing_data() { rowsFrom<QString, QString, QString, bool>("platform/controls/maskedbox.json"); }

    void typing() {
        const auto [mask, typed, text, full] = fetched<QString, QString, QString, bool>();
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

    void set_data() { rowsFrom<QString, QString>("platform/controls/maskedbox.json"); }

    void set() {
        const auto [given, text] = fetched<QString, QString>();
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
        QCOMPARE(box.text(), "_______-_");
        QCOMPARE(box.Mask(), "#######-#");
        box.setMask(QString());
        box.setText("free text");
        QCOMPARE(box.text(), "free text");
    }
};

ZEL_CONTROLS_MAIN(tst_maskedbox)
#include "tst_maskedbox.moc"
