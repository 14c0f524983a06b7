#pragma once

#include "platform/base/sql.h"
#include "platform/controls/grid.h"

#include <QDate>

#include <vector>

class QLabel;

namespace zel::controls {
class ComboBox;
class DateBox;
class TextBox;
} // namespace zel::controls

namespace zel::shell {

/// What is searched for: the text, or the date, in a statement as 2024-2-5 or as 2024-02-05.
enum class Searched { Text, Date, PaddedDate };

struct SearchTable {
    struct Criterion {
        const char *caption = nullptr;
        Sql before{}; ///< the statement up to what is searched for; none lists everything
        Sql behind{}; ///< and behind it
        Searched searched = Searched::Text;
    };
    std::vector<Criterion> criteria;
    Sql all; ///< the statement of any other criterion
    QList<controls::Grid::Column> columns;
    bool criterionSearches = false; ///< another criterion searches at once, not only with the next value
    bool headingsStay = false;      ///< over an empty list, too
    bool allWithoutValue = false;   ///< while nothing is searched for, whatever the criterion
};

/// The controls of a search; a screen without criteria or without dates has none of those.
struct SearchControls {
    controls::ComboBox *criterion = nullptr;
    controls::TextBox *value = nullptr;
    controls::Grid *list = nullptr;
    controls::DateBox *date = nullptr; ///< shown only while a date is searched for
    QLabel *echo = nullptr;            ///< shows the criterion's caption
};

/// The search page of a screen: each change of the value, or of the date, lists what is found; Up and Down in
/// the value go into the list. Upper case, Enter and the criterion's lock are the controls' own.
class Search : public QObject {
public:
    Search(SearchTable table, const SearchControls &controls);

    /// Offers the criteria, the first one picked.
    void load();
    /// Lists what the criterion of that caption finds, everything for another one. Uses gRs.
    void run(const QString &criterion);
    /// By the criterion that is shown.
    void run();

private:
    void criterionChanged();
    [[nodiscard]] const SearchTable::Criterion *find(const QString &caption) const;
    [[nodiscard]] Sql statement(const SearchTable::Criterion *criterion) const;

    SearchTable m_table;
    SearchControls m_controls;
};

} // namespace zel::shell
