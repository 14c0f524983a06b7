// What a receipt's screen shows of a subject's fee, from the pick to the boxes, against the statement that it
// runs, prepared and read by a bare C loop: 20,000 students, 100,000 subject lines, 100,000 receipts.
#include "bare_read.h"
#include "desk.h"
#include "institute.h"
#include "measure.h"

#include "accounts/frmFindAC.h"
#include "institute/frmInsRec.h"
#include "platform/ado/drivers/sqlite_functions.h"
#include "platform/controls/application.h"
#include "platform/controls/button.h"
#include "platform/controls/data_combo.h"
#include "platform/controls/text_box.h"
#include "shell/MDIForm1.h"
#include "shell/module1.h"

#include <QTest>

#include <sqlite3.h>

#include <optional>
#include <string>
#include <vector>

namespace {

/// The selections that reached the engine through the program.
std::vector<std::string> statements;

int onStatement(unsigned, void *, void *statement, void *) {
    const std::string_view sql = sqlite3_sql(static_cast<sqlite3_stmt *>(statement));
    if (sql.starts_with("SELECT"))
        statements.emplace_back(sql);
    return 0;
}

int watch(sqlite3 *db, char **, const sqlite3_api_routines *) {
    return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, onStatement, nullptr);
}

sqlite3 *openBare(const QString &database) {
    sqlite3 *db = nullptr;
    sqlite3_open_v2(database.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    zel::ado::registerFunctions(db);
    sqlite3_exec(db, "pragma temp_store = memory; pragma cache_size = -32768", nullptr, nullptr, nullptr);
    return db;
}

std::string replaced(std::string text, const std::string &what, const std::string &with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
    return text;
}

} // namespace

int main(int argc, char **argv) {
    using zel::shell::gFoundName;
    using zel::shell::gFoundRowID;
    std::optional<bench::Copy> copy(QString::fromLocal8Bit(argv[1]));
    const int first = bench::fillInstitute(copy->database().toStdString());
    sqlite3 *db = openBare(copy->database());
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
    zel::controls::Application application(argc, argv);
    bench::connect(copy->folder());
    zel::shell::MDIForm1::reference->Show();
    zel::institute::frmInsRec &screen = *zel::institute::frmInsRec::reference;
    screen.Show();
    QTest::qWait(100);
    auto *subjects = screen.findChild<zel::controls::DataCombo *>("cboSubject");
    auto *received = screen.findChild<zel::controls::TextBox *>("txtReceived");

    // Each turn takes another student, of whom the program has no statement prepared; the peer, whose turn is
    // first, tells its statements by the one that filled the boxes when the student came.
    int account = 0;
    std::vector<std::string> told;
    const auto chooseStudent = [&] {
        if (account != 0 && statements != told)
            qFatal("other statements than the peer's:\n%s\n%s", statements.back().c_str(),
                   told.back().c_str());
        account = account == 0 ? first : account + 487;
        screen.findChild<zel::controls::Button *>("cmdSelectCr")->click();
        gFoundRowID = account;
        gFoundName = "STUDENT";
        zel::accounts::frmFindAC::reference->Unload();
        if (!QTest::qWaitFor([] { return gFoundRowID == 0; }))
            qFatal("the student did not arrive");
        const std::string chosen = statements.back();
        const std::string subject = "\"SubID\"=" + subjects->BoundText().toStdString() + ")";
        told.clear();
        for (int row = 1; row < subjects->count(); ++row)
            told.push_back(replaced(chosen, subject,
                                    "\"SubID\"=" + subjects->RowSource()->text(row, 0).toStdString() + ")"));
        statements.clear();
    };
    bench::Arena arena;
    const bool within = bench::compare(
        "what is paid of four subjects, from the pick to the boxes", 2, 31,
        [&] {
            for (int row = 1; row < subjects->count(); ++row)
                subjects->setCurrentIndex(row);
        },
        [&] {
            for (const std::string &statement : told)
                bench::readBare(db, statement.c_str(), arena);
        },
        chooseStudent);
    chooseStudent();
    std::printf("    received at last %s\n", qPrintable(received->text()));
    copy.reset();
    std::fflush(stdout);
    std::_Exit(within ? 0 : 1);
}
