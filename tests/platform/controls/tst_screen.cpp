#include "on_screen.h"
#include "platform/base/error.h"
#include "platform/controls/form.h"
#include "platform/controls/look.h"
#include "ui_screen.h"

#include "tests/support/rows.h"
#include <QDir>
#include <QMdiArea>
#include <QSignalSpy>
#include <QTest>

using namespace zel;
using namespace zel::controls;
using namespace zel::test;

/// A screen from a designer's file with every promoted control.
class Screen : public Form, public Ui::Screen {
public:
    Screen() { setupUi(this); }
};

/// The screen in an area of that size.
struct InArea {
    InArea(int width, int height) {
        FormHost::setArea(&area);
        area.resize(width, height);
        area.show();
        screen->Show();
    }
    ~InArea() {
        screen->Unload();
        FormHost::setArea(nullptr);
    }
    QMdiArea area;
    FormReference<Screen> screen;
};

namespace {

void fill(TreeView &tree) {
    tree.addNode("", "'1'", "ASSETS", 1)->Tag = "10";
    tree.addNode("'1'", "'1.1'", "BANKS", 2)->Tag = "11";
    tree.addNode("'1.1'", "'1.1.1'", "CITY BANK", 3)->Tag = "12";
    tree.addNode("", "'2'", "LIABILITIES", 1)->Tag = "13";
}

} // namespace

class tst_screen : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void designedProperties() {
        InArea shown(1000, 700);
        const Screen *screen = shown.screen.get();
        QCOMPARE(screen->txtSessionName->Tag(), "M");
        QCOMPARE(screen->txtSessionName->DataField(), "SessionName");
        QCOMPARE(screen->txtSessionName->keys(), Keys::Upper);
        QCOMPARE(screen->txtSessionName->maxTyped(), 10);
        QCOMPARE(screen->txtSessionName->maxLength(), 10);
        QCOMPARE(screen->mskNIC->text(), "_____-_______-_");
        QCOMPARE(screen->mskNIC->property("text").toString(), "_____-_______-_");
        QCOMPARE(screen->cmbMYear->enterKey(), EnterKey::GoesOn);
        QCOMPARE(screen->cboCource->BoundColumn(), "CourseId");
        QCOMPARE(screen->chkHead->enterKey(), EnterKey::GoesOn);
        QVERIFY(!screen->cmdSave->icon().isNull());
        QCOMPARE(textFields(shown.screen.get(), "M").size(), std::size_t(1));
        QCOMPARE(screen->subWindow()->windowTitle(), "SESSION");
        QVERIFY(screen->size().width() >= screen->minimumSizeHint().width());
        QVERIFY(screen->size().height() >= screen->minimumSizeHint().height());
    }

    /// In an area too small for it a screen reaches out of sight, and its controls don't stand on one
    /// another.
    void keepsItsLeastSize() {
        InArea shown(60, 50);
        Screen *screen = shown.screen.get();
        const QSize least = screen->minimumSizeHint();
        QVERIFY(least.width() > shown.area.width() || least.height() > shown.area.height());
        QCOMPARE(screen->size().expandedTo(least), screen->size());
        screen->subWindow()->resize(20, 20);
        QCOMPARE(screen->size().expandedTo(least), screen->size());
    }

    void enterWalksTheTabOrder() {
        Screen screen;
        QVERIFY(activated(screen));
        screen.txtSessionName->setFocus();
        const QList<QWidget *> walk{screen.mskNIC, screen.txtNaration, screen.cmbMYear, screen.cboCource};
        for (QWidget *next : walk) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            QCOMPARE(QApplication::focusWidget(), next);
        }
        QTest::keyClick(screen.cboCource, Qt::Key_Return);
        QVERIFY(screen.cboCource->hasFocus()); // not told to go on
        screen.chkHead->setFocus();
        QTest::keyClick(screen.chkHead, Qt::Key_Enter);
        QVERIFY(screen.OptCash->hasFocus());
        QVERIFY(!screen.chkHead->isChecked());
    }

    void buttonsByKeys() {
        Screen screen;
        QVERIFY(activated(screen));
        QSignalSpy clicked(screen.cmdSave, &Button::clicked);
        screen.txtSessionName->setFocus();
        QTest::keyClick(screen.txtSessionName, Qt::Key_S, Qt::AltModifier);
        QCOMPARE(clicked.size(), 1);
        QVERIFY(screen.cmdSave->hasFocus());
        QTest::keyClick(screen.cmdSave, Qt::Key_Return);
        QCOMPARE(clicked.size(), 2);
        screen.cmdSave->setEnterGoesOn(true);
        QTest::keyClick(screen.cmdSave, Qt::Key_Return);
        QCOMPARE(clicked.size(), 2);
        QVERIFY(screen.chkHead->hasFocus());
        screen.cmdSave->setEnabled(false);
        QTest::keyClick(screen.chkHead, Qt::Key_S, Qt::AltModifier);
        QCOMPARE(clicked.size(), 2);
    }

    void treeNodes() {
        TreeView tree;
        fill(tree);
        QCOMPARE(tree.node("'1.1.1'")->Tag, "12");
        QCOMPARE(tree.node("'1.1.1'")->parent(), tree.node("'1.1'"));
        QCOMPARE(tree.topLevelItemCount(), 2);
        QVERIFY(!tree.node("'1'")->isExpanded());
        QVERIFY(!tree.find("'3'"));
        QVERIFY_EXCEPTION_THROWN((void)tree.node("'3'"), Error);
        QVERIFY_EXCEPTION_THROWN(tree.addNode("'3'", "'3.1'", "x"), Error);
        QVERIFY_EXCEPTION_THROWN(tree.addNode("", "'2'", "x"), Error);
        QCOMPARE(tree.nodes().size(), 4);
        tree.clearNodes();
        QVERIFY(!tree.find("'1'"));
        fill(tree);
        QCOMPARE(tree.nodes().size(), 4);
    }

    void treeEvents() {
        TreeView tree;
        fill(tree);
        tree.show();
        QStringList told;
        connect(&tree, &TreeView::nodeExpanded, this, [&](TreeNode *node) { told << "+" + node->Tag; });
        connect(&tree, &TreeView::nodeCollapsed, this, [&](TreeNode *node) { told << "-" + node->Tag; });
        connect(&tree, &TreeView::mouseDown, this,
                [&](Qt::MouseButton b) { told << (b == Qt::RightButton ? "R" : "L"); });
        connect(&tree, &TreeView::nodeClicked, this, [&](TreeNode *node) { told << node->Tag; });
        tree.node("'1'")->setExpanded(true);
        tree.node("'1'")->setExpanded(true);
        tree.node("'1'")->setExpanded(false);
        tree.select(tree.node("'1'"));
        QTest::keyClick(&tree, Qt::Key_Right);
        QTest::keyClick(&tree, Qt::Key_Down);
        QTest::keyClick(&tree, Qt::Key_Return);
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QCoreApplication::sendEvent(&tree, &menuKey);
        QCOMPARE(told.join(' '), "+10 -10 +10 L 11 L 11 R 11");
    }

    void treeByMouse() {
        TreeView tree;
        fill(tree);
        tree.resize(300, 300);
        tree.show();
        QVERIFY(QTest::qWaitForWindowExposed(&tree));
        QSignalSpy clicked(&tree, &TreeView::nodeClicked);
        const QRect text = tree.visualItemRect(tree.node("'1'"));
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, text.center());
        QTest::mouseClick(tree.viewport(), Qt::RightButton, {}, text.center());
        QCOMPARE(clicked.size(), 2);
        QCOMPARE(clicked.at(1).at(1).value<Qt::MouseButton>(), Qt::RightButton);
        const QPoint branchMark(text.left() - tree.indentation() / 2, text.center().y());
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, branchMark);
        QVERIFY(tree.node("'1'")->isExpanded());
        QCOMPARE(clicked.size(), 2);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, QPoint(150, 280));
        QCOMPARE(clicked.size(), 2);
    }

    void lookIsWhole() {
        const QFontMetricsF metrics(QApplication::font());
        for (const QChar digit : QStringLiteral("1234567890"))
            QCOMPARE(metrics.horizontalAdvance(digit), metrics.horizontalAdvance('0'));
        const QStringList files = QDir(":/icons").entryList();
        QVERIFY(files.size() >= 25);
        for (const QString &file : files) {
            const QImage image = icon(file.section('.', 0, 0)).pixmap(32, 32).toImage();
            int drawn = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x)
                    drawn += qAlpha(image.pixel(x, y)) > 0;
            }
            QVERIFY2(drawn > 20, qPrintable(file));
        }
    }
};

ZEL_CONTROLS_MAIN(tst_screen)
#include "tst_screen.moc"
