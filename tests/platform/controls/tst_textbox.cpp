#include "on_screen.h"
#include "platform/controls/masked_box.h"
#include "platform/controls/memo_box.h"
#include "platform/controls/text_box.h"

#include "tests/support/facts.h"
#include <QClipboard>
#include <QMainWindow>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

using namespace zel::controls;
using namespace zel::test;

class tst_textbox : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void keys_data() { rowsFrom<Keys, QString, QString, QString>("platform/controls/textbox.json"); }

    void keys() {
        const auto [keys, present, typed, text] = fetched<Keys, QString, QString, QString>();

        TextBox box;
        box.setKeys(keys);
        box.setText(present);
        QTest::keyClicks(&box, typed);
        QCOMPARE(box.text(), text);

        TextBox pasted;
        pasted.setKeys(keys);
        pasted.setText(present);
        QGuiApplication::clipboard()->setText(typed);
        QTest::keyClick(&pasted, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(pasted.text(), text);

        QInputMethodEvent composed;
        composed.setCommitString(typed);
        TextBox composing;
        composing.setKeys(keys);
        composing.setText(present);
        QCoreApplication::sendEvent(&composing, &composed);
        QCOMPARE(composing.text(), text);
    }

    void sets_data() { rowsFrom<QString, QString, QString>("platform/controls/textbox.json"); }

    void sets() {
        const auto [set, inside, outside] = fetched<QString, QString, QString>();
        for (const QChar character : inside)
            QVERIFY2(inSet(set, character), qPrintable(QString(character)));
        for (const QChar character : outside)
            QVERIFY2(!inSet(set, character), qPrintable(QString(character)));
    }

    void upperCaseKeepsTheLength() {
        const QString lower = QString::fromUtf8("straße ŉ ﬁ émile \xF0\x90\x90\xA8 ش");
        const QString upper = simpleUpper(lower);
        QCOMPARE(upper, QString::fromUtf8("STRAßE ŉ ﬁ ÉMILE \xF0\x90\x90\x80 ش"));
        QCOMPARE(upper.size(), lower.size());
    }

    void limitHoldsTypingOnly_data() {
        rowsFrom<QString, int, QString, QString>("platform/controls/textbox.json");
    }

    void limitHoldsTypingOnly() {
        const auto [present, selected, typed, text] = fetched<QString, int, QString, QString>();
        for (const bool paste : {false, true}) {
            TextBox box;
            box.setMaxTyped(4);
            box.setText(present);
            QCOMPARE(box.text(), present);
            QCOMPARE(box.maxLength(), std::max(4, int(present.size())));
            if (selected)
                box.setSelection(0, selected);
            QGuiApplication::clipboard()->setText(typed);
            if (paste)
                QTest::keyClick(&box, Qt::Key_Insert, Qt::ShiftModifier);
            else
                QTest::keyClicks(&box, typed);
            QCOMPARE(box.text(), text);
            box.setText("12");
            QCOMPARE(box.property("maxLength").toInt(), 4);
        }
    }

    void enter_data() { rowsFrom<Keys, bool>("platform/controls/textbox.json"); }

    void enter() {
        const auto [keys, moves] = fetched<Keys, bool>();
        QWidget screen;
        auto *first = new TextBox;
        auto *disabled = new TextBox;
        auto *hidden = new TextBox;
        auto *next = new TextBox;
        stack(screen, {first, disabled, hidden, next});
        disabled->setEnabled(false);
        hidden->hide();
        first->setKeys(keys);
        QVERIFY(activated(screen));
        first->setFocus();
        QSignalSpy pressed(first, &TextBox::enterPressed);
        QSignalSpy lost(first, &TextBox::lostFocus);
        QSignalSpy got(next, &TextBox::gotFocus);
        QTest::keyClick(first, Qt::Key_Return);
        QCOMPARE(pressed.size(), 1);
        QCOMPARE(next->hasFocus(), moves);
        QCOMPARE(lost.size(), moves ? 1 : 0);
        QCOMPARE(got.size(), moves ? 1 : 0);
    }

    /// Alt+D while "&Delete" is disabled, and the like.
    void commandsAreNotTyped() {
        TextBox amount;
        amount.setKeys(Keys::Amount);
        MemoBox memo;
        MaskedBox masked;
        masked.setMask("##-##");
        for (QWidget *box : {static_cast<QWidget *>(&amount), static_cast<QWidget *>(&memo),
                             static_cast<QWidget *>(&masked)}) {
            QTest::keyClick(box, Qt::Key_D, Qt::AltModifier);
            QTest::keyClick(box, Qt::Key_7, Qt::AltModifier);
            QTest::keyClick(box, Qt::Key_7, Qt::MetaModifier);
        }
        QCOMPARE(amount.text(), QString());
        QCOMPARE(memo.text(), QString());
        QCOMPARE(masked.text(), "__-__");
        QTest::keyClick(&amount, Qt::Key_7, Qt::ControlModifier | Qt::AltModifier); // AltGr
        QCOMPARE(amount.text(), "7");
    }

    void lockedBoxAnswersEnterAlone() {
        TextBox box;
        box.setLocked(true);
        box.setText("12");
        QSignalSpy pressed(&box, &TextBox::enterPressed);
        QGuiApplication::clipboard()->setText("9");
        QTest::keyClicks(&box, "3");
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_Backspace);
        QTest::keyClick(&box, Qt::Key_Enter);
        QCOMPARE(box.text(), "12");
        QCOMPARE(pressed.size(), 1);
        QVERIFY(box.focusPolicy() & Qt::TabFocus);
    }

    /// A box that hands the focus to another as soon as it has it.
    void focusPassedOn() {
        QWidget screen;
        auto *first = new TextBox;
        auto *passing = new TextBox;
        auto *target = new TextBox;
        stack(screen, {target, first, passing});
        QWidget::setTabOrder(first, passing);
        connect(passing, &TextBox::gotFocus, target, [target] { target->setFocus(); });
        QVERIFY(activated(screen));
        first->setFocus();
        QSignalSpy got(target, &TextBox::gotFocus);
        QTest::keyClick(first, Qt::Key_Return);
        QVERIFY(target->hasFocus());
        QCOMPARE(got.size(), 1);
        QTest::keyClicks(screen.focusWidget(), "x");
        QCOMPARE(target->text(), "x");
        QVERIFY(!passing->hasFocus());
    }

    void pastedLinesBecomeOne() {
        TextBox box;
        QGuiApplication::clipboard()->setText("one\r\ntwo\nthree");
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(box.text(), "one two three");
        const QString wide = QString::fromUtf8("\xF0\x9F\x8E\x93"); // two units long
        box.setText(QString(40000, 'x'));
        QCOMPARE(box.text().size(), 40000);
        box.clear();
        box.setMaxTyped(3);
        QGuiApplication::clipboard()->setText(wide + wide);
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(box.text(), wide);
    }

    void changedTellsOfTheProgramToo() {
        TextBox box;
        QSignalSpy changed(&box, &TextBox::changed);
        QSignalSpy released(&box, &TextBox::keyReleased);
        box.setText("a");
        box.setText("a");
        QTest::keyClicks(&box, "b");
        QKeyEvent held(QEvent::KeyRelease, Qt::Key_Backspace, {}, {}, true);
        QCoreApplication::sendEvent(&box, &held);
        QTest::keyClick(&box, Qt::Key_Backspace);
        box.clear();
        QCOMPARE(changed.size(), 4);
        QCOMPARE(released, QList<QVariantList>({{int(Qt::Key_B)}, {int(Qt::Key_Backspace)}}));
    }

    /// As a .ui file sets them.
    void propertiesByName() {
        TextBox box;
        QVERIFY(box.setProperty("Tag", "M"));
        QVERIFY(box.setProperty("DataField", "SessionName"));
        QVERIFY(box.setProperty("keys", "Amount"));
        QVERIFY(box.setProperty("masked", true));
        QCOMPARE(box.Tag(), "M");
        QCOMPARE(box.DataField(), "SessionName");
        QCOMPARE(box.keys(), Keys::Amount);
        QCOMPARE(box.rule().set, "[0-9 .]");
        QCOMPARE(box.displayText(), QString());
        QTest::keyClicks(&box, "1x2");
        QCOMPARE(box.displayText(), "**");

        QWidget screen;
        auto *memo = new MemoBox(&screen);
        memo->setTag("M");
        auto *other = new TextBox(&screen);
        const auto tagged = textFields(&screen, "M");
        QCOMPARE(tagged.size(), std::size_t(1));
        tagged.front()->setShownText("two\nlines");
        QCOMPARE(memo->text(), "two\nlines");
        QCOMPARE(textFields(&screen).back()->widget(), other);
    }

    /// "\n" is Enter.
    void memo_data() { rowsFrom<Keys, int, QString, QString, bool>("platform/controls/textbox.json"); }

    void memo() {
        const auto [keys, limit, typed, text, leaves] = fetched<Keys, int, QString, QString, bool>();
        QWidget screen;
        auto *memo = new MemoBox;
        auto *next = new TextBox;
        stack(screen, {memo, next});
        memo->setKeys(keys);
        memo->setMaxTyped(limit);
        QVERIFY(activated(screen));
        memo->setFocus();
        QSignalSpy changed(memo, &MemoBox::changed);
        for (const QChar key : typed) {
            if (key == '\n')
                QTest::keyClick(memo, Qt::Key_Return);
            else
                QTest::keyClick(memo, key.toLatin1());
        }
        QCOMPARE(memo->text(), text);
        QCOMPARE(changed.size(), text.size());
        QCOMPARE(next->hasFocus(), leaves);

        memo->setText(QString());
        QGuiApplication::clipboard()->setText("abcdef");
        QTest::keyClick(memo, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(memo->text().size(), limit ? limit : 6);
    }

    void menuKeys_data() {
        columns<QString, bool, bool, bool, bool>("key", "selected", "itemShown", "memo", "toMenu");
        for (const bool memo : {false, true}) {
            const auto row = [memo](const char *what, const QString &key, bool selected, bool shown,
                                    bool to) {
                fill(QTest::addRow("%s, %s", memo ? "memo" : "text", what), key, selected, shown, memo, to);
            };
            row("Ctrl+A", "Ctrl+A", false, true, true);
            row("Ctrl+A on a selection", "Ctrl+A", true, true, true);
            row("Ctrl+A, item hidden", "Ctrl+A", false, false, false);
            row("Ctrl+C without selection", "Ctrl+C", false, true, true);
            row("Ctrl+C on a selection", "Ctrl+C", true, true, false);
            row("Ctrl+U", "Ctrl+U", false, true, true);
        }
    }

    void menuKeys() {
        const auto [key, selected, itemShown, memo, toMenu] = fetched<QString, bool, bool, bool, bool>();
        QMainWindow window;
        QAction *item = window.menuBar()->addMenu("&Registrations")->addAction("Item");
        item->setShortcut(QKeySequence(key));
        item->setVisible(itemShown);
        QSignalSpy triggered(item, &QAction::triggered);
        auto *box = new TextBox;
        auto *memoBox = new MemoBox;
        QWidget *used = memo ? static_cast<QWidget *>(memoBox) : box;
        auto *centre = new QWidget;
        stack(*centre, {box, memoBox});
        window.setCentralWidget(centre);
        QVERIFY(activated(window));
        box->setText("abc");
        memoBox->setText("abc");
        used->setFocus();
        if (selected) {
            box->selectAll();
            memoBox->selectAll();
        } else {
            box->deselect();
        }
        QGuiApplication::clipboard()->setText("before");
        const QKeyCombination pressed = QKeySequence(key)[0];
        // Through the window, as the platform delivers it.
        QTest::keyClick(window.windowHandle(), pressed.key(), pressed.keyboardModifiers());
        QCOMPARE(triggered.size(), toMenu ? 1 : 0);
        QCOMPARE(box->text(), "abc");
        if (key == "Ctrl+C")
            QCOMPARE(QGuiApplication::clipboard()->text(), toMenu ? QString("before") : QString("abc"));
    }
};

ZEL_CONTROLS_MAIN(tst_textbox)
#include "tst_textbox.moc"
