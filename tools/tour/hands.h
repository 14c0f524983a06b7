#pragma once

#include <QString>
#include <Qt>

class QWidget;

/// The hands of the tour: what a clerk does at the keyboard, and the pictures that are taken of it. What
/// can't be done ends the tour with a sentence.
namespace zel::tour {

/// Where pictures and pages go, numbered in the order of the stations.
void setFolder(const QString &folder);

[[nodiscard]] QWidget *frame();

/// A picture of the widget.
void shot(QWidget *widget, const QString &name);
/// A picture of the viewer and its report as PDF, then the viewer is closed. Gives the report's text.
QString exportPage(const QString &name);

void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Tab, as a clerk presses it, until the control has the focus.
void tabTo(const QString &name);
/// Over what stands in the box that has the focus; a box of several lines wants Ctrl for the whole of it.
void retype(const QString &text, Qt::KeyboardModifiers whole = Qt::NoModifier);
/// The account finder: the title's beginning, Down into the list, Enter.
void find(const QString &title);

} // namespace zel::tour
