#include "../../support/rows.h"
#include "platform/controls/application.h"
#include "platform/controls/masked_box.h"
#include "platform/controls/memo_box.h"
#include "platform/controls/text_box.h"

#include "tests/support/rows.h"
#include <QClipboard>
#include <QMainWindow>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

using zel::test::columns;
using zel::test::row;

using namespace zel::controls;

class tst_textbox : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void keys_data() {
        zel::test::columns<Keys, QString, QString, QString>("keys", "present", "typed", "text");
        zel::test::row("free", Keys::Free, "", "aB 'x'", "aB 'x'");
        zel::test::row("upper", Keys::Upper, "", "ab 1c", "AB 1C");
        zel::test::row("upper without blanks", Keys::UpperTight, "", "a b", "AB");
        zel::test::row("amount", Keys::Amount, "", "-1 2a.5.5,", "12.55");
        zel::test::row("amount: point already there", Keys::Amount, "1.5", ".2", "1.52");
        zel::test::row("point alone", Keys::Amount, "", ".", ".");
        zel::test::row("number", Keys::Number, "", "1 2.a-3", "123");
        zel::test::row("order", Keys::Order, "", " 7x8", "78");
        zel::test::row("balance", Keys::Balance, "", "1-2-3.4.5 6,a", "1-23.456");
        zel::test::row("phone", Keys::Phone, "", "021 34,5-a", "02134,5");
        zel::test::row("fax", Keys::Fax, "", "021 34,5-a", "021 34,5");
        zel::test::row("telephone", Keys::Telephone, "", "+92 (21)-3,4/a", "+92 (21)-3,4");
    }

    void keys() {
        QFETCH(Keys, keys);
        QFETCH(QString, present);
        QFETCH(QString, typed);
        QFETCH(QString, text);

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

    void sets_data() {
        zel::test::columns<QString, QString, QString>("set", "inside", "outside");
        zel::test::row("amount", "[0-9 .]", "059 .", "-,/:a");
        zel::test::row("hyphen at the end", "[0-9 . -]", "09 .-", ",/");
        zel::test::row("hyphen between blanks", "[0-9 - ,]", "09 ,", "-.!");
        zel::test::row("blank to hyphen", "[0-9 -- ,]", "09 !\"#'()+,-", "./:a");
        zel::test::row("hyphen first", "[-a]", "-a", "b");
    }

    void sets() {
        QFETCH(QString, set);
        QFETCH(QString, inside);
        QFETCH(QString, outside);
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
        zel::test::columns<QString, int, QString, QString>("present", "selected", "typed", "text");
        zel::test::row("typing stops", "", 0, "123456", "1234");
        zel::test::row("full", "1234", 0, "5", "1234");
        zel::test::row("the selection makes room", "1234", 2, "789", "7834");
        zel::test::row("longer by the program", "123456", 0, "7", "123456");
    }

    void limitHoldsTypingOnly() {
        QFETCH(QString, present);
        QFETCH(int, selected);
        QFETCH(QString, typed);
        QFETCH(QString, text);
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

    void enter_data() {
        columns<Keys, bool>("keys", "moves");
        zel::test::row("free", Keys::Free, true);
        zel::test::row("free, stays", Keys::FreeStays, false);
        zel::test::row("upper", Keys::Upper, true);
        zel::test::row("upper, stays", Keys::UpperStays, false);
        zel::test::row("amount", Keys::Amount, true);
        zel::test::row("order", Keys::Order, false);
        zel::test::row("telephone", Keys::Telephone, true);
    }

    void enter() {
        QFETCH(Keys, keys);
        QFETCH(bool, moves);
        QWidget screen;
        auto *layout = new QVBoxLayout(&screen);
        auto *first = new TextBox;
        auto *disabled = new TextBox;
        auto *hidden = new TextBox;
        auto *next = new TextBox;
        for (TextBox *box : {first, disabled, hidden, next})
            layout->addWidget(box);
        disabled->setEnabled(false);
        hidden->hide();
        first->setKeys(keys);
        screen.show();
        screen.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&screen));
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
        masked.setMask(QStringLiteral("##-##"));
        for (QWidget *box : {static_cast<QWidget *>(&amount), static_cast<QWidget *>(&memo),
                             static_cast<QWidget *>(&masked)}) {
            QTest::keyClick(box, Qt::Key_D, Qt::AltModifier);
            QTest::keyClick(box, Qt::Key_7, Qt::AltModifier);
            QTest::keyClick(box, Qt::Key_7, Qt::MetaModifier);
        }
        QCOMPARE(amount.text(), QString());
        QCOMPARE(memo.text(), QString());
        QCOMPARE(masked.text(), QStringLiteral("__-__"));
        QTest::keyClick(&amount, Qt::Key_7, Qt::ControlModifier | Qt::AltModifier); // AltGr
        QCOMPARE(amount.text(), QStringLiteral("7"));
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
        QCOMPARE(box.text(), QStringLiteral("12"));
        QCOMPARE(pressed.size(), 1);
        QVERIFY(box.focusPolicy() & Qt::TabFocus);
    }

    /// A box that hands the focus to another as soon as it has it.
    void focusPassedOn() {
        QWidget screen;
        auto *layout = new QVBoxLayout(&screen);
        auto *first = new TextBox;
        auto *passing = new TextBox;
        auto *target = new TextBox;
        for (TextBox *box : {target, first, passing})
            layout->addWidget(box);
        QWidget::setTabOrder(first, passing);
        connect(passing, &TextBox::gotFocus, target, [target] { target->setFocus(); });
        screen.show();
        screen.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&screen));
        first->setFocus();
        QSignalSpy got(target, &TextBox::gotFocus);
        QTest::keyClick(first, Qt::Key_Return);
        QVERIFY(target->hasFocus());
        QCOMPARE(got.size(), 1);
        QTest::keyClicks(screen.focusWidget(), "x");
        QCOMPARE(target->text(), QStringLiteral("x"));
        QVERIFY(!passing->hasFocus());
    }

    void pastedLinesBecomeOne() {
        TextBox box;
        QGuiApplication::clipboard()->setText("one\r\ntwo\nthree");
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(box.text(), QStringLiteral("one two three"));
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
        QCOMPARE(box.Tag(), QStringLiteral("M"));
        QCOMPARE(box.DataField(), QStringLiteral("SessionName"));
        QCOMPARE(box.keys(), Keys::Amount);
        QCOMPARE(box.rule().set, QStringLiteral("[0-9 .]"));
        QCOMPARE(box.displayText(), QString());
        QTest::keyClicks(&box, "1x2");
        QCOMPARE(box.displayText(), QStringLiteral("**"));

        QWidget screen;
        auto *memo = new MemoBox(&screen);
        memo->setTag("M");
        auto *other = new TextBox(&screen);
        const auto tagged = textFields(&screen, "M");
        QCOMPARE(tagged.size(), std::size_t(1));
        tagged.front()->setShownText("two\nlines");
        QCOMPARE(memo->text(), QStringLiteral("two\nlines"));
        QCOMPARE(textFields(&screen).back()->widget(), other);
    }

    void memo_data() {
        // "\n" is Enter
        zel::test::columns<Keys, int, QString, QString, bool>("keys", "limit", "typed", "text", "leaves");
        zel::test::row("upper, goes on", Keys::Upper, 0, "ab\n", "AB", true);
        zel::test::row("stays", Keys::FreeStays, 0, "a\nb", "a\nb", false);
        zel::test::row("limit counts line ends", Keys::FreeStays, 3, "a\nbcd", "a\nb", false);
    }

    void memo() {
        QFETCH(Keys, keys);
        QFETCH(int, limit);
        QFETCH(QString, typed);
        QFETCH(QString, text);
        QFETCH(bool, leaves);
        QWidget screen;
        auto *layout = new QVBoxLayout(&screen);
        auto *memo = new MemoBox;
        auto *next = new TextBox;
        layout->addWidget(memo);
        layout->addWidget(next);
        memo->setKeys(keys);
        memo->setMaxTyped(limit);
        screen.show();
        screen.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&screen));
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
            const auto row = [&](const char *what) -> QTestData & {
                return QTest::newRow(qPrintable(QString("%1, %2").arg(memo ? "memo" : "text", what)));
            };
            row("Ctrl+A") << "Ctrl+A" << false << true << memo << true;
            row("Ctrl+A on a selection") << "Ctrl+A" << true << true << memo << true;
            row("Ctrl+A, item hidden") << "Ctrl+A" << false << false << memo << false;
            row("Ctrl+C without selection") << "Ctrl+C" << false << true << memo << true;
            row("Ctrl+C on a selection") << "Ctrl+C" << true << true << memo << false;
            row("Ctrl+U") << "Ctrl+U" << false << true << memo << true;
        }
    }

    void menuKeys() {
        QFETCH(QString, key);
        QFETCH(bool, selected);
        QFETCH(bool, itemShown);
        QFETCH(bool, memo);
        QFETCH(bool, toMenu);
        QMainWindow window;
        QAction *item = window.menuBar()->addMenu("&Registrations")->addAction("Item");
        item->setShortcut(QKeySequence(key));
        item->setVisible(itemShown);
        QSignalSpy triggered(item, &QAction::triggered);
        auto *box = new TextBox;
        auto *memoBox = new MemoBox;
        QWidget *used = memo ? static_cast<QWidget *>(memoBox) : box;
        auto *centre = new QWidget;
        auto *layout = new QVBoxLayout(centre);
        layout->addWidget(box);
        layout->addWidget(memoBox);
        window.setCentralWidget(centre);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
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
        QCOMPARE(box->text(), QStringLiteral("abc"));
        if (key == "Ctrl+C")
            QCOMPARE(QGuiApplication::clipboard()->text(), toMenu ? QString("before") : QString("abc"));
    }
};

int main(int argc, char **argv) {
    Application application(argc, argv);
    tst_textbox test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_textbox.moc"
