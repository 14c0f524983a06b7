#pragma once

#include <QString>
#include <Qt>

#include <vector>

class QWidget;

/// The hands of the tour: what a clerk does at the keyboard, and the pictures that are taken of it. What
/// can't be done ends the tour with a sentence.
namespace zel::tour {

/// Where pictures and pages go, numbered in the order of the stations.
void setFolder(const QString &folder);

[[nodiscard]] QWidget *frame();

/// A picture of the widget.
void shot(QWidget *widget, const QString &name);
/// The file of the station's page.
[[nodiscard]] QString pdfName(const QString &name);
/// A picture of the viewer and its report as PDF, then the viewer is closed. Gives the report's text.
QString exportPage(const QString &name);

/// What a clerk reads off the screen before going on.
void mustShow(QWidget *screen, const char *box, const QString &wanted);
/// The lines as they must be printed, in their order.
void mustPrint(const QString &page, const QStringList &lines);

/// In the login that stands: the name and the password, then the main window in the tour's size.
void logIn(const QString &user, const QString &password);

void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Tab, as a clerk presses it, until the control has the focus.
void tabTo(const QString &name);
/// Over what stands in the box that has the focus; a box of several lines wants Ctrl for the whole of it.
void retype(const QString &text, Qt::KeyboardModifiers whole = Qt::NoModifier);

/// What goes into a box; '' leaves what stands there.
struct Typed {
    const char *box;
    QString text = {};
};
/// Box after box, each left by Enter, which must lead to the next.
void fill(const std::vector<Typed> &boxes);

/// A finder's box for the search, its list, and the list's column where the search text stands.
struct Finder {
    const char *form;
    const char *box;
    const char *list;
    int column;
};
constexpr Finder Accounts = {"frmFindAC", "txtFindAC", "mshSearch", 2};

/// In the finder that has come up: the beginning of what is wanted, Down into the list, Enter. With a picture
/// where it has a name.
void find(const QString &title, const Finder &finder = Accounts, const QString &picture = {});

} // namespace zel::tour
