// A bare window with a menu of 40 items and one query, up to its first painting: start_bare FOLDER
#include "first_paint.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <sqlite3.h>

int main(int argc, char *argv[]) {
    QApplication application(argc, argv);
    endAtFirstPaint("bare");
    sqlite3 *db = nullptr;
    sqlite3_open_v2((QString::fromLocal8Bit(argv[1]) + "/ZEL.db").toUtf8().constData(), &db,
                    SQLITE_OPEN_READWRITE, nullptr);
    const auto row = [](void *, int, char **, char **) { return 0; };
    if (sqlite3_exec(db, "select Menus, Active from Menus", row, nullptr, nullptr) != SQLITE_OK)
        return 2;
    QMainWindow window;
    window.setObjectName("bare");
    for (int menu = 0; menu < 5; ++menu) {
        QMenu *items = window.menuBar()->addMenu(QString("Menu %1").arg(menu));
        for (int item = 0; item < 8; ++item)
            items->addAction(QString("Item %1").arg(item));
    }
    window.resize(500, 300);
    window.show();
    QApplication::exec();
    return 1;
}
