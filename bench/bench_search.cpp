// A key in the search box of the bank payments until the list is painted, against the statement that the
// screen runs, prepared and read whole by a bare C loop.
#include "bare_read.h"
#include "desk.h"
#include "measure.h"

#include "platform/ado/drivers/sqlite_functions.h"
#include "platform/controls/application.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/grid.h"
#include "platform/controls/text_box.h"

#include <QSignalBlocker>
#include <QTabWidget>
#include <QTest>

#include <sqlite3.h>

#include <string>

namespace {

/// The last statement that reached the engine through the program.
std::string lastStatement;

int onStatement(unsigned, void *, void *statement, void *) {
    lastStatement = sqlite3_sql(static_cast<sqlite3_stmt *>(statement));
    return 0;
}

int watch(sqlite3 *db, char **, const sqlite3_api_routines *) {
    return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, onStatement, nullptr);
}

/// Sees a widget being painted.
class Paints : public QObject {
public:
    explicit Paints(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

sqlite3 *openBare(const QString &folder) {
    sqlite3 *db = nullptr;
    sqlite3_open_v2((folder + "/ZEL.db").toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    zel::ado::registerFunctions(db);
    sqlite3_exec(db, "pragma temp_store = memory; pragma cache_size = -32768", nullptr, nullptr, nullptr);
    return db;
}

} // namespace

int main(int argc, char **argv) {
    sqlite3 *db = openBare(QString::fromLocal8Bit(argv[1]));
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
    zel::controls::Application application(argc, argv);
    bench::connect(QString::fromLocal8Bit(argv[1]));
    QWidget *screen = bench::openVoucher("BP");
    screen->resize(1100, 750);
    screen->findChild<QTabWidget *>("SSTab1")->setCurrentIndex(1);
    auto *box = screen->findChild<zel::controls::TextBox *>("txtSearch");
    auto *list = screen->findChild<zel::controls::Grid *>("mshSearch");
    Paints paints(list->viewport());
    QTest::qWait(100);

    bench::Arena arena;
    bool within = true;
    const struct {
        const char *what;
        const char *criterion;
        char key;
    } searches[] = {{"search by number, key 1, until the list is painted", "Voucher #", '1'},
                    {"search by number, key 7, until the list is painted", "Voucher #", '7'},
                    {"search by payee, key P (all), until the list is painted", "Paid To", 'P'}};
    for (const auto &search : searches) {
        screen->findChild<zel::controls::ComboBox *>("cboSearch")->setCurrentText(search.criterion);
        const auto typeKey = [&] {
            const int before = paints.count;
            QTest::keyClick(box, search.key);
            while (paints.count == before)
                QCoreApplication::processEvents();
        };
        const auto empty = [&] {
            const QSignalBlocker quiet(box);
            box->clear();
            QTest::qWait(1);
        };
        empty();
        typeKey();
        const std::string statement = lastStatement;
        within = bench::compare(
                     search.what, 1.3, 15, typeKey, [&] { bench::readBare(db, statement.c_str(), arena); },
                     empty) &&
                 within;
        std::printf("    %d rows in the list, %ld read by the peer\n", list->Rows() - 1, arena.rows);
        if (list->Rows() - 1 != arena.rows)
            within = false;
    }
    std::fflush(stdout);
    std::_Exit(within ? 0 : 1);
}
