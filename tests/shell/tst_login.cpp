#include "shell/MDIForm1.h"
#include "shell/display.h"
#include "shell/frmLogin.h"
#include "shell/module1.h"
#include "shell/server_file.h"
#include "tests/support/driver.h"
#include "tests/support/facts.h"
#include "tests/support/office.h"
#include "tests/support/test_program.h"

#include "platform/base/error.h"

#include <QFile>
#include <QLineEdit>
#include <QtTest>

using namespace zel;
using namespace zel::test;

namespace {

constexpr const char *Facts = "shell/login.json";

void writeServer(const Office &office, const QByteArray &content) {
    QFile file(office.folder() + "/Server.txt");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

/// A platform with display calls; keeps them as texts.
class FakeDisplay : public shell::Display {
public:
    explicit FakeDisplay(int result, QStringList &calls) : m_result(result), m_calls(calls) {}

    std::optional<shell::DisplayMode> mode(int number) const override {
        m_calls << QString("mode %1").arg(number);
        return shell::DisplayMode{7, 1920, 1080};
    }
    int change(const shell::DisplayMode &mode, std::uint32_t flags) override {
        m_calls << QString("change %1 %2x%3 flags %4")
                       .arg(mode.fields)
                       .arg(mode.width)
                       .arg(mode.height)
                       .arg(flags);
        return m_result;
    }
    void broadcast(std::uint32_t window, std::uint32_t message, std::uint32_t first,
                   std::int32_t second) override {
        m_calls << QString("broadcast %1 %2 %3 %4").arg(window).arg(message).arg(first).arg(second);
    }
    void exitSystem(std::uint32_t flags, std::uint32_t reserved) override {
        m_calls << QString("exit %1 %2").arg(flags).arg(reserved);
    }

private:
    int m_result;
    QStringList &m_calls;
};

} // namespace

/// The login stands, in the catalog's folder or where Server.txt leads.
struct Login {
    explicit Login(const std::optional<QByteArray> &server = {}) {
        if (server)
            writeServer(office, *server);
        shell::Main();
        screen = form("frmLogin");
    }
    Office office;
    QWidget *screen = nullptr;
};

static const Scenes scenes = {
    {"no file",
     [] {
         Office office;
         QFile::remove(office.folder() + "/Server.txt");
         shell::Main();
     }},
    {"empty file", [] { Login(""); }},
    {"early query",
     [] {
         Office office;
         shell::OpenRs("select * from Menus");
     }},
    {"cancel",
     [] {
         click(Login().screen, "cmdCancel");
         qWarning("after the end");
     }},
};

class tst_login : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readsServer_data() { rowsFrom<QByteArray, QString>(Facts); }

    void readsServer() {
        const auto [content, server] = fetched<QByteArray, QString>();
        const Login login(content);
        expect(login.screen, "txtServer=" + server + "; cboUsers=sa");
        typeInto(login.screen, "txtServer", "other");
        expect(login.screen, "txtServer=" + server);
    }

    void endsProgram() {
        expectEnd("no file", "Error 53:\n\nFile not found");
        expectEnd("empty file", "Error 62:\n\nInput past end of file");
        expectEnd("early query", "Error 3704:");
        const Ended cancelled = play("cancel");
        QVERIFY2(cancelled.status == 0 && cancelled.box.isEmpty(), qPrintable(cancelled.box));
        QVERIFY(!cancelled.errorStream.contains("after the end"));
    }

    /// At a server; the catalog's folder where none is told.
    void refuses_data() { rowsFrom<QString, QString, QString>(Facts); }

    void refuses() {
        const auto [user, password, server] = fetched<QString, QString, QString>();
        const Login login(server.isEmpty() ? std::nullopt : std::optional(server.toUtf8()));
        shell::gUserName = "BEFORE";
        shell::gPassword = "KEPT";
        typeInto(login.screen, "cboUsers", user);
        press(Qt::Key_Return);
        type(password);
        const std::vector<Box> boxes = boxesOf([] { press(Qt::Key_Return); }, {QMessageBox::Ok});

        QCOMPARE(boxes.size(), 1U);
        QCOMPARE(boxes[0].title, "Login Error");
        QCOMPARE(boxes[0].icon, QMessageBox::Critical);
        QVERIFY(!boxes[0].text.isEmpty());
        QVERIFY(!form("MDIForm1"));
        QCOMPARE(shell::gCon.State(), ado::adStateClosed);
        QCOMPARE(shell::gUserName, "BEFORE");
        QCOMPARE(shell::gPassword, "KEPT");
        // The whole password is selected: what is typed next replaces it.
        expect(login.screen,
               "cboUsers=" + user + "; txtPassword.selectedText=" + password + "; focus=txtPassword");
        type("new");
        expect(login.screen, "txtPassword=new");
    }

    /// The list's name completes and corrects no other.
    void userAsTyped() {
        for (const QString user : {"s", "S", "SA", "sam", "sa "}) {
            const Login login;
            typeInto(login.screen, "cboUsers", user);
            expect(login.screen, "cboUsers=" + user);
            press(Qt::Key_Return);
            expect(login.screen, "cboUsers=" + user + "; cboUsers.count=1; focus=txtPassword");
        }
    }

    void keys() {
        const Login login;
        const controls::Form *before = shell::frmLogin::reference.get();
        QVERIFY(shell::frmLogin::reference->isShown());
        pressOn(login.screen, "cboUsers", Qt::Key_Return);
        QCOMPARE(focused(), "txtPassword");
        QCOMPARE(control<QLineEdit>(login.screen, "txtPassword")->echoMode(), QLineEdit::Password);
        click(login.screen, "cmdLogIn");
        QVERIFY(form("MDIForm1"));
        QVERIFY(!form("frmLogin"));
        QVERIFY(shell::frmLogin::reference.get() != before);
        QCOMPARE(shell::gUserName, "sa");
        QCOMPARE(shell::gPassword, "");
    }

    void logsInAgainAsAnother() {
        Office office;
        office.execute("sp_addlogin 'CLERK', 'SECRET', 'ZEL'");
        office.execute("sp_adduser 'CLERK'");
        office.logIn();
        QCOMPARE(text(form("MDIForm1"), "lblTitle"), "Login :   sa");

        press(Qt::Key_X, Qt::AltModifier);
        settle();
        QVERIFY(!form("MDIForm1"));
        expect(form("frmLogin"), "cboUsers=sa; txtPassword=");
        QCOMPARE(shell::gCon.State(), ado::adStateOpen);
        QCOMPARE(shell::gUserName, "sa");

        office.logIn("CLERK", "SECRET");
        QCOMPARE(text(form("MDIForm1"), "lblTitle"), "Login :   CLERK");
        QCOMPARE(shell::gUserName, "CLERK");
        QCOMPARE(shell::gPassword, "SECRET");
        shell::OpenRs("select * from Menus");
        shell::OpenRs("select * from Menus where 0 = 1");
        QCOMPARE(shell::gRs.RecordCount(), 0);
    }

    void changesDisplay_data() { rowsFrom<int, bool, QString, QStringList>(Facts); }

    void changesDisplay() {
        const auto [result, back, answer, calls] = fetched<int, bool, QString, QStringList>();
        QStringList made;
        shell::frmLogin login;
        login.SetResulation(); // a platform without such calls: nothing happens
        login.setDisplay(std::make_unique<FakeDisplay>(result, made));
        const std::vector<Box> boxes =
            boxesOf([&] { back ? login.setDefautResulation() : login.SetResulation(); },
                    {answer == "yes" ? QMessageBox::Yes : QMessageBox::No});
        QCOMPARE(made, calls);
        QCOMPARE(boxes.size(), answer.isEmpty() ? 0U : 1U);
        if (!boxes.empty()) {
            QCOMPARE(boxes[0].title, "Screen Resolution");
            QCOMPARE(boxes[0].text, "You must restart your computer to apply these changes.\n\n"
                                    "Do you want to restart now?");
        }
    }
};

ZEL_TEST_MAIN(tst_login, scenes)

#include "tst_login.moc"
