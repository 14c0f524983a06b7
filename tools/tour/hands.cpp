#include "tools/tour/hands.h"

#include "platform/controls/grid.h"
#include "platform/report/output/paint.h"
#include "platform/report/viewer/cr_viewer.h"
#include "tests/support/driver.h"

#include <QFileInfo>
#include <QTest>
#include <QWidget>

#include <cstdio>

namespace zel::tour {

using namespace zel::test;

namespace {

QString folder;
int station = 0;

QString numbered(const QString &name, const char *ending) {
    return QStringLiteral("%1/%2-%3.%4")
        .arg(folder)
        .arg(station, 2, 10, QChar(u'0'))
        .arg(name, QString(ending));
}

} // namespace

void setFolder(const QString &path) {
    folder = path;
}

QString pdfName(const QString &name) {
    return numbered(name, "pdf");
}

QWidget *frame() {
    return form("MDIForm1");
}

void shot(QWidget *widget, const QString &name) {
    settle();
    ++station;
    const QString file = numbered(name, "png");
    if (!widget->grab().save(file))
        qFatal("%s can't be written", qPrintable(file));
    std::printf("%s\n", qPrintable(QFileInfo(file).fileName()));
}

void mustShow(QWidget *screen, const char *box, const QString &wanted) {
    if (text(screen, box) != wanted)
        qFatal("%s shows '%s', '%s' was wanted", box, qPrintable(text(screen, box)), qPrintable(wanted));
}

void mustPrint(const QString &page, const QStringList &lines) {
    qsizetype from = 0;
    for (const QString &line : lines) {
        from = page.indexOf(line, from);
        if (from < 0)
            qFatal("'%s' is not printed", qPrintable(line));
    }
}

void logIn(const QString &user, const QString &password) {
    typeInto(form("frmLogin"), "cboUsers", user);
    key(Qt::Key_Return);
    type(password);
    key(Qt::Key_Return);
    if (!frame())
        qFatal("%s is not let in", qPrintable(user));
    frame()->showNormal();
    frame()->resize(1280, 800);
    // The clock shows from its first tick on.
    if (!QTest::qWaitFor([] { return !text(frame(), "lblDate").isEmpty(); }))
        qFatal("the main window shows no date");
}

void key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    press(key, modifiers);
    settle();
}

void tabTo(const QString &name) {
    for (int i = 0; i < 120; ++i) {
        if (focused() == name)
            return;
        press(Qt::Key_Tab);
        settle();
    }
    qFatal("Tab does not reach %s; it stands on %s", qPrintable(name), qPrintable(focused()));
}

void retype(const QString &text, Qt::KeyboardModifiers whole) {
    key(Qt::Key_Home, whole);
    key(Qt::Key_End, whole | Qt::ShiftModifier);
    type(text);
}

void fill(const std::vector<Typed> &boxes) {
    for (const Typed &typed : boxes) {
        if (focused() != typed.box)
            qFatal("%s should have the focus, %s has it", typed.box, qPrintable(focused()));
        type(typed.text);
        key(Qt::Key_Return);
    }
}

void find(const QString &title, const Finder &finder, const QString &picture) {
    if (activeForm() != finder.form || focused() != finder.box)
        qFatal("%s did not come up on %s; %s of %s has the focus", finder.form, finder.box,
               qPrintable(focused()), qPrintable(activeForm()));
    type(title);
    if (!picture.isEmpty())
        shot(frame(), picture);
    const QString first =
        control<controls::Grid>(form(finder.form), finder.list)->TextMatrix(1, finder.column);
    if (!first.startsWith(title))
        qFatal("the finder offers '%s' first for '%s'", qPrintable(first), qPrintable(title));
    key(Qt::Key_Down);
    key(Qt::Key_Return);
}

QString exportPage(const QString &name) {
    QWidget *screen = form("frmVeiwer");
    if (!screen)
        qFatal("no viewer");
    auto *viewer = control<viewer::CRViewer91>(screen, "CRViewer91");
    if (viewer->property("pageCount").toInt() < 1)
        qFatal("the viewer has no page");
    shot(frame(), name);
    report::exportPdf(*viewer->ReportSource()->document(), pdfName(name));
    QString text = viewer->property("plainText").toString();
    std::printf("%s\n%s\n", qPrintable(QFileInfo(pdfName(name)).fileName()), qPrintable(text));
    screen->close();
    settle();
    return text;
}

} // namespace zel::tour
