#pragma once

#include <QEvent>
#include <QWidget>

#include <string>
#include <vector>

struct sqlite3;

/// What reaches the engine and what reaches the screen while the program is measured.
namespace bench {

/// The statements of the program's connections, latest last, from now on; those that bare connections run
/// are not among them when these were opened before.
void watchStatements();
[[nodiscard]] std::vector<std::string> &watchedStatements();

/// A connection for a bare loop: read-only, with the program's functions and its cache. Open it before
/// watchStatements.
[[nodiscard]] sqlite3 *openBare(const QString &database);

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

} // namespace bench
