#include "schema/demo/people.h"

#include "schema/demo/demo_texts.h"
#include "schema/demo/table.h"

#include <algorithm>

namespace zel::demo {

People::People() {
    for (const char *script : {"Latin", "Urdu", "Devanagari"})
        for (const Row &row : tableOf(names, QLatin1String(script)))
            m_scripts.append({row.number(1), row[2].split(u' '), row[3].split(u' '), row[4].split(u' '),
                              row[0] == QLatin1String("Latin")});
}

Person People::next(Dice &dice) {
    while (true) {
        const Script &script = dice.of(m_scripts, &Script::share);
        const bool woman = dice.oneIn(2);
        const QString given = dice.of(woman ? script.women : script.men);
        const QString family = dice.of(script.families);
        const QString father = dice.of(script.men);
        const QString name = given + u' ' + family;
        if (m_given.contains(name) || father == given)
            continue;
        m_given.insert(name);
        // Accented letters are none of an address.
        const bool plain = script.latin && std::ranges::all_of(given, [](QChar c) { return c < u'\x80'; });
        return {name, father + u' ' + family,
                plain ? given + u'.' + family + QLatin1String("@MAIL.EXAMPLE") : QString()};
    }
}

} // namespace zel::demo
