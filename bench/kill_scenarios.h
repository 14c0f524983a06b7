#pragma once

#include <QString>

#include <functional>
#include <vector>

/// What clerks save in an institute, statement by statement, and what is left when one is the last.
namespace bench {

/// A statement that writes, and what a check finds when it was the last one.
struct Step {
    const char *statement; ///< verb and table, such as "insert DetJV"
    const char *left;      ///< rules and keys, parted by "; ", in the order of the rules' names
};

/// A save (or a deletion), from the shown screen to its end. Of one without steps nothing is ever found.
struct Scenario {
    QString name;
    std::function<void()> save;
    std::vector<Step> steps;
};

/// Makes the catalog ZEL.db in a folder in which all scenarios begin.
void makeKillCatalog(const QString &folder);

[[nodiscard]] std::vector<Scenario> killScenarios();

} // namespace bench
