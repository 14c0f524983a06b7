#pragma once

#include <QApplication>

#include <functional>

namespace zel::controls {

/// The application whose uncaught failures end the program: the failure is printed to the error stream, shown
/// once in a critical box with its number and description, and the process ends with status 1. From the
/// failure on only the box's own events are delivered. Also decides between keys that the menu and a control
/// both want.
///
/// A test of screens makes one of these in its own main, in place of QTEST_MAIN's.
class Application : public QApplication {
    Q_OBJECT
public:
    /// Sets program name and look.
    Application(int &argc, char **argv);

    /// Runs `start`, then the event loop; a failure in either ends the process. Gives the exit status.
    int run(const std::function<void()> &start);

    bool notify(QObject *receiver, QEvent *event) override;

    /// Ends the program with this failure; does not return.
    [[noreturn]] static void fail(int number, const QString &description);
    [[nodiscard]] static bool failing();
    /// Ends `run` once the event under way is done, if no form is loaded then.
    static void endWithoutForms();

private:
    [[noreturn]] static void failWithCurrentException();
    [[nodiscard]] bool menuTakes(QObject *receiver, QEvent *event) const;
    [[nodiscard]] bool mnemonicGoesToScreen(QObject *receiver, QEvent *event) const;
    [[nodiscard]] bool typesLetterWithAlt(QObject *receiver, QEvent *event) const;
};

} // namespace zel::controls
