#include "watched.h"

#include "bare_read.h"
#include "measure.h"

#include "platform/ado/drivers/sqlite_functions.h"
#include "platform/controls/grid.h"
#include "platform/controls/text_box.h"

#include <QEvent>
#include <QSignalBlocker>
#include <QTest>

#include <sqlite3.h>

namespace bench {

namespace {

int onStatement(unsigned, void *, void *statement, void *) {
    watchedStatements().emplace_back(sqlite3_sql(static_cast<sqlite3_stmt *>(statement)));
    return 0;
}

int watch(sqlite3 *db, char **, const sqlite3_api_routines *) {
    return sqlite3_trace_v2(db, SQLITE_TRACE_STMT, onStatement, nullptr);
}

/// Counts the paintings of a widget.
class Paints : public QObject {
public:
    explicit Paints(QWidget *widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

} // namespace

std::vector<std::string> &watchedStatements() {
    static std::vector<std::string> statements;
    return statements;
}

void watchStatements() {
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
}

sqlite3 *openBare(const QString &database) {
    sqlite3 *db = nullptr;
    sqlite3_open_v2(database.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr);
    zel::ado::registerFunctions(db);
    sqlite3_exec(db, "pragma temp_store = memory; pragma cache_size = -32768", nullptr, nullptr, nullptr);
    return db;
}

bool searchByKey(sqlite3 *db, const KeySearch &search) {
    Paints paints(search.list->viewport());
    const auto typeKey = [&] {
        const int before = paints.count;
        QTest::keyClick(search.box, search.key);
        while (paints.count == before)
            QCoreApplication::processEvents();
    };
    const auto empty = [&] {
        const QSignalBlocker quiet(search.box);
        search.box->clear();
        QTest::qWait(1);
    };
    empty();
    typeKey();
    const std::string statement = watchedStatements().back();
    Arena arena;
    const bool within = compare(
        search.what, search.limit, 15, typeKey, [&] { readBare(db, statement.c_str(), arena); }, empty);
    const int rows = search.list->Rows() - 1;
    std::printf("    %d rows in the list, %ld read by the peer\n", rows, arena.rows);
    return within && rows == arena.rows;
}

} // namespace bench
