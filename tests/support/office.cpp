#include "tests/support/office.h"

#include "platform/ado/recordset.h"
#include "platform/controls/form.h"
#include "schema/new_catalog.h"
#include "shell/MDIForm1.h"
#include "shell/module1.h"
#include "tests/support/driver.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

namespace zel::test {

namespace {

void resetSharedState() {
    using namespace shell;
    if (gCon.State() == ado::adStateOpen)
        gCon.Close();
    for (QString *text : {&gUserName, &gPassword, &gFindFilter, &gFoundName, &gFoundContact, &gFoundFax,
                          &gFoundAddr, &gFoundAddr2, &gSubName, &gCourseDur, &gCourseName, &gAppMode})
        text->clear();
    for (bool *flag :
         {&gFinderOpen, &gAddAccount, &gLockSpare, &gOpenSetMenus, &gOpenRemoveData, &gAddSubject})
        *flag = false;
    for (int *number : {&gFoundRowID, &gSubID, &gFoundAppID})
        *number = 0;
    gSubAmount = 0;
}

void unloadAll() {
    // The main window takes its screens with it; what is left then stands alone.
    if (shell::MDIForm1::reference)
        shell::MDIForm1::reference->Unload();
    const QList<controls::FormLife *> rest = controls::FormLife::loaded();
    for (controls::FormLife *form : rest)
        form->Unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

} // namespace

Office::Office(Chart chart) {
    schema::NewCatalog wanted;
    wanted.demoChart = chart == Chart::Demo;
    schema::createCatalog(folder(), wanted);
    QFile server(folder() + "/Server.txt");
    if (!server.open(QIODevice::WriteOnly) || server.write(folder().toUtf8()) < 0)
        qFatal("Server.txt can't be written");
    server.close();
    resetSharedState();
    shell::setApplicationPath(folder());
    m_own.setProperty("User ID", "sa");
    m_own.setProperty("Data Source", folder());
    m_own.setProperty("Initial Catalog", "ZEL");
    m_own.Open();
}

Office::~Office() {
    unloadAll();
    resetSharedState();
    shell::setApplicationPath({});
}

void Office::logIn(const QString &user, const QString &password) {
    shell::Main();
    QWidget *login = form("frmLogin");
    QVERIFY(QTest::qWaitForWindowActive(login));
    typeInto(login, "cboUsers", user);
    press(Qt::Key_Return);
    type(password);
    press(Qt::Key_Return);
    QVERIFY2(form("MDIForm1"), "the login was refused");
    QVERIFY(QTest::qWaitForWindowActive(form("MDIForm1")));
}

void Office::addReports(const QString &from) const {
    for (QDirIterator files(from, {"*.rpt"}, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        const QString target = folder() + "/" + QDir(from).relativeFilePath(files.next());
        QFile::remove(target);
        if (!QDir().mkpath(QFileInfo(target).path()) || !QFile::copy(files.filePath(), target))
            qFatal("%s can't be made", qPrintable(target));
    }
}

void Office::execute(const Sql &statements) {
    m_own.Execute(statements);
}

QStringList Office::rows(const Sql &statement) {
    ado::Recordset result;
    result.Open(statement, m_own);
    const RowsPtr rows = result.rows();
    QStringList texts;
    for (qsizetype row = 0; row < rows->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < rows->columnCount(); ++column)
            cells << (rows->isNull(row, column) ? QString("NULL") : rows->text(row, column));
        texts << cells.join('|');
    }
    return texts;
}

} // namespace zel::test
