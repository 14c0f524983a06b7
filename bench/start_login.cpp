// The program up to the painted login, Server.txt being in a folder of its own: start_login FOLDER
#include "first_paint.h"
#include "shell/module1.h"

#include <QCoreApplication>

int programMain(int argc, char *argv[]);

namespace {

QString folder;

void onStart() {
    zel::shell::setApplicationPath(folder);
    endAtFirstPaint("frmLogin");
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(onStart)

int main(int argc, char *argv[]) {
    folder = QString::fromLocal8Bit(argv[1]);
    programMain(argc, argv);
    return 1;
}
