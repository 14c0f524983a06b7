#pragma once

#include "schema/demo/dice.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace zel::demo {

struct Person {
    QString name;
    QString father;
    QString email; ///< '' for who writes the name in another script than Latin
};

/// Names of students in the scripts of names.txt, none twice.
class People {
public:
    People();
    [[nodiscard]] Person next(Dice &dice);

private:
    struct Script {
        int share; ///< of those of all scripts
        QStringList women;
        QStringList men;
        QStringList families;
        bool latin;
    };

    QList<Script> m_scripts;
    QSet<QString> m_given; ///< already
};

} // namespace zel::demo
