#include "on_screen.h"
#include "platform/base/error.h"
#include "platform/controls/button.h"
#include "platform/controls/focus.h"
#include "platform/controls/form.h"
#include "platform/controls/msg_box.h"
#include "platform/controls/text_box.h"

#include "tests/support/facts.h"
#include <QMdiArea>
#include <QMenuBar>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

using namespace zel;
using namespace zel::controls;
using namespace zel::test;

namespace {

QStringList s_log;
int s_made = 0;

class Screen : public Form {
public:
    explicit Screen(const QString &name)
        : box(new TextBox), button(new Button), m_name(name + QString::number(++s_made)) {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(box);
        layout->addWidget(button);
        button->setText("E&xit");
        connect(button, &Button::clicked, this, [this] {
            Unload();
            s_log << m_name + "…"; // its own event goes on
        });
    }
    TextBox *box;
    Button *button;

protected:
    void Form_Load() override { s_log << m_name + "+"; }
    void Form_Activate() override { s_log << m_name + "!"; }
    void Form_Unload() override { s_log << m_name + "-"; }
    void Form_LostFocus() override { s_log << m_name + "~"; }

private:
    QString m_name;
};

class ScreenA : public Screen {
public:
    ScreenA() : Screen("a") {}
};

class ScreenB : public Screen {
public:
    ScreenB() : Screen("b") {}
};

class Tabbed : public Form {
public:
    Tabbed() : tabs(new QTabWidget(this)), box(new TextBox) {
        auto *page = new QWidget;
        (new QVBoxLayout(page))->addWidget(box);
        tabs->addTab(page, "Entry");
        (new QVBoxLayout(this))->addWidget(tabs);
    }
    QTabWidget *tabs;
    TextBox *box;
};

/// A list above a row of buttons.
class Listed : public Form {
public:
    explicit Listed(Kind kind) : Form(kind), list(new QWidget), button(new Button) {
        list->setMinimumSize(400, 300);
        auto *column = new QVBoxLayout(this);
        column->addWidget(list, 1);
        auto *row = new QHBoxLayout;
        row->setObjectName("layoutButtons");
        row->addWidget(button);
        column->addLayout(row);
    }
    QWidget *list;
    Button *button;
};

class Main : public MainForm {
public:
    Main() : area(new QMdiArea) {
        setCentralWidget(area);
        FormHost::setArea(area);
        resize(800, 600);
        item = menuBar()->addMenu("E&xit")->addAction("Bank Receive Voucher");
        item->setShortcut(QKeySequence("Ctrl+F4"));
    }
    QMdiArea *area;
    QAction *item;

protected:
    void Form_Unload() override { s_log << "main-"; }
};

class Login : public Form {
public:
    Login() : Form(Kind::Window) {}
};

FormReference<Main> s_main;
FormReference<ScreenA> s_a;
FormReference<ScreenB> s_b;
FormReference<Tabbed> s_tabbed;

template <class Reference>
void act(Reference &screen, const QString &verb) {
    if (verb == "show")
        screen->Show();
    else if (verb == "load")
        screen->Load();
    else if (verb == "hide")
        screen->Hide();
    else if (verb == "unload")
        screen->Unload();
    else if (verb == "close")
        screen->subWindow()->close();
    else if (verb == "exit")
        QTest::mouseClick(screen->button, Qt::LeftButton);
    else if (verb == "activate")
        s_main->area->setActiveSubWindow(screen->subWindow());
    else if (verb == "clear")
        screen.clear();
    else
        qFatal("no such step");
}

bool openMain() {
    s_main->Show();
    return QTest::qWaitForWindowActive(s_main.get());
}

} // namespace

class tst_form : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() {
        s_made = 0;
        QVERIFY(openMain());
        s_log.clear();
    }

    void cleanup() {
        if (s_main)
            s_main->Unload();
        s_a.clear();
        s_b.clear();
        s_tabbed.clear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(FormLife::loaded().size(), 0);
    }

    /// Steps, and what the screens were told: + load, ! activate, - unload; the number tells instances apart.
    void life_data() { rowsFrom<QString, QString>("platform/controls/form.json"); }

    void life() {
        const auto [steps, told] = fetched<QString, QString>();
        for (const QString &step : steps.split(", ")) {
            const QString verb = step.section(' ', 0, 0);
            if (verb == "main" && s_main) {
                s_main->close();
            } else if (verb == "main") {
                QVERIFY(openMain());
            } else if (verb == "box") {
                QTimer::singleShot(0, [] { QTest::keyClick(qApp->activeModalWidget(), Qt::Key_Return); });
                MsgBox("please enter Amount", vbInformation);
            } else if (step.endsWith('a')) {
                act(s_a, verb);
            } else {
                act(s_b, verb);
            }
            QTest::qWait(5);
        }
        QCOMPARE(s_log.join(' '), told);
    }

    void unloadedFormsAreDeleted() {
        s_a->Show();
        const QPointer<Form> form = s_a.get();
        const QPointer<QMdiSubWindow> window = s_a->subWindow();
        s_a->Unload();
        QVERIFY(!s_a);
        QVERIFY(form);
        QTest::qWait(5);
        QVERIFY(!form);
        QVERIFY(!window);
        QCOMPARE(s_main->area->subWindowList().size(), 0);
    }

    void firstControlHasTheFocus() {
        s_a->Show();
        s_b->Show();
        QVERIFY(s_b->box->hasFocus());
        s_b->button->setFocus();
        s_a->Show();
        QVERIFY(s_a->box->hasFocus());
        s_b->Show();
        QVERIFY(s_b->button->hasFocus());
        QTest::keyClick(s_b->button, Qt::Key_Tab);
        QVERIFY(s_b->box->hasFocus());
    }

    void tabBarIsNotWhereAScreenOpens() {
        s_b->Show();
        s_tabbed->Show();
        QVERIFY(s_tabbed->box->hasFocus());
        s_tabbed->tabs->tabBar()->setFocus();
        s_b->Show();
        s_tabbed->Show();
        QVERIFY(s_tabbed->tabs->tabBar()->hasFocus());
    }

    void formWithoutControlsLosesItsFocus() {
        s_a->box->setEnabled(false);
        s_a->button->setEnabled(false);
        s_a->Show();
        s_b->Show();
        s_a->Show();
        s_b->Show();
        QCOMPARE(s_log.join(' '), "a1+ a1! b2+ a1~ b2! a1! a1~ b2!");
    }

    void menuKeepsItsKeys() {
        s_a->Show();
        QSignalSpy triggered(s_main->item, &QAction::triggered);
        QTest::keyClick(s_main->windowHandle(), Qt::Key_F4, Qt::ControlModifier);
        QCOMPARE(triggered.size(), 1);
        QVERIFY(s_a->isLoaded());
        QTest::keyClick(s_main->windowHandle(), Qt::Key_W, Qt::ControlModifier);
        QVERIFY(s_a->isLoaded());
    }

    /// Alt+X is on the menu bar, on both screens, and on one of them twice.
    void mnemonicOfAPageBehindLeavesTheMenuAlone() {
        auto *exit = new Button;
        exit->setText("E&xit");
        s_tabbed->box->parentWidget()->layout()->addWidget(exit);
        s_tabbed->tabs->addTab(new TextBox, "Search");
        s_a->Show();
        s_tabbed->Show();
        s_tabbed->tabs->setCurrentIndex(1);
        auto *search = s_tabbed->tabs->currentWidget();
        search->setFocus();
        QSignalSpy clicked(exit, &Button::clicked);
        QTest::keyClick(s_main->windowHandle(), Qt::Key_X, Qt::AltModifier);
        QCOMPARE(clicked.size(), 1);
        QVERIFY(!QApplication::activePopupWidget());
        QTest::keyClick(s_main->windowHandle(), Qt::Key_Q, Qt::AltModifier);
        QTest::keyClick(s_main->windowHandle(), Qt::Key_Q);
        QCOMPARE(static_cast<TextBox *>(search)->text(), "q");
    }

    void mnemonicsOfTheScreenWin() {
        s_a->Show();
        s_b->Show();
        QTest::keyClick(s_main->windowHandle(), Qt::Key_X, Qt::AltModifier);
        QCOMPARE(s_log.join(' '), "a1+ a1! b2+ b2! b2- a1! b2…");
        QTest::qWait(5);

        auto *twin = new Button(s_a.get());
        twin->setText("Ta&x");
        s_a->layout()->addWidget(twin);
        QTest::qWait(5);
        s_a->box->setFocus();
        QSignalSpy clicked(twin, &Button::clicked);
        QTest::keyClick(s_main->windowHandle(), Qt::Key_X, Qt::AltModifier);
        QVERIFY(s_a->button->hasFocus());
        QTest::keyClick(s_main->windowHandle(), Qt::Key_X, Qt::AltModifier);
        QVERIFY(twin->hasFocus());
        QCOMPARE(clicked.size(), 0);
        QTest::keyClick(twin, Qt::Key_Return);
        QCOMPARE(clicked.size(), 1);
    }

    void focusRefused_data() { rowsFrom<QString, bool>("platform/controls/form.json"); }

    void focusRefused() {
        const auto [state, refused] = fetched<QString, bool>();
        auto *tabs = new QTabWidget(s_a.get());
        auto *frame = new QFrame;
        auto *box = new TextBox;
        auto *layout = new QVBoxLayout(frame);
        layout->addWidget(box);
        tabs->addTab(frame, "Entry");
        tabs->addTab(new QWidget, "Search");
        s_a->layout()->addWidget(tabs);
        auto *inner = new QFrame(frame);
        (new QVBoxLayout(inner))->addWidget(box);
        layout->addWidget(inner);
        if (state == "disabled")
            box->setEnabled(false);
        else if (state == "hidden")
            box->hide();
        else if (state == "frame disabled")
            inner->setEnabled(false);
        else if (state == "frame hidden")
            inner->hide();
        else if (state == "other page")
            tabs->setCurrentIndex(1);
        for (const bool shown : {false, true}) {
            if (shown)
                s_a->Show();
            int number = 0;
            try {
                SetFocus(box);
            } catch (const Error &error) {
                number = error.number();
            }
            QCOMPARE(number, refused ? 5 : 0);
        }
        tabs->setCurrentIndex(0);
        QCOMPARE(box->hasFocus(), !refused);
    }

    void room_data() {
        columns<bool, QSize>("takesAll", "size");
        for (const bool takesAll : {true, false}) {
            fill(QTest::addRow("%s, much", takesAll ? "all" : "its own"), takesAll, QSize(900, 700));
            fill(QTest::addRow("%s, little", takesAll ? "all" : "its own"), takesAll, QSize(320, 260));
        }
    }

    /// Where the area is as large as it may be, small, and large again.
    void room() {
        const auto [takesAll, size] = fetched<bool, QSize>();
        auto *form = new Listed(takesAll ? Form::Kind::Child : Form::Kind::OwnSize);
        form->Show();
        for (const QSize &now : {size, QSize(640, 500), size}) {
            s_main->resize(now);
            QTest::qWait(5);
            const QRect area = s_main->area->viewport()->rect();
            const QRect window = form->subWindow()->geometry();
            QVERIFY(area.contains(window));
            QCOMPARE(window == area, takesAll || now.width() < 400);
            QVERIFY((window.center() - area.center()).manhattanLength() <= 2);
            QVERIFY(form->list->width() >= 400 && form->list->height() >= 300);
            const QRect button(form->button->mapTo(s_main->area->viewport(), QPoint()), form->button->size());
            QVERIFY(area.contains(button) && !form->button->visibleRegion().isEmpty());
        }
        form->subWindow()->resize(300, 200); // from now on it is the user's
        s_main->resize(640, 500);
        QTest::qWait(5);
        QCOMPARE(form->subWindow()->size(), QSize(300, 200));
        form->Unload();
    }

    void messages_data() {
        columns<int, QString, int, int, int>("style", "title", "key", "icon", "result");
        const int information = QMessageBox::Information;
        row("information", 64, "", int(Qt::Key_Return), information, int(vbOK));
        row("critical", 16, "Login Error", int(Qt::Key_Escape), int(QMessageBox::Critical), int(vbOK));
        row("confirmed", 68, "Confirm", int(Qt::Key_Return), information, int(vbYes));
        row("not confirmed", 68, "Confirm", int(Qt::Key_N), information, int(vbNo));
        row("escaped", 4, "", int(Qt::Key_Escape), int(QMessageBox::NoIcon), int(vbNo));
        row("yes by letter", 4, "", int(Qt::Key_Y), int(QMessageBox::NoIcon), int(vbYes));
    }

    void messages() {
        const auto [style, title, key, icon, result] = fetched<int, QString, int, int, int>();
        const QString text = "this head not remove <b>& more</b> ";
        QString seen;
        QTimer::singleShot(0, [&] {
            auto *box = qobject_cast<QMessageBox *>(qApp->activeModalWidget());
            seen = box->objectName() + '|' + box->windowTitle() + '|' + box->text() + '|' +
                   QString::number(box->icon());
            (void)QTest::qWaitFor([box] { return QApplication::activeWindow() == box; });
            const bool letter = key < 0x80;
            QTest::keyClick(box, Qt::Key(key), letter ? Qt::AltModifier : Qt::NoModifier);
            QTimer::singleShot(2000, box, [&, box] {
                seen = "never answered";
                box->done(0);
            });
        });
        QCOMPARE(int(MsgBox(text, style, title)), result);
        QCOMPARE(seen, QString("MsgBox|%1|%2|%3").arg(title.isEmpty() ? "ZEL" : title, text).arg(icon));
    }

    void endsWithTheLastForm() {
        s_main->Unload();
        FormReference<Login> login;
        QStringList steps;
        auto *application = static_cast<Application *>(qApp);
        const int status = application->run([&] {
            login->Show();
            QTimer::singleShot(0, [&] {
                s_main->Show();
                login->Unload();
                s_a->Show();
                QTimer::singleShot(30, [&] {
                    steps << "main";
                    s_main->Unload();
                    login->Show();
                });
                QTimer::singleShot(60, [&] {
                    steps << "login";
                    login->close();
                });
            });
            QTimer::singleShot(5000, application, [&] {
                steps << "never ended";
                QCoreApplication::exit(9);
            });
        });
        QCOMPARE(steps.join(' '), "main login");
        QCOMPARE(status, 0);
    }
};

ZEL_CONTROLS_MAIN(tst_form)
#include "tst_form.moc"
